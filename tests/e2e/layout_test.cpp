// Tiles, zoom and placement, worked with the mouse and with the keyboard.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

namespace {

using testing::AnyOf;

// A stage whose photo is three times as wide as one row of tiles needs, so that there is room to
// move the crop.
class WidePhoto {
  public:
    WidePhoto() {
        writeBitmap(stage.photos() / "wide.bmp", 1200, 600, smoothColour);
        stage.store("paperRegLine", letterLine);
        stage.store("prefs_numTiles", "w01h01");
        stage.start();
        stage.pickPhoto("wide.bmp");
    }

    int cropMiddle() { // of the photo, from its left
        return stage.ask([](frmMain& main) {
            std::vector<TileRect> tiles;
            main.CalcTileCoord(tiles);
            return (tiles.front().left + tiles.back().right) / 2;
        });
    }

    // Where a point of the photo is in the picture box, in units of the toolkit.
    wxPoint inBox(double x, double y) {
        return stage.user().onWindowThread([&] {
            const wxWindow* box = Driver::widget("frmMain", "picCur");
            const wxSize room = box->GetClientSize();
            const double scale = std::min(room.x / 1200.0, room.y / 600.0);
            return wxPoint(wxRound((room.x - 1200 * scale) / 2 + x * scale),
                           wxRound((room.y - 600 * scale) / 2 + y * scale));
        });
    }

    bool gridIsVisible() {
        return stage.ask([](frmMain& main) {
            const std::shared_ptr<const Image> shown = main.picCur.pixels();
            for (int x = 0; x < shown->width(); ++x) {
                const std::uint8_t* pixel = shown->row(shown->height() / 2) + 3 * x;
                if (pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 0) {
                    return true;
                }
            }
            return false;
        });
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST(Layout, PaperComesFromThePreferences) {
    WidePhoto poster;
    EXPECT_EQ(poster.user.text("frmMain", "lblPaperName"), "Letter 8.5\" x 11\"");
    EXPECT_EQ(poster.user.text("frmMain", "lblPaperSize"), "8.50 x 11.00");
    EXPECT_EQ(poster.user.text("frmMain", "lblTileSize"), "6.00 x 9.00");
    EXPECT_EQ(poster.user.text("frmMain", "lblUnits"), "Inches");
    EXPECT_EQ(poster.user.text("frmMain", "lblFinalSize"), "12 x 18 inches");
}

TEST(Layout, TileCountsAreChosenInTheDropDownLists) {
    WidePhoto poster;
    poster.user.choose("frmMain", "cmbTilesWide", 2);
    poster.user.choose("frmMain", "cmbTilesHigh", 0);
    EXPECT_EQ(poster.user.text("frmMain", "lblFinalSize"), "18 x 9 inches");
    poster.user.click("frmMain", "chkLockWh");
    EXPECT_EQ(poster.user.text("frmMain", "cmbTilesHigh"), "3");
    EXPECT_EQ(poster.user.text("frmMain", "lblFinalSize"), "18 x 27 inches");
    poster.user.click("frmMain", "chkRotateTiles");
    EXPECT_EQ(poster.user.text("frmMain", "lblFinalSize"), "27 x 18 inches");
}

TEST(Layout, GridIsHiddenAndShown) {
    WidePhoto poster;
    EXPECT_TRUE(poster.gridIsVisible());
    poster.user.click("frmMain", "chkPreviewTiles");
    EXPECT_FALSE(poster.gridIsVisible());
    EXPECT_EQ(poster.stage.stored("prefs_showTiles"), "0");
    poster.user.click("frmMain", "chkPreviewTiles");
    EXPECT_TRUE(poster.gridIsVisible());
    EXPECT_EQ(poster.stage.stored("prefs_showTiles"), "1");
}

TEST(Layout, CropFollowsTheMouse) {
    WidePhoto poster;
    EXPECT_EQ(poster.user.text("frmMain", "lblLrValue"), "(center)");
    const int before = poster.cropMiddle();
    poster.user.drag("frmMain", "picCur", poster.inBox(600, 300), poster.inBox(800, 300));
    // A step of the pan is four pixels of the photo, a unit of the display about two.
    EXPECT_NEAR(poster.cropMiddle() - before, 200, 8);
    EXPECT_EQ(poster.user.text("frmMain", "lblLrValue").substr(0, 7), "(right ");
    // No further than the photo's edge.
    poster.user.drag("frmMain", "picCur", poster.inBox(800, 300), poster.inBox(1190, 300));
    EXPECT_EQ(poster.user.text("frmMain", "lblLrValue"), "(right 100%)");
}

TEST(Layout, PressOutsideTheCropMovesNothing) {
    WidePhoto poster;
    const int before = poster.cropMiddle();
    poster.user.drag("frmMain", "picCur", poster.inBox(50, 300), poster.inBox(250, 300));
    EXPECT_EQ(poster.cropMiddle(), before);
}

TEST(Layout, ZoomBarIsDragged) {
    WidePhoto poster;
    poster.user.dragSlider("frmMain", "scrZoom", 200);
    const int zoom = poster.stage.ask([](frmMain& main) { return main.scrZoom.value(); });
    EXPECT_NEAR(zoom, 200, 20);
    EXPECT_EQ(poster.user.text("frmMain", "lblZoomAmount"), "(" + std::to_string(zoom) + "%)");
}

TEST(Layout, ZoomBarIsWorkedByKeys) {
    WidePhoto poster;
    poster.user.key('Z', wxMOD_ALT);
    EXPECT_TRUE(poster.user.hasFocus("frmMain", "scrZoom"));
    poster.user.key(WXK_RIGHT);
    EXPECT_EQ(poster.user.text("frmMain", "lblZoomAmount"), "(1%)");
    poster.user.key(WXK_LEFT);
    EXPECT_EQ(poster.user.text("frmMain", "lblZoomAmount"), "(0%)");
}

TEST(Layout, WheelOverThePhotoZooms) {
    WidePhoto poster;
    poster.user.turnWheel("frmMain", "picCur", 3);
    EXPECT_EQ(poster.user.text("frmMain", "lblZoomAmount"), "(60%)");
    EXPECT_EQ(poster.stage.ask([](frmMain& main) { return main.scrZoom.value(); }), 60);
    poster.user.turnWheel("frmMain", "picCur", -5); // no further than the end of the bar
    EXPECT_EQ(poster.user.text("frmMain", "lblZoomAmount"), "(0%)");
}

TEST(Layout, ArrowPadMovesTheCropWhileItIsHeld) {
    WidePhoto poster;
    const wxSize pad = poster.user.sizeOf("frmMain", "imgArrow");
    // One step of 1 and then steps of 2, one every quarter of a second.
    poster.user.press("frmMain", "imgArrow", {pad.x * 9 / 10, pad.y / 2}, [&] {
        poster.stage.waitFor("the crop has moved twice", [](frmMain& main) {
            const std::string text = main.lblLrValue.caption();
            return text != "(center)" && text != "(right 1%)";
        });
    });
    const std::string text = poster.user.text("frmMain", "lblLrValue");
    EXPECT_THAT(text, AnyOf("(right 3%)", "(right 5%)", "(right 7%)", "(right 9%)"));
    EXPECT_EQ(poster.stage.ask([](frmMain& main) { return main.tmrImg.enabled(); }), false);
    // A corner of the pad is no direction.
    poster.user.press("frmMain", "imgArrow", {pad.x / 20, pad.y / 20},
                      [&] { poster.user.pause(std::chrono::milliseconds(400)); });
    EXPECT_EQ(poster.user.text("frmMain", "lblLrValue"), text);
}

TEST(Layout, ArrowKeysMoveTheCropOfTheFocusedPicture) {
    WidePhoto poster;
    poster.user.clickAt("frmMain", "picCur", poster.inBox(30, 300));
    EXPECT_TRUE(poster.user.hasFocus("frmMain", "picCur"));
    poster.user.key(WXK_LEFT);
    EXPECT_EQ(poster.user.text("frmMain", "lblLrValue"), "(left 1%)");
    poster.stage.waitFor("the key is up", [](frmMain& main) { return !main.tmrImg.enabled(); });
    poster.user.key(WXK_RIGHT);
    EXPECT_EQ(poster.user.text("frmMain", "lblLrValue"), "(center)");
    poster.user.key(WXK_RIGHT);
    EXPECT_EQ(poster.user.text("frmMain", "lblLrValue"), "(right 1%)");
    for (const int key : {WXK_UP, WXK_DOWN}) { // there is no room
        poster.user.key(key);
        EXPECT_EQ(poster.user.text("frmMain", "lblLrValue"), "(right 1%)");
    }
}

TEST(Layout, PhotoIsTurned) {
    WidePhoto poster;
    poster.user.choose("frmMain", "cmbRotate", 1);
    poster.stage.waitFor("the photo is turned", [](frmMain& main) {
        return main.bImgSelected && main.lImgWidth == 600 && main.lImgHeight == 1200;
    });
    EXPECT_EQ(poster.user.text("frmMain", "cmbRotate"), "CW Rotate");
}

TEST(Layout, PreviewFollowsTheWindowsSize) {
    WidePhoto poster;
    const auto shownWidth = [&] {
        return poster.stage.ask([](frmMain& main) { return main.picCur.pixels()->width(); });
    };
    const int before = shownWidth();
    poster.user.onWindowThread([] {
        wxTopLevelWindow* window = Driver::window("frmMain");
        window->SetSize(window->GetSize() + wxSize(150, 100));
    });
    poster.stage.waitFor("the preview has grown", [before](frmMain& main) {
        return main.picCur.pixels() && main.picCur.pixels()->width() >= before + 100;
    });
}

TEST(Layout, TabGoesThroughTheWindowInTheOrderOfTheWork) {
    WidePhoto poster;
    const std::string list = "(list)";
    const std::vector<std::string> order = {"cmdDesktop",
                                            "cmdMyDoc",
                                            list,
                                            "Dir1",
                                            list,
                                            "lstFiles",
                                            "cmdEditPaperSize",
                                            "chkPrinterClips",
                                            "cmdConfig",
                                            list,
                                            list,
                                            "chkLockWh",
                                            "chkRotateTiles",
                                            list,
                                            "chkPreviewTiles",
                                            "cmdLargePreview",
                                            "picCur",
                                            "scrZoom",
                                            "imgArrow",
                                            "cmdSaveNow",
                                            "cmdSheets",
                                            "cmdQuit",
                                            "cmdDesktop"};
    poster.user.onWindowThread([] { Driver::widget("frmMain", "cmdDesktop")->SetFocus(); });
    poster.user.pause(std::chrono::milliseconds(100));
    std::vector<std::string> met;
    for (std::size_t i = 0; i < order.size(); ++i) {
        met.push_back(poster.user.focused());
        poster.user.key(WXK_TAB);
    }
    EXPECT_EQ(met, order);
}

} // namespace

} // namespace veldara::test
