// The window "Sheets for Printing": what it shows, what it takes, and the
// document it writes.
#include "output/save_messages.h"
#include "platform/error.h"
#include "platform/files/whole_file.h"
#include "platform/image/codec.h"
#include "platform/text/path_text.h"
#include "sheets/frmSheets.h"
#include "support/sound_pdf.h"
#include "support/temp_folder.h"
#include "support/test_platform.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

class FakeSheetsOwner : public SheetsOwner {
  public:
    std::optional<SheetJob> job;
    std::filesystem::path photo = "/photos/lake.jpg";
    std::map<std::string, std::string> stored;

    FakeSheetsOwner() {
        job.emplace();
        job->paperWidth = 360;
        job->paperHeight = 504;
        job->margins.fill(36);
        job->layout.tilesWide = 3;
        job->layout.tilesHigh = 2;
        job->layout.tileWidthInches = 4;
        job->layout.tileHeightInches = 6;
        job->layout.photoWidth = 120;
        job->layout.photoHeight = 120;
        job->photoName = "lake.jpg";
        job->units = Units::inches;
    }
    std::optional<SheetJob> posterSheets() const override { return job; }
    std::filesystem::path photoPath() const override { return photo; }
    Turn photoTurn() const override { return Turn::none; }
    std::shared_ptr<const Image> smallPhoto() const override {
        return std::make_shared<const Image>(Image::filled(30, 30, 10, 20, 30));
    }
    std::string storedChoice(const std::string& name) const override {
        const auto found = stored.find(name);
        return found == stored.end() ? "" : found->second;
    }
    void storeChoice(const std::string& name, const std::string& value) override {
        stored[name] = value;
    }
    bool printSheets(const SheetJob& toPrint) override {
        printed.push_back(toPrint);
        if (whilePrinting) {
            whilePrinting();
        }
        return wantsDocument;
    }
    std::vector<SheetJob> printed;
    std::function<void()> whilePrinting;
    bool wantsDocument = false;
};

class SheetsWindowTest : public ::testing::Test {
  protected:
    TestPlatform fakes;
    Platform platform = fakes.platform();
    FakeSheetsOwner owner;
    frmMsg progress{platform, fakes.screen};
    frmSimpleMsg result{platform, fakes.screen};
    frmSheets window{platform, fakes.screen, owner, progress, result};

    void open() {
        window.picSheet.setSize(200, 280);
        window.picPoster.setSize(150, 150);
        fakes.screen.whenModal("frmSheets", [](Window& shown) { shown.userClose(); });
        ASSERT_TRUE(window.Open());
        window.load(); // as long as it stays open
    }
};

TEST_F(SheetsWindowTest, SaysWhatItIs) {
    EXPECT_EQ(window.caption(), "Sheets for Printing");
    EXPECT_EQ(window.cmdSavePdf.caption(), "Save PDF...");
    EXPECT_EQ(window.cmdClose.caption(), "Close");
}

TEST_F(SheetsWindowTest, ListsTheGuideAndAllSheets) {
    open();
    ASSERT_EQ(window.cmbShown.count(), 7);
    EXPECT_EQ(window.cmbShown.items()[0], "Guide");
    EXPECT_EQ(window.cmbShown.items()[6], "Sheet 6: row 2, column 3");
    EXPECT_EQ(window.cmbShown.listIndex(), 0);
    EXPECT_FALSE(window.cmdPrevious.enabled());
    window.cmdNext.userClick();
    EXPECT_EQ(window.cmbShown.listIndex(), 1);
    EXPECT_TRUE(window.cmdPrevious.enabled());
    window.cmbShown.userSelect(5);
    EXPECT_TRUE(window.cmdNext.enabled());
    window.cmdNext.userClick();
    EXPECT_EQ(window.cmbShown.listIndex(), 6);
    EXPECT_FALSE(window.cmdNext.enabled()) << "the last one";
}

TEST_F(SheetsWindowTest, ThePictureFollowsEveryChange) {
    open();
    window.cmbShown.userSelect(1);
    auto before = window.picSheet.pixels();
    ASSERT_TRUE(before);
    EXPECT_LE(before->width(), 200);
    EXPECT_EQ(before->height(), 280);
    const auto changed = [&] {
        const auto now = window.picSheet.pixels();
        bool differs = now->width() != before->width();
        for (int y = 0; !differs && y < now->height(); ++y) {
            differs = !std::equal(now->row(y), now->row(y) + 3 * now->width(), before->row(y));
        }
        before = now;
        return differs;
    };
    window.cmbOverlap.userSetText("0.5");
    EXPECT_TRUE(changed());
    window.cmbMarks.userSelect(0);
    EXPECT_TRUE(changed());
    window.chkLabels.userSetChecked(false);
    EXPECT_TRUE(changed());
    EXPECT_EQ(window.chosenJob()->choices.overlap, 36);
}

TEST_F(SheetsWindowTest, WithoutTheGuideItIsNotListed) {
    open();
    window.cmbShown.userSelect(3);
    window.chkGuide.userSetChecked(false);
    EXPECT_EQ(window.cmbShown.count(), 6);
    EXPECT_EQ(window.cmbShown.text(), "Sheet 3: row 1, column 3") << "the same one stays shown";
    window.txtSheets.userSetText("2,5-6");
    EXPECT_EQ(window.cmbShown.count(), 3);
}

TEST_F(SheetsWindowTest, SaysWhatCannotBeRead) {
    open();
    window.cmbOverlap.userSetText("wide");
    EXPECT_FALSE(window.cmdSavePdf.enabled());
    EXPECT_EQ(window.lblNote.caption(), "The overlap is no length: write a number, 0 or more.");
    window.cmbOverlap.userSetText("0.25");
    EXPECT_TRUE(window.cmdSavePdf.enabled());
    EXPECT_EQ(window.lblNote.caption(), "");
    window.txtSheets.userSetText("9");
    EXPECT_FALSE(window.cmdSavePdf.enabled());
    EXPECT_EQ(window.lblNote.caption(), "There is no sheet 9: the poster has the sheets 1 to 6.");
}

TEST_F(SheetsWindowTest, SaysWhichMarginTheOverlapTakes) {
    open();
    window.cmbOverlap.userSetText("1");
    EXPECT_TRUE(window.cmdSavePdf.enabled());
    EXPECT_EQ(window.lblNote.caption(),
              "An overlap of 1 inches takes a right margin of 1 inches; the "
              "paper's is 0.5 inches, "
              "so the overlap there is 0.5 inches.");
}

TEST_F(SheetsWindowTest, RemembersTheChoices) {
    open();
    window.cmbOverlap.userSetText("0.25");
    window.cmbMarks.userSelect(2);
    window.chkLabels.userSetChecked(false);
    window.chkGuide.userSetChecked(false);
    window.cmdClose.userClick();
    EXPECT_EQ(owner.stored, (std::map<std::string, std::string>{{"sheet_guide", "0"},
                                                                {"sheet_labels", "0"},
                                                                {"sheet_marks", "2"},
                                                                {"sheet_overlap", "6350"}}));
    open();
    EXPECT_EQ(window.cmbOverlap.text(), "0.25");
    EXPECT_EQ(window.cmbMarks.listIndex(), 2);
    EXPECT_FALSE(window.chkLabels.checked());
    EXPECT_FALSE(window.chkGuide.checked());
}

TEST_F(SheetsWindowTest, OpensWithWhateverIsStored) {
    owner.stored = {{"sheet_marks", "77"}, {"sheet_overlap", "-5"}, {"sheet_labels", "x"}};
    open();
    EXPECT_EQ(window.cmbOverlap.text(), "0");
    EXPECT_EQ(window.cmbMarks.listIndex(), 1);
    EXPECT_TRUE(window.chkLabels.checked());
}

TEST_F(SheetsWindowTest, DoesNotOpenForAPosterThatCannotBeMade) {
    owner.job->trims.fill(500);
    EXPECT_FALSE(window.Open());
    owner.job.reset();
    EXPECT_FALSE(window.Open());
}

TEST_F(SheetsWindowTest, ProposesANameBesideThePhoto) {
    open();
    window.cmdSavePdf.userClick(); // and Cancel
    ASSERT_EQ(fakes.dialogs.saveRequests.size(), 1U);
    EXPECT_EQ(fakes.dialogs.saveRequests[0].defaultName, "lake_poster");
    EXPECT_EQ(fakes.dialogs.saveRequests[0].folder, "/photos");
    EXPECT_EQ(fakes.dialogs.saveRequests[0].filters[0].pattern, "*.pdf");
    EXPECT_TRUE(fakes.dialogs.messages.empty());
    EXPECT_FALSE(result.visible());
}

TEST_F(SheetsWindowTest, PrintsWhatIsChosen) {
    open();
    window.cmbMarks.userSelect(2);
    window.txtSheets.userSetText("2-3");
    owner.whilePrinting = [&] {
        EXPECT_FALSE(window.cmdPrint.enabled());
        EXPECT_FALSE(window.cmbMarks.enabled());
        window.userClose();
        EXPECT_TRUE(window.loaded()) << "it stays while sheets are printed";
    };
    window.cmdPrint.userClick();
    ASSERT_EQ(owner.printed.size(), 1U);
    EXPECT_EQ(owner.printed[0].choices.marks, SheetMarks::lines);
    EXPECT_EQ(owner.printed[0].choices.sheets, (std::vector<int>{2, 3}));
    EXPECT_EQ(owner.stored["sheet_marks"], "2");
    EXPECT_TRUE(window.cmdPrint.enabled());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(SheetsWindowTest, NothingIsPrintedOfWhatCannotBeRead) {
    open();
    window.cmbOverlap.userSetText("wide");
    EXPECT_FALSE(window.cmdPrint.enabled());
}

TEST_F(SheetsWindowTest, WithoutAPrinterItAsksForADocument) {
    owner.wantsDocument = true;
    open();
    window.cmdPrint.userClick();
    ASSERT_EQ(fakes.dialogs.saveRequests.size(), 1U);
    EXPECT_EQ(fakes.dialogs.saveRequests[0].defaultName, "lake_poster");
}

TEST_F(SheetsWindowTest, TheStoredChoicesMakeAJobWithoutTheWindow) {
    owner.stored = {{"sheet_marks", "2"},
                    {"sheet_overlap", "6350"},
                    {"sheet_labels", "0"},
                    {"sheet_guide", "0"}};
    const std::optional<SheetJob> job = window.storedJob();
    ASSERT_TRUE(job);
    EXPECT_NEAR(job->choices.overlap, 18, 1e-9);
    EXPECT_EQ(job->choices.marks, SheetMarks::lines);
    EXPECT_FALSE(job->choices.labels);
    EXPECT_FALSE(job->choices.guide);
    owner.job->trims.fill(500);
    EXPECT_FALSE(window.storedJob());
}

// A bitmap that is all zeros behind its header.
void writeBlackBitmap(const std::filesystem::path& file, int width, int height) {
    std::vector<std::uint8_t> bytes =
        encodeImage(Image::filled(1, 1, 0, 0, 0).view(), TileFormat::bmp, 0, {});
    for (int byte = 0; byte < 4; ++byte) {
        bytes[18 + static_cast<std::size_t>(byte)] = static_cast<std::uint8_t>(width >> 8 * byte);
        bytes[22 + static_cast<std::size_t>(byte)] = static_cast<std::uint8_t>(height >> 8 * byte);
    }
    writeWholeFile(file, bytes);
    std::filesystem::resize_file(file, 54 + 3 * static_cast<std::uintmax_t>(width) *
                                                static_cast<std::uintmax_t>(height));
}

class SheetsDocumentTest : public SheetsWindowTest {
  protected:
    TempFolder folder;
    std::filesystem::path document = folder.path() / "poster.pdf";

    void SetUp() override {
        owner.photo = folder.path() / "lake.jpg";
        const Image photo = Image::filled(120, 120, 90, 120, 150);
        writeWholeFile(owner.photo, encodeImage(photo.view(), TileFormat::jpeg, 100, {}));
        fakes.dialogs.saveFilePaths.push_back(pathText(document));
    }

    void openWithBlackPhoto(int side) {
        owner.photo = folder.path() / "lake.bmp";
        writeBlackBitmap(owner.photo, side, side);
        owner.job->layout.photoWidth = owner.job->layout.photoHeight = side;
        open();
    }
};

TEST_F(SheetsDocumentTest, WritesTheDocumentAndSaysWhereItIs) {
    open();
    window.cmdSavePdf.userClick();
    expectSoundPdf(document);
    EXPECT_TRUE(fakes.dialogs.messages.empty());
    EXPECT_TRUE(result.visible());
    EXPECT_EQ(result.lnkFol.target(), pathText(document));
    EXPECT_FALSE(progress.visible());
    EXPECT_EQ(progress.lblMsg.caption(), "Writing sheet 6 of 6");
    EXPECT_DOUBLE_EQ(progress.GetProgressVal(), 0.99) << "it is full when the file is in its place";
    EXPECT_TRUE(window.cmdSavePdf.enabled());
    result.lnkFol.userClick();
    EXPECT_EQ(fakes.launcher.log.back(), "open " + pathText(document));
}

TEST_F(SheetsDocumentTest, CountsTheSheetsThatAreWritten) {
    openWithBlackPhoto(4000); // long enough to look at it on the way
    const auto counted = [&] { return progress.GetProgressVal() / 0.99 * 6; };
    double last = 0;
    fakes.eventPump.whileServing = [&] {
        EXPECT_GE(counted(), last);
        last = counted();
        const auto current = std::min(std::lround(last) + 1, 6L);
        EXPECT_EQ(progress.lblMsg.caption(), "Writing sheet " + std::to_string(current) + " of 6");
    };
    window.cmdSavePdf.userClick();
    EXPECT_NEAR(counted(), 6, 1e-9);
    expectSoundPdf(document);
}

TEST_F(SheetsDocumentTest, SaysWhyThereIsNone) {
    owner.photo = folder.path() / "gone.jpg";
    open();
    window.cmdSavePdf.userClick();
    ASSERT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_NE(fakes.dialogs.messages[0].text.find("gone.jpg"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(document));
    EXPECT_FALSE(progress.visible());
    EXPECT_TRUE(window.cmdSavePdf.enabled());
}

TEST_F(SheetsDocumentTest, CancelLeavesNothing) {
    constexpr int side = 20000; // seconds of work, where Cancel is heard within a fraction of one
    openWithBlackPhoto(side);
    std::vector<std::string> counted;
    fakes.eventPump.whileServing = [&] {
        counted.push_back(progress.lblMsg.caption());
        EXPECT_TRUE(progress.cmdCancel.visible());
        EXPECT_FALSE(window.cmdClose.enabled());
        progress.cmdCancel.userClick();
    };
    window.cmdSavePdf.userClick();
    ASSERT_FALSE(counted.empty());
    EXPECT_EQ(counted.front(), "Writing sheet 1 of 6");
    EXPECT_EQ(progress.lblMsg.caption(), "canceling...") << "to the end";
    ASSERT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_EQ(fakes.dialogs.messages[0].text, canceledMessage().text);
    EXPECT_FALSE(result.visible());
    EXPECT_FALSE(progress.visible());
    EXPECT_TRUE(window.cmdSavePdf.enabled());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2)
        << "the two photos and nothing else";
}

TEST_F(SheetsDocumentTest, NeverTakesThePhotosPlace) {
    fakes.dialogs.saveFilePaths = {pathText(owner.photo)};
    const auto before = std::filesystem::file_size(owner.photo);
    open();
    window.cmdSavePdf.userClick();
    ASSERT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_NE(fakes.dialogs.messages[0].text.find("photo's place"), std::string::npos);
    EXPECT_EQ(std::filesystem::file_size(owner.photo), before);
}

} // namespace
} // namespace veldara::test
