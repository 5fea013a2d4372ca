// From the window to the printer through the print dialog of Windows. Under Wine the printers of
// with_print_server.sh are those of the system, and get PostScript from its driver: the pages that
// the program has drawn, in dots.
#include "e2e/printing_stage.h"
#include "platform/image/turn.h"
#include "sheets/page_picture.h"
#include "sheets/poster_pdf.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef __WXMSW__

namespace veldara::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr int dots = printerDotsPerInch / 20; // of a photo's pixel on a sheet of 6 x 9 inches
constexpr int whiteDots = 50;                 // that the office printer leaves: 4.2 mm

// What the job says of itself, without its pictures.
std::string commentsOf(const PrintedJob& job) {
    std::ifstream stream(job.document, std::ios::binary);
    std::string comments;
    for (std::string line; std::getline(stream, line);) {
        if (line.rfind("%%", 0) == 0) {
            comments += line + "\n";
        }
    }
    return comments;
}

Image fineImage() {
    Image image(Printing::photoWidth, Printing::photoHeight);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const Colour colour = fineColour(x, y);
            std::copy(colour.begin(), colour.end(), image.row(y) + std::ptrdiff_t{3} * x);
        }
    }
    return image;
}

// A page as the poster describes it, in the printer's dots.
Image describedPage(const SheetJob& job, const SheetPage& page) {
    const PhotoPicture photo{std::make_shared<const Image>(fineImage()), job.layout.photoWidth,
                             job.layout.photoHeight};
    const int rows =
        static_cast<int>(std::lround(page.height / pointsPerInch * printerDotsPerInch));
    return drawPageBand(page, photo, printerDotsPerInch, 0, rows);
}

// Dots that differ, but for the white that the printer leaves at every edge.
int differentDots(const ReadPicture& printed, const Image& page, int white) {
    if (printed.width != page.width() || printed.height != page.height()) {
        return -1;
    }
    int different = 0;
    for (int y = white; y < page.height() - white; ++y) {
        for (int x = white; x < page.width() - white; ++x) {
            const std::uint8_t* wanted = page.row(y) + std::ptrdiff_t{3} * x;
            const Colour found = printed.at(x, y);
            different += std::equal(found.begin(), found.end(), wanted) ? 0 : 1;
        }
    }
    return different;
}

TEST(Printing, TheSheetsLieOnThePaperWhereTheDocumentHasThem) {
    Printing printing("office");
    const std::size_t before = countPrinted("office");
    printing.openByKey("office");
    printing.dialog.choosePages("2-3");
    printing.dialog.printByKey();
    const PrintedJob job = waitForPrinted(printing.user, "office", before);
    EXPECT_TRUE(job.has("title=lake.bmp")) << job.options;
    const std::string comments = commentsOf(job);
    EXPECT_THAT(comments, HasSubstr("%%Pages: 2"));
    EXPECT_THAT(comments, HasSubstr("%%BeginFeature: *PageSize Letter"));
    EXPECT_THAT(comments, HasSubstr("%%BeginFeature: *Duplex None"))
        << "although the printer's default is both sides";
    EXPECT_THAT(comments, HasSubstr("%%Orientation: Portrait"));
    ASSERT_EQ(job.drawnPages(), 2U) << "without the guide";
    const SheetJob poster = *printing.stage.ask([](frmMain& main) { return main.posterSheets(); });
    const std::vector<SheetPage> pages = posterPages(poster);
    for (int sheet = 2; sheet <= 3; ++sheet) {
        const ReadPicture printed = job.drawnPage(static_cast<std::size_t>(sheet - 1));
        const Image described = describedPage(poster, pages.at(static_cast<std::size_t>(sheet)));
        EXPECT_EQ(differentDots(printed, described, whiteDots), 0) << "on sheet " << sheet;
        // The middle of each of the photo's pixels, on a paper with margins of 1.25 and 1 inch.
        int wrong = 0;
        for (int y = 0; y < 180; ++y) {
            for (int x = 0; x < 120; ++x) {
                const Colour found =
                    printed.at(375 + dots * x + dots / 2, 300 + dots * y + dots / 2);
                const Colour wanted = sheet == 2 ? fineColour(120 + x, y) : fineColour(x, 180 + y);
                wrong += found == wanted ? 0 : 1;
            }
        }
        EXPECT_EQ(wrong, 0) << "on sheet " << sheet;
    }
}

// A page that is wider than high goes to upright paper, turned. This printer leaves no white.
TEST(Printing, AWholePosterOnPhotoPaper) {
    Printing printing("photo", "");
    const std::size_t before = countPrinted("photo");
    printing.openByKey("photo");
    printing.dialog.printByKey();
    const PrintedJob job = waitForPrinted(printing.user, "photo", before);
    const std::string comments = commentsOf(job);
    EXPECT_THAT(comments, HasSubstr("%%Pages: 5"));
    EXPECT_THAT(comments, HasSubstr("%%BeginFeature: *PageSize 4x6"));
    EXPECT_THAT(comments, HasSubstr("%%BeginFeature: *Duplex None"));
    EXPECT_THAT(comments, HasSubstr("%%Orientation: Landscape"));
    ASSERT_EQ(job.drawnPages(), 5U);
    const SheetJob poster = *printing.stage.ask([](frmMain& main) { return main.posterSheets(); });
    const std::vector<SheetPage> pages = posterPages(poster);
    for (std::size_t page = 0; page < 5; ++page) {
        const Image upright =
            turned(describedPage(poster, pages.at(page)).view(), Turn::counterClockwise);
        EXPECT_EQ(differentDots(job.drawnPage(page + 1), upright, 0), 0) << "on page " << page + 1;
    }
}

TEST(Printing, WhatThePrinterCannotPrintIsSaidBefore) {
    Printing printing("office", borderlessLetter);
    const std::size_t before = countPrinted("office");
    const std::string text = printing.questionOf("office");
    EXPECT_THAT(text, HasSubstr("leaves 0.17 inches white at the top; 0.17 inches of every sheet"));
    EXPECT_THAT(text, HasSubstr("leaves 0.16 inches white at the left; 0.16 inches of every"));
    EXPECT_THAT(text, Not(HasSubstr("does not have the paper")));
    printing.user.answerByKey(Answer::no);
    printing.user.waitForWindow("frmMain");
    EXPECT_EQ(countPrinted("office"), before);
}

TEST(Printing, AMissingPaperIsSaidWithTheNearest) {
    Printing printing("office", "");
    EXPECT_THAT(
        printing.questionOf("office"),
        HasSubstr("Your printer does not have the paper Photo 4\" x 6\" (6 x 4 inches); the "
                  "nearest that it has is Letter (8.5 x 11 inches)."));
    printing.answerNo();
}

TEST(Printing, PrinterAndCopiesAreRememberedWhileTheProgramRunsAndThePrinterLonger) {
    Printing printing("office", "");
    const std::size_t before = countPrinted("photo");
    printing.openByKey("office");
    printing.dialog.choosePrinterByKey("photo");
    printing.dialog.choosePages("2-2");
    printing.dialog.chooseCopies("3");
    printing.dialog.printByKey();
    const PrintedJob job = waitForPrinted(printing.user, "photo", before);
    EXPECT_TRUE(job.has("copies=3")) << job.options;
    EXPECT_EQ(job.drawnPages(), 1U) << "the copies are the driver's work";
    printing.openByKey("photo");
    EXPECT_EQ(printing.dialog.copies(), 3);
    printing.dialog.cancelByKey();
    printing.dialog.waitUntilGone();

    printing.stage.stop();
    printing.start();
    printing.openByKey("photo");
    printing.dialog.cancelByKey();
    printing.dialog.waitUntilGone();
    EXPECT_EQ(countPrinted("photo"), before + 1);
}

TEST(Printing, CancelAfterTheSecondSheetPrintsNothing) {
    Printing printing("office");
    const std::size_t before = countPrinted("office");
    printing.openByKey("office");
    printing.dialog.printByKey();
    printing.cancelAtSheet(3);
    EXPECT_EQ(countPrinted("office"), before);
}

TEST(Printing, TheTestImageGoesTheSameWay) {
    Printing printing("photo", "");
    const PrintedJob job = printing.printTestImage("photo");
    ASSERT_EQ(job.drawnPages(), 1U);
    EXPECT_EQ(job.drawnPage(1).width, 1200);
}

} // namespace
} // namespace veldara::test

#endif
