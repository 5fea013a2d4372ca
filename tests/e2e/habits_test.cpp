// What hands expect of any program on the desktop: pointers, double click, keys, wheel, copying.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/tooltip.h>

namespace veldara::test {

namespace {

using testing::HasSubstr;

// A stage whose photo leaves the crop room to move sideways.
class APoster {
  public:
    APoster() {
        writeBitmap(stage.photos() / "wide.bmp", 1200, 600, smoothColour);
        stage.store("paperRegLine", letterLine);
        stage.store("prefs_numTiles", "w01h01");
        stage.start();
        stage.pickPhoto("wide.bmp");
        const wxSize room = user.sizeOf("frmMain", "picCur");
        middle = {room.x / 2, room.y / 2};
    }
    std::string across() { return user.text("frmMain", "lblLrValue"); }
    int zoom() {
        return stage.ask([](frmMain& main) { return main.scrZoom.value(); });
    }
    double previewRatio() {
        return stage.ask([](frmMain& main) { return main.GetFinalImgWhRatio(); });
    }
    void moveCrop() {
        user.drag("frmMain", "picCur", middle, middle + wxPoint(40, 0));
        EXPECT_NE(across(), "(center)");
    }

    Stage stage;
    Driver& user = stage.user();
    wxPoint middle;
};

TEST(Habits, DraggingShowsTheFourWayPointerAndNoToolTip) {
    APoster poster;
    const auto toolTip = [] {
        return Driver::widget("frmMain", "picCur")->GetToolTipText().ToStdString();
    };
    EXPECT_EQ(poster.user.onWindowThread(toolTip), "Currently selected image");
    poster.user.press("frmMain", "picCur", poster.middle, [&] {
        poster.stage.waitFor("the crop is held",
                             [](frmMain& main) { return main.pointer() == Pointer::move; });
        poster.user.waitUntil("the pointer is the four-way arrow",
                              [&] { return poster.user.pointerName() == "move"; });
        EXPECT_EQ(poster.user.onWindowThread(toolTip), "");
    });
    EXPECT_EQ(poster.user.onWindowThread(toolTip), "Currently selected image");
    poster.user.waitUntil("the pointer is the cross-hair again", [&] {
        return poster.user.pointerName().find("cross") != std::string::npos;
    });
}

TEST(Habits, DoubleClickCentresTheCrop) {
    APoster poster;
    poster.moveCrop();
    poster.user.doubleClickAt("frmMain", "picCur", poster.middle);
    EXPECT_EQ(poster.across(), "(center)");
}

TEST(Habits, ControlZeroTakesZoomAndPanBack) {
    APoster poster;
    poster.user.turnWheel("frmMain", "picCur", 2);
    poster.moveCrop();
    poster.user.key('0', wxMOD_CONTROL);
    EXPECT_EQ(poster.zoom(), 0);
    EXPECT_EQ(poster.across(), "(center)");
}

TEST(Habits, UpAndPageUpZoomIn) {
    APoster poster;
    poster.user.key('Z', wxMOD_ALT);
    poster.user.key(WXK_UP);
    EXPECT_EQ(poster.zoom(), 1);
    poster.user.key(WXK_PAGEUP);
    EXPECT_EQ(poster.zoom(), 21);
    poster.user.key(WXK_PAGEDOWN);
    poster.user.key(WXK_DOWN);
    EXPECT_EQ(poster.zoom(), 0);
}

TEST(Habits, WheelOverAClosedListChangesNothing) {
    APoster poster;
    poster.user.key('Z', wxMOD_ALT); // the keyboard is elsewhere
    for (const char* list : {"cmbTilesWide", "cmbRotate", "cmbFileType", "Drive1"}) {
        const std::string before = poster.user.text("frmMain", list);
        poster.user.turnWheel("frmMain", list, -1);
        EXPECT_EQ(poster.user.text("frmMain", list), before) << list;
    }
}

TEST(Habits, ControlSOpensTheSaveDialog) {
    APoster poster;
    poster.user.key('S', wxMOD_CONTROL);
    poster.user.waitForWindow("frmSaveTiles");
    poster.user.key(WXK_ESCAPE);
    poster.user.waitForWindowToGo("frmSaveTiles");
}

TEST(Habits, NameBoxTakesNoSeparator) {
    APoster poster;
    poster.user.key('S', wxMOD_CONTROL);
    poster.user.waitForWindow("frmSaveTiles");
    poster.user.key('N', wxMOD_ALT);
    poster.user.retype("po/ster");
    EXPECT_EQ(poster.user.text("frmSaveTiles", "txtNewFolderName"), "poster");
    poster.user.key(WXK_ESCAPE);
    poster.user.waitForWindowToGo("frmSaveTiles");
}

void expectFolderKeptBy(wxKeyCode key) {
    APoster poster;
    poster.stage.home().addFolder("photos/wide_poster_images");
    poster.user.key('S', wxMOD_CONTROL);
    poster.user.waitForWindow("frmSaveTiles");
    poster.user.click("frmSaveTiles", "cmdSaveNow");
    EXPECT_THAT(poster.user.waitForMessage(), HasSubstr("already exists."));
    poster.user.key(key);
    poster.user.waitForWindowToGo("frmSaveTiles");
    EXPECT_TRUE(std::filesystem::is_empty(poster.stage.photos() / "wide_poster_images"));
}

TEST(Habits, EnterDoesNotOverwriteAFolder) {
    expectFolderKeptBy(WXK_RETURN);
}

TEST(Habits, EscapeDoesNotOverwriteAFolder) {
    expectFolderKeptBy(WXK_ESCAPE);
}

// The crop's ratio in the window, and the picture's.
TEST(Habits, PreviewAskedForAgainTakesTheNewLayoutAndTheKeyboard) {
    APoster poster;
    poster.user.choose("frmMain", "cmbTilesWide", 5);
    const auto picture = [&] {
        return poster.user.onWindowThread(
            [] { return Driver::widget("frmPreview", "picPreview")->GetSize(); });
    };
    const auto expectRatio = [&] {
        const wxSize size = picture();
        EXPECT_NEAR(static_cast<double>(size.x) / size.y, poster.previewRatio(), 0.05);
    };
    poster.user.click("frmMain", "cmdLargePreview");
    poster.user.waitForWindow("frmPreview");
    expectRatio();
    poster.user.onWindowThread([] { Driver::window("frmMain")->Raise(); });
    poster.stage.ask([](frmMain& main) {
        main.cmbTilesWide.userSelect(0);
        main.cmdLargePreview.userClick();
        return 0;
    });
    poster.user.waitForWindow("frmPreview");
    expectRatio();
    poster.user.key(WXK_ESCAPE);
    poster.user.waitForWindowToGo("frmPreview");
}

TEST(Habits, FiguresAreCopied) {
    APoster poster;
    poster.user.rightClick("frmMain", "fraPosterSize");
    poster.user.key('C');
    const std::string figures = poster.stage.ask([](frmMain& main) { return main.FiguresText(); });
    EXPECT_THAT(figures, HasSubstr(poster.user.text("frmMain", "lblResolution")));
    poster.user.waitUntil("the figures are on the clipboard", [] { return true; });
    EXPECT_EQ(poster.user.clipboard(), figures);
}

} // namespace

} // namespace veldara::test
