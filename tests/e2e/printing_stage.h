// The program with a photo for a poster of four sheets, and the print dialog.
#pragma once

#include "e2e/print_dialog.h"
#include "e2e/printed_job.h"
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

namespace veldara::test {

constexpr const char* borderlessLetter = "|0|Letter 8.5\" x 11\"|8.5|11|0|0|0|0|0|0|0|0|";

// Neighbours are far from one another.
inline Colour fineColour(int x, int y) {
    return {static_cast<std::uint8_t>(37 * x), static_cast<std::uint8_t>(53 * y),
            static_cast<std::uint8_t>(91 * (x + 2 * y))};
}

// The small one has four sheets: with the paper of letterLine each has 6 x 9 inches of the picture,
// 120 x 180 pixels. The large one has so many, of such a photo, that somebody can cancel it.
enum class PosterKind { small, large };

struct Printing {
    static constexpr int photoWidth = 240;
    static constexpr int photoHeight = 360;

    // printer: the one that was printed on last. paper: empty for the one of a new user.
    explicit Printing(const std::string& printer, const std::string& paper = letterLine,
                      PosterKind kind = PosterKind::small)
        : photo(kind == PosterKind::small ? "lake.bmp" : "lake.jpg") {
        if (kind == PosterKind::small) {
            writeBitmap(stage.photos() / photo, photoWidth, photoHeight, fineColour);
        } else {
            writeJpeg(stage.photos() / photo, 8100, 10800);
            stage.store("prefs_numTiles", "w17h15");
        }
        stage.store("printer", printer);
        if (!paper.empty()) {
            stage.store("paperRegLine", paper);
        }
        start();
    }

    void start() {
        stage.start();
        stage.pickPhoto(photo);
    }

    void openByKey(const std::string& printer) {
        user.waitForWindow("frmMain");
        user.key('P', wxMOD_CONTROL);
        dialog.waitFor(printer);
    }

    // The question that comes up when the sheets are printed as the dialog has it.
    std::string questionOf(const std::string& printer) {
        openByKey(printer);
        dialog.printByKey();
        return user.waitForMessage();
    }

    void answerNo() {
        user.answerByMouse(Answer::no);
        user.waitForWindow("frmMain");
    }

    // Presses Cancel as soon as a sheet is printed: a hand that reaches for the mouse would find
    // everything printed.
    void cancelAtSheet(int sheet) {
        user.waitUntil("Cancel is pressed at sheet " + std::to_string(sheet), [sheet] {
            const wxWindow* text = Driver::widget("frmMsg", "lblMsg");
            wxWindow* cancel = Driver::widget("frmMsg", "cmdCancel");
            int now = 0;
            if (text == nullptr || cancel == nullptr ||
                std::sscanf(text->GetLabel().utf8_str(), "Printing sheet %d", &now) != 1 ||
                now < sheet) {
                return false;
            }
            wxCommandEvent press(wxEVT_BUTTON, cancel->GetId());
            press.SetEventObject(cancel);
            return cancel->ProcessWindowEvent(press);
        });
#ifndef __WXMSW__
        // No hand pressed the button, and then the window manager may leave the keyboard elsewhere.
        user.waitUntil("the message is up", [] { return Driver::window("message") != nullptr; });
        user.clickAt("message", "text", {4, 4});
#endif
        EXPECT_EQ(user.waitForMessage(), "Canceled by user");
        user.answerByMouse(Answer::ok);
        user.waitForWindow("frmMain");
        EXPECT_TRUE(user.isEnabled("frmMain", "cmdSaveNow"));
    }

    // From the window of the edge calibration, which is closed afterwards.
    PrintedJob printTestImage(const std::string& printer) {
        const std::size_t before = countPrinted(printer);
        user.click("frmMain", "cmdConfig");
        user.waitForWindow("frmBtm");
        user.click("frmBtm", "cmdPrintTest");
        dialog.waitFor(printer);
        dialog.printByKey();
        PrintedJob job = waitForPrinted(user, printer, before);
        EXPECT_TRUE(job.has("title=Edge_Test_Image")) << job.options;
        user.waitForWindow("frmBtm");
        user.click("frmBtm", "cmdOk");
        user.waitForWindowToGo("frmBtm");
        return job;
    }

    const std::string photo;
    Stage stage;
    Driver& user = stage.user();
    PrintDialog dialog{user};
};

} // namespace veldara::test
