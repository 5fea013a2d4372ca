// The way of the sheets to a printer that is played: what is asked, said and handed over.
#include "platform/files/whole_file.h"
#include "platform/image/codec.h"
#include "printing/poster_printing.h"
#include "printing/print_messages.h"
#include "printing/test_image_sheet.h"
#include "sheets/page_picture.h"
#include "sheets/poster_pdf.h"
#include "sheets/sheet_jobs.h"
#include "support/temp_folder.h"
#include "support/test_platform.h"

#include <algorithm>
#include <map>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using Form = FakePrintSystem::Form;

class FakeChoices : public StoredChoices {
  public:
    std::map<std::string, std::string> stored;
    std::string storedChoice(const std::string& name) const override {
        const auto found = stored.find(name);
        return found == stored.end() ? "" : found->second;
    }
    void storeChoice(const std::string& name, const std::string& value) override {
        stored[name] = value;
    }
};

// Every pixel differs from its neighbours.
Image coloured(int width, int height) {
    Image image = Image::filled(width, height, 0, 0, 0);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint8_t* pixel = image.row(y) + 3 * x;
            pixel[0] = static_cast<std::uint8_t>(x * 5);
            pixel[1] = static_cast<std::uint8_t>(y * 7);
            pixel[2] = static_cast<std::uint8_t>(x + y);
        }
    }
    return image;
}

PrinterFacts printerWith(double white) {
    const double edge = white * pointsPerMillimetre;
    return {"office", {{"A4", 595.276, 841.89, {edge, edge, edge, edge}}}, false};
}

class PosterPrintingTest : public ::testing::Test {
  protected:
    PosterPrintingTest() {
        sheets.title = "lake.jpg";
        sheets.job = veldara::testing::a4Job();
        sheets.job.layout.photoWidth = 60;
        sheets.job.layout.photoHeight = 40;
        sheets.picture = std::make_shared<const Image>(coloured(60, 40));
        sheets.photo = folder.path() / "lake.tif";
        writeWholeFile(sheets.photo, encodeImage(sheets.picture->view(), TileFormat::tiff, 0, {}));
        fakes.printing.folder = folder.path();
        fakes.printing.choice = PrintChoice{printerWith(4.2), {}};
    }

    PrintEnd print() { return printing.print(sheets, noPrinterQuestion()); }

    TempFolder folder;
    TestPlatform fakes;
    Platform platform = fakes.platform();
    FakeChoices choices;
    frmMsg progress{platform, fakes.screen};
    PosterPrinting printing{platform, choices, progress};
    SheetsToPrint sheets;
};

TEST_F(PosterPrintingTest, HandsTheDocumentOver) {
    EXPECT_EQ(print(), PrintEnd::printed);
    EXPECT_FALSE(progress.bAllowCancel) << "the system has it";
    EXPECT_EQ(fakes.printing.printed, std::vector<std::string>{"lake.jpg"});
    EXPECT_EQ(fakes.printing.paper, "A4 - 210 x 297");
    EXPECT_EQ(fakes.printing.width, sheets.job.paperWidth);
    EXPECT_EQ(fakes.printing.height, sheets.job.paperHeight);
    const std::filesystem::path file = folder.path() / "saved.pdf";
    writePosterPdf(
        {sheets.photo, Turn::none, sheets.job, file}, [] {}, [](std::size_t) {});
    std::ifstream stream(file, std::ios::binary);
    EXPECT_EQ(fakes.printing.document, std::string(std::istreambuf_iterator<char>(stream), {}))
        << "what is printed is what would be saved";
    EXPECT_TRUE(fakes.dialogs.messages.empty());
    EXPECT_FALSE(progress.visible());
}

TEST_F(PosterPrintingTest, TheDialogBeginsWithThePosterAndTheLastPrinter) {
    choices.stored["printer"] = "attic";
    sheets.job.choices.sheets = {2, 5};
    print();
    ASSERT_EQ(fakes.printing.requests.size(), 1U);
    EXPECT_EQ(fakes.printing.requests[0],
              (PrintRequest{"lake.jpg", "attic", "A4 - 210 x 297", sheets.job.paperWidth,
                            sheets.job.paperHeight, 2, 5}));
    EXPECT_EQ(choices.stored["printer"], "office");
}

TEST_F(PosterPrintingTest, CancelInTheDialogDoesNothing) {
    fakes.printing.choice.reset();
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_TRUE(fakes.dialogs.messages.empty());
    EXPECT_TRUE(choices.stored.empty());
    EXPECT_TRUE(fakes.printing.printed.empty());
}

TEST_F(PosterPrintingTest, WithoutAPrinterAFileIsOffered) {
    fakes.printing.printersThere = false;
    EXPECT_EQ(print(), PrintEnd::wantsFile);
    EXPECT_EQ(fakes.dialogs.onlyMessage(), noPrinterQuestion());
    fakes.dialogs.answers = {Answer::no};
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_TRUE(fakes.printing.requests.empty());
}

TEST_F(PosterPrintingTest, WhatIsShortIsSaidBeforeAnythingIsSent) {
    sheets.job.margins.fill(0);
    fakes.dialogs.answers = {Answer::no};
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    const Message message = fakes.dialogs.onlyMessage();
    EXPECT_EQ(message.buttons, MessageButtons::yesNo);
    EXPECT_EQ(message.defaultAnswer, Answer::no);
    EXPECT_NE(message.text.find("leaves 4.2 mm white at the bottom"), std::string::npos);
    EXPECT_TRUE(fakes.printing.document.empty());

    fakes.dialogs.answers = {Answer::yes};
    EXPECT_EQ(print(), PrintEnd::printed);
    EXPECT_EQ(fakes.printing.printed.size(), 1U);
}

TEST_F(PosterPrintingTest, FromAndToLeaveTheOtherSheetsOut) {
    fakes.printing.form = Form::drawn;
    fakes.printing.choice->ranges = {{2, 3}};
    EXPECT_EQ(print(), PrintEnd::printed);
    EXPECT_EQ(fakes.printing.drawn.size(), 2U);
    fakes.printing.choice->ranges = {{8, 9}};
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_EQ(fakes.dialogs.onlyMessage(), noSuchSheetsMessage());
}

TEST_F(PosterPrintingTest, BandsPutTogetherAreThePage) {
    fakes.printing.form = Form::drawn;
    fakes.printing.bandRows = 37;
    ASSERT_EQ(print(), PrintEnd::printed);
    const std::vector<SheetPage> pages = posterPages(sheets.job);
    ASSERT_EQ(fakes.printing.drawn.size(), pages.size());
    for (std::size_t page = 0; page < pages.size(); ++page) {
        const Image whole =
            drawPageBand(pages[page], {sheets.picture, 60, 40}, fakes.printing.dotsPerInch, 0, 421);
        int row = 0;
        for (const Image& band : fakes.printing.drawn[page]) {
            for (int y = 0; y < band.height(); ++y, ++row) {
                ASSERT_TRUE(std::equal(band.row(y), band.row(y) + 3 * band.width(), whole.row(row)))
                    << "page " << page << ", row " << row;
            }
        }
        EXPECT_EQ(row, 421);
    }
}

TEST_F(PosterPrintingTest, CancelAfterTheSecondSheetEndsTheJob) {
    fakes.printing.form = Form::drawn;
    std::vector<std::string> said;
    fakes.printing.afterPage = [&](std::size_t page) {
        said.push_back(progress.lblMsg.caption());
        EXPECT_DOUBLE_EQ(progress.GetProgressVal(), 0.99 * static_cast<double>(page) / 7);
        if (page == 1) {
            progress.cmdCancel.userClick();
        }
    };
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_EQ(said, (std::vector<std::string>{"Printing sheet 1 of 7", "Printing sheet 2 of 7"}));
    EXPECT_TRUE(fakes.printing.printed.empty());
    EXPECT_EQ(fakes.dialogs.onlyMessage().text, "Canceled by user");
    EXPECT_FALSE(progress.visible());
    EXPECT_FALSE(printing.running());
}

TEST_F(PosterPrintingTest, CancelWhileTheDocumentIsMadeHandsNothingOver) {
    fakes.eventPump.whileServing = [&] {
        if (progress.visible()) {
            progress.cmdCancel.userClick();
        }
    };
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_TRUE(fakes.printing.printed.empty());
    EXPECT_EQ(fakes.dialogs.onlyMessage().text, "Canceled by user");
    EXPECT_FALSE(progress.visible());
}

TEST_F(PosterPrintingTest, CancelAfterTheLastSheetHandsNothingOver) {
    fakes.eventPump.whileEventsRun = [&] {
        if (progress.GetProgressVal() > 0.98) {
            progress.cmdCancel.userClick();
        }
    };
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_TRUE(fakes.printing.printed.empty());
    EXPECT_EQ(fakes.dialogs.onlyMessage().text, "Canceled by user");
    EXPECT_FALSE(progress.visible());
}

TEST_F(PosterPrintingTest, ARefusalIsSaidWithItsReason) {
    fakes.printing.failure = "The queue takes no jobs.";
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_EQ(fakes.dialogs.onlyMessage(), notPrintedMessage("The queue takes no jobs."));
    EXPECT_FALSE(progress.visible());
    fakes.printing.failure.clear();
    EXPECT_EQ(print(), PrintEnd::printed) << "the next attempt is as the first";
}

TEST_F(PosterPrintingTest, AnUnreadablePhotoIsSaidWithItsReason) {
    std::filesystem::remove(sheets.photo);
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_NE(fakes.dialogs.onlyMessage().text.find("lake.tif"), std::string::npos);
    EXPECT_TRUE(fakes.printing.printed.empty());
}

TEST_F(PosterPrintingTest, APrinterThatCannotBeAskedIsSaid) {
    fakes.printing.dialogFailure = "The printer \"office\" does not answer.";
    EXPECT_EQ(print(), PrintEnd::notPrinted);
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              notPrintedMessage("The printer \"office\" does not answer."));
}

TEST_F(PosterPrintingTest, APrinterThatStopsLaterIsSaidWithItsReason) {
    printing.jobStopped("office", "It is out of paper.");
    const std::string text = fakes.dialogs.onlyMessage().text;
    EXPECT_NE(text.find("The printer \"office\" has stopped"), std::string::npos) << text;
    EXPECT_NE(text.find("It is out of paper."), std::string::npos) << text;
}

TEST_F(PosterPrintingTest, OneJobAtATime) {
    fakes.printing.form = Form::drawn;
    fakes.printing.afterPage = [&](std::size_t) { EXPECT_EQ(print(), PrintEnd::notPrinted); };
    EXPECT_EQ(print(), PrintEnd::printed);
    EXPECT_EQ(fakes.printing.requests.size(), 1U);
}

TEST_F(PosterPrintingTest, APictureOfTheProgramsOwnNeedsNoFile) {
    sheets.job = testImageJob(sheets.job, 60, 40);
    sheets.photo.clear();
    EXPECT_EQ(print(), PrintEnd::printed);
    EXPECT_EQ(fakes.printing.document.substr(0, 5), "%PDF-");
}

TEST(TestImageSheet, TheImageFillsTheTileAndNothingElseIsPrinted) {
    const SheetJob job = testImageJob(veldara::testing::borderlessJob(), 1058, 1497);
    const std::vector<SheetPage> pages = posterPages(job);
    ASSERT_EQ(pages.size(), 1U);
    ASSERT_EQ(pages[0].items.size(), 1U);
    const auto& photo = std::get<PagePhoto>(pages[0].items[0]);
    EXPECT_NEAR(photo.target.left, 0, 1e-9);
    EXPECT_NEAR(photo.target.top, 0, 1e-9);
    EXPECT_NEAR(photo.target.right, job.paperWidth, 1e-9);
    EXPECT_NEAR(photo.target.bottom, job.paperHeight, 1e-9);
    EXPECT_EQ(photo.source, (PhotoRect{0, 0, 1058, 1497}));
}

} // namespace
} // namespace veldara::test
