// From the window to the printer, through the desktop's own print dialog and a real print server.
#include "calibration/test_target.h"
#include "e2e/printing_stage.h"
#include "sheets/poster_pdf.h"
#include "support/said.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef __WXGTK__

namespace veldara::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Pages as a renderer that has nothing in common with the program draws them.
ReadPicture renderedPage(const fs::path& document, int page, int dotsPerInch,
                         const TempFolder& folder) {
    const std::string name = folder / "page";
    const std::string number = std::to_string(page);
    said("pdftoppm -singlefile -f " + number + " -l " + number + " -r " +
         std::to_string(dotsPerInch) + " '" + document.string() + "' '" + name + "'");
    std::istringstream content(bytesOf(name + ".ppm"));
    std::string kind;
    int most = 0;
    ReadPicture picture;
    content >> kind >> picture.width >> picture.height >> most;
    content.get();
    picture.pixels.resize(static_cast<std::size_t>(picture.width) *
                          static_cast<std::size_t>(picture.height) * 3);
    content.read(reinterpret_cast<char*>(picture.pixels.data()),
                 static_cast<std::streamsize>(picture.pixels.size()));
    EXPECT_EQ(kind, "P6");
    return picture;
}

int pagesOf(const fs::path& document) {
    const std::string text = said("qpdf --show-npages '" + document.string() + "'").text;
    return std::atoi(text.c_str());
}

// The sheets laid side by side, without their margins, are the photo. A pixel is 1.27 mm wide, and
// is looked at 0.2 mm inside each of its edges.
void expectPosterOf(const fs::path& document, int firstSheet) {
    constexpr int dotsPerInch = 180;
    constexpr int dots = 9; // of a pixel; so many that the renderer smoothes nothing
    const TempFolder folder;
    for (int sheet = 0; sheet < 4; ++sheet) {
        const ReadPicture page = renderedPage(document, firstSheet + sheet, dotsPerInch, folder);
        ASSERT_EQ(page.width, 1530);
        ASSERT_EQ(page.height, 1980);
        int wrong = 0;
        const auto compare = [&](int x, int y, int across, int down) {
            const Colour found = page.at(225 + dots * x + across, 180 + dots * y + down);
            wrong += found == fineColour(sheet % 2 * 120 + x, sheet / 2 * 180 + y) ? 0 : 1;
        };
        for (int y = 0; y < 180; ++y) {
            for (int x = 0; x < 120; ++x) {
                compare(x, y, 1, 1);
                compare(x, y, dots - 2, dots - 2);
            }
        }
        EXPECT_EQ(wrong, 0) << "on sheet " << sheet + 1;
    }
}

TEST(Printing, ByMouseFromTheSheetsToThePoster) {
    Printing printing("");
    printing.user.click("frmMain", "cmdSheets");
    printing.user.waitForWindow("frmSheets");
    printing.user.click("frmSheets", "cmdPrint");
    printing.dialog.choosePrinterByMouse("office");
    const std::size_t before = countPrinted("office");
    printing.dialog.printByMouse();
    printing.dialog.waitUntilGone();
    const PrintedJob job = waitForPrinted(printing.user, "office", before);
    EXPECT_TRUE(job.has("title=lake.bmp")) << job.options;
    EXPECT_TRUE(job.has("copies=1"));
    EXPECT_TRUE(job.has("PageSize=Letter"));
    EXPECT_TRUE(job.has("sides=one-sided"));
    EXPECT_TRUE(job.has("Duplex=None")) << "although the printer's default is both sides";
    EXPECT_TRUE(job.has("print-scaling=none"));
    EXPECT_EQ(pagesOf(job.document), 5);
    expectPosterOf(job.document, 2);

    // Byte for byte what the button beside it saves.
    const fs::path saved = printing.stage.home().path() / "saved.pdf";
    const SheetJob chosen = *printing.stage.ask([](frmMain& main) { return main.posterSheets(); });
    writePosterPdf(
        {printing.stage.photos() / "lake.bmp", Turn::none, chosen, saved}, [] {},
        [](std::size_t) {});
    EXPECT_TRUE(bytesOf(job.document) == bytesOf(saved));

    printing.user.click("frmSheets", "cmdClose");
    printing.user.waitForWindowToGo("frmSheets");
    EXPECT_EQ(printing.stage.stored("printer"), "office");
}

// Most printers get the pages from the server's own filter; it must leave them where they are,
// whatever white the printer leaves.
TEST(Printing, TheServersFilterLeavesThePictureWhereItIs) {
    Printing printing("filtered");
    const std::size_t before = countPrinted("filtered");
    printing.openByKey("filtered");
    printing.dialog.printByKey();
    const PrintedJob job = waitForPrinted(printing.user, "filtered", before);
    EXPECT_EQ(pagesOf(job.document), 5);
    expectPosterOf(job.document, 2);
}

TEST(Printing, ByKeyboardOnPhotoPaper) {
    Printing printing("photo", "");
    const std::size_t before = countPrinted("photo");
    printing.openByKey("photo");
    printing.dialog.printByKey();
    const PrintedJob job = waitForPrinted(printing.user, "photo", before);
    EXPECT_TRUE(job.has("PageSize=4x6")) << job.options;
    EXPECT_TRUE(job.has("sides=one-sided"));
    EXPECT_TRUE(job.has("print-scaling=none"));
    EXPECT_EQ(pagesOf(job.document), 5);
    EXPECT_THAT(said("pdfinfo -f 2 -l 2 '" + job.document.string() + "'").text,
                HasSubstr("432 x 288"));
}

TEST(Printing, ACustomPaperGoesToAPrinterOfAnySize) {
    Printing printing("photo");
    const std::size_t before = countPrinted("photo");
    printing.openByKey("photo");
    printing.dialog.printByKey();
    const PrintedJob job = waitForPrinted(printing.user, "photo", before);
    EXPECT_TRUE(job.has("PageSize=Custom.612.00x792.00")) << job.options;
}

TEST(Printing, MarginsThatThePrinterCannotPrintAreSaidBefore) {
    Printing printing("office", borderlessLetter);
    const std::size_t before = countPrinted("office");
    const std::string text = printing.questionOf("office");
    EXPECT_THAT(text, HasSubstr("leaves 0.17 inches white at the top; 0.17 inches of every sheet"));
    EXPECT_THAT(text, HasSubstr("leaves 0.17 inches white at the left; 0.17 inches of every"));
    EXPECT_THAT(text, HasSubstr("set wider margins for the paper, or choose borderless printing"));
    EXPECT_THAT(text, Not(HasSubstr("does not have the paper")));
    printing.user.answerByKey(Answer::no);
    printing.user.waitForWindow("frmMain");

    printing.questionOf("office");
    printing.user.answerByMouse(Answer::yes);
    waitForPrinted(printing.user, "office", before);
    EXPECT_EQ(countPrinted("office"), before + 1) << "the one that was refused was not sent";
}

TEST(Printing, AMissingPaperIsSaidWithTheNearest) {
    Printing printing("office", "");
    EXPECT_THAT(
        printing.questionOf("office"),
        HasSubstr("Your printer does not have the paper Photo 4\" x 6\" (6 x 4 inches); the "
                  "nearest that it has is US Letter (8.5 x 11 inches)."));
    printing.answerNo();
}

TEST(Printing, FromAndToAreTheNumbersOfTheSheets) {
    Printing printing("office");
    const std::size_t before = countPrinted("office");
    printing.openByKey("office");
    printing.dialog.choosePages("2-3");
    printing.dialog.printByKey();
    const PrintedJob job = waitForPrinted(printing.user, "office", before);
    EXPECT_EQ(pagesOf(job.document), 2) << "without the guide";
    EXPECT_THAT(said("pdftotext '" + job.document.string() + "' -").text, HasSubstr("2"));
    EXPECT_FALSE(job.has("page-ranges=2-3")) << "the document has these sheets alone";
}

TEST(Printing, WhatWasChosenIsRememberedWhileTheProgramRunsAndThePrinterLonger) {
    Printing printing("office", "");
    const std::size_t before = countPrinted("photo");
    printing.openByKey("office");
    printing.dialog.choosePrinterByMouse("photo");
    printing.dialog.chooseCopies("3");
    printing.dialog.chooseDriverSetting("Thick stock");
    printing.dialog.printByKey();
    const PrintedJob first = waitForPrinted(printing.user, "photo", before);
    EXPECT_TRUE(first.has("copies=3")) << first.options;
    EXPECT_TRUE(first.has("Stock=Thick")) << first.options;

    printing.openByKey("photo");
    EXPECT_EQ(printing.dialog.copies(), 3);
    printing.dialog.printByKey();
    const PrintedJob second = waitForPrinted(printing.user, "photo", before + 1);
    EXPECT_TRUE(second.has("copies=3")) << second.options;
    EXPECT_TRUE(second.has("Stock=Thick")) << second.options;

    printing.stage.stop();
    printing.start();
    printing.openByKey("photo");
    EXPECT_EQ(printing.dialog.copies(), 1);
    printing.dialog.cancelByKey();
    printing.dialog.waitUntilGone();
    EXPECT_EQ(countPrinted("photo"), before + 2);
}

TEST(Printing, APrinterThatStopsHalfWayIsSaidWithItsReason) {
    Printing printing("jammed", "");
    const std::string figures =
        printing.stage.ask([](frmMain& main) { return main.FiguresText(); });
    EXPECT_THAT(
        printing.questionOf("jammed"),
        HasSubstr("The printer \"jammed\" has stopped before all sheets were printed: Paper "
                  "jam."));
    printing.user.answerByMouse(Answer::ok);
    printing.user.waitForWindow("frmMain");
    EXPECT_EQ(printing.stage.ask([](frmMain& main) { return main.FiguresText(); }), figures);
    EXPECT_TRUE(printing.user.isEnabled("frmMain", "cmdSaveNow"));
    EXPECT_EQ(countPrinted("jammed"), 0U);
}

TEST(Printing, CancelAfterTheSecondSheetHandsNothingOver) {
    Printing printing("office", letterLine, PosterKind::large);
    const std::size_t before = countPrinted("office");
    printing.openByKey("office");
    printing.dialog.printByKey();
    printing.cancelAtSheet(3);
    EXPECT_EQ(countPrinted("office"), before);
    for (const auto& entry : fs::directory_iterator(fs::temp_directory_path())) {
        EXPECT_THAT(entry.path().filename().string(), Not(::testing::StartsWith("veldara-print")));
    }
}

// Between the dialog and the sheets, while a message is up, something happens to the printer.
void expectRefusal(const std::string& printer, const std::string& happening,
                   const std::string& reason) {
    Printing printing(printer, borderlessLetter);
    const std::string figures =
        printing.stage.ask([](frmMain& main) { return main.FiguresText(); });
    EXPECT_THAT(printing.questionOf(printer), HasSubstr("cannot print these sheets as they are"));
    said(happening + " " + printer);
    // The next message may be up before this one is seen gone.
    printing.user.click("message", "Yes");
    printing.user.waitUntil("the refusal is said", [] {
        const wxWindow* text = Driver::widget("message", "text");
        return text != nullptr && text->GetLabel().StartsWith("The sheets could not be printed: ");
    });
    const std::string text = printing.user.waitForMessage();
    EXPECT_THAT(text, HasSubstr(reason));
    printing.user.answerByMouse(Answer::ok);
    printing.user.waitForWindow("frmMain");
    EXPECT_TRUE(printing.user.isEnabled("frmMain", "cmdSaveNow"));
    EXPECT_EQ(printing.stage.ask([](frmMain& main) { return main.FiguresText(); }), figures);
    EXPECT_EQ(countPrinted(printer), 0U);
}

TEST(Printing, APrinterThatRefusesIsSaidWithItsReason) {
    expectRefusal("closing", "cupsreject", "the printer \"closing\" takes no jobs");
}

TEST(Printing, APrinterThatVanishesIsSaidWithItsReason) {
    expectRefusal("leaving", "lpadmin -x", "the printer \"leaving\" is no longer there.");
}

TEST(Printing, TheTestImageGoesTheSameWay) {
    Printing printing("photo", "");
    const PrintedJob job = printing.printTestImage("photo");
    EXPECT_TRUE(job.has("PageSize=4x6"));
    EXPECT_EQ(pagesOf(job.document), 1);
    const TempFolder folder;
    const ReadPicture page = renderedPage(job.document, 1, testTargetDotsPerInch, folder);
    const Image image = createTestImage(4, 6);
    ASSERT_EQ(page.width, image.width());
    ASSERT_EQ(page.height, image.height());
    EXPECT_TRUE(std::equal(page.pixels.begin(), page.pixels.end(), image.row(0)));
}

// Run where there is no print server.
TEST(NoPrinter, APdfIsOffered) {
    Printing printing("");
    printing.user.key('P', wxMOD_CONTROL);
    EXPECT_EQ(printing.user.waitForMessage(),
              "There is no printer on this computer.  Do you want to save the poster as a PDF "
              "instead?");
    printing.user.answerByKey(Answer::yes);
    printing.user.waitForSystemDialog("Save Poster as PDF");
    printing.user.key(WXK_RETURN);
    printing.user.waitForWindow("frmSimpleMsg");
    EXPECT_EQ(pagesOf(printing.stage.photos() / "lake_poster.pdf"), 5);
    printing.user.click("frmSimpleMsg", "cmdOk");
    printing.user.waitForWindowToGo("frmSimpleMsg");
}

} // namespace
} // namespace veldara::test

#endif
