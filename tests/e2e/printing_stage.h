// The program with a photo for a poster of four sheets, and the print dialog.
#pragma once

#include "e2e/print_dialog.h"
#include "e2e/printed_job.h"
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <string>

namespace veldara::test {

constexpr const char* borderlessLetter = "|0|Letter 8.5\" x 11\"|8.5|11|0|0|0|0|0|0|0|0|";

// Neighbours are far from one another.
inline Colour fineColour(int x, int y) {
    return {static_cast<std::uint8_t>(37 * x), static_cast<std::uint8_t>(53 * y),
            static_cast<std::uint8_t>(91 * (x + 2 * y))};
}

// With the paper of letterLine the sheets have 6 x 9 inches of the picture, 120 x 180 pixels each.
struct Printing {
    static constexpr int photoWidth = 240;
    static constexpr int photoHeight = 360;

    // printer: the one that was printed on last. paper: empty for the one of a new user.
    explicit Printing(const std::string& printer, const std::string& paper = letterLine) {
        writeBitmap(stage.photos() / photo, photoWidth, photoHeight, fineColour);
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

    const std::string photo = "lake.bmp";
    Stage stage;
    Driver& user = stage.user();
    PrintDialog dialog{user};
};

} // namespace veldara::test
