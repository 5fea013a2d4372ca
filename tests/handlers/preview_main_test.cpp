// The preview of the main window: the grid, the labels, dragging, the arrow pad, the zoom bar.
#include "main_fixture.h"

#include <algorithm>
#include <array>
#include <new>
#include <system_error>

namespace veldara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MainPreview : public MainWindowTest {
  protected:
    // A photo of 3000 x 2000 zoomed to half: the crop in the preview is 75..224 x 50..149 (tiles of
    // 6 x 4 inches have the photo's ratio), with 150 and 100 pixels of slack.
    frmMain& startZoomed() {
        startWithPhoto();
        window->scrZoom.userSetValue(100);
        return *window;
    }
    void drag(int fromX, int fromY, int toX, int toY) {
        window->picCur.userMouseDown(MouseButton::left, fromX, fromY);
        window->picCur.userMouseMove(toX, toY);
        window->picCur.userMouseUp(MouseButton::left, toX, toY);
    }
    void press(int x, int y) { window->imgArrow.userMouseDown(MouseButton::left, x, y); }
    void release() { window->imgArrow.userMouseUp(MouseButton::left, 0, 0); }
    std::pair<std::string, std::string> labels() const {
        return {window->lblLrValue.caption(), window->lblTbValue.caption()};
    }
    static std::pair<std::string, std::string> texts(const char* horizontal, const char* vertical) {
        return {horizontal, vertical};
    }
    Message sizeMessage() const {
        return critical("Invalid Tile Print Size Entered",
                        "You have entered invalid print tile sizes.  The width and height need to "
                        "be in the range of 0.75 to 50.00 inches.");
    }
};

TEST_F(MainPreview, StartsBlack) {
    create();
    bool black = false;
    window->picCur.observe([&](Property) {
        const auto& pixels = window->picCur.pixels();
        black = black || (pixels && pixels->width() == 500 && pixels->height() == 500 &&
                          pixels->row(250)[750] == 0);
    });
    window->load();
    EXPECT_TRUE(black);
}

TEST_F(MainPreview, GridLinesStandAtTheTiles) {
    startWithPhoto(); // 2 x 2 tiles over the whole photo
    for (const auto& [x, y] :
         {std::pair{0, 10}, {150, 10}, {299, 10}, {20, 0}, {20, 100}, {20, 199}}) {
        EXPECT_EQ(shownPixel(x, y), lineColour) << x << "," << y;
    }
    EXPECT_NE(shownPixel(20, 10), lineColour);
    EXPECT_TRUE(window->bPreviewOn);
}

TEST_F(MainPreview, GridIsDrawnWithinTheCropOnly) {
    startZoomed();
    EXPECT_EQ(shownPixel(75, 60), lineColour);
    EXPECT_EQ(shownPixel(150, 60), lineColour);
    EXPECT_EQ(shownPixel(100, 50), lineColour);
    EXPECT_NE(shownPixel(150, 40), lineColour);
    EXPECT_NE(shownPixel(10, 100), lineColour);
}

TEST_F(MainPreview, DrawingTheGridLeavesThePreviewItselfClean) {
    startZoomed();
    window->chkPreviewTiles.userSetChecked(false);
    for (int x = 0; x < 300; ++x) {
        ASSERT_NE(shownPixel(x, 100), lineColour);
    }
    EXPECT_FALSE(window->bPreviewOn);
}

TEST_F(MainPreview, HidingAndShowingTheGridSaves) {
    startWithPhoto();
    window->chkPreviewTiles.userSetChecked(false);
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_EQ(stored("prefs_showTiles").number, 0);
    forgetWrites();
    window->chkPreviewTiles.userSetChecked(true);
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_EQ(stored("prefs_showTiles").number, 1);
    EXPECT_EQ(shownPixel(150, 10), lineColour);
}

TEST_F(MainPreview, GridBoxUnderTheFlagDoesNothing) {
    startWithPhoto();
    window->bSkipSettingWrite = true;
    window->chkPreviewTiles.setChecked(false);
    EXPECT_FALSE(saved());
    EXPECT_EQ(shownPixel(150, 10), lineColour);
}

TEST_F(MainPreview, TurningTheGridOnWithAnInvalidSizeIsRefused) {
    startWithPhoto();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(0.5, 8);
    EXPECT_TRUE(fakes.dialogs.quiet());
    window->chkPreviewTiles.userSetChecked(true);
    EXPECT_EQ(fakes.dialogs.onlyMessage(), sizeMessage());
    EXPECT_FALSE(window->chkPreviewTiles.checked());
    EXPECT_EQ(stored("prefs_showTiles").number, 0);
}

TEST_F(MainPreview, RefusalComesWithoutAPhotoAsWell) {
    start().chkPreviewTiles.userSetChecked(false);
    setTileInches(0.5, 8);
    window->chkPreviewTiles.userSetChecked(true);
    EXPECT_EQ(fakes.dialogs.onlyMessage(), sizeMessage());
    EXPECT_FALSE(window->chkPreviewTiles.checked());
}

TEST_F(MainPreview, InvalidSizeWhileTheGridIsOnTurnsItOff) {
    startWithPhoto();
    setTileInches(0.5, 8);
    EXPECT_EQ(fakes.dialogs.onlyMessage(), sizeMessage());
    EXPECT_FALSE(window->chkPreviewTiles.checked());
    EXPECT_NE(shownPixel(150, 10), lineColour);
}

TEST_F(MainPreview, InvalidSizeInMillimetresNamesBothUnits) {
    startWithPhoto();
    int done = 0;
    window->setNewTileVals("Paper", 1, 10, 10, 10, 10, "", done);
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Tile Print Size Entered",
                       "You have entered an invalid tile print size.  The width and height need to "
                       "be in the range of 19.05 to 1270.00 millimeters (0.75 to 50.00 inches)."));
}

TEST_F(MainPreview, TilesWithNothingLeftAreAnInvalidConfiguration) {
    fakes.tree.addFile("/data/veldara/printer_edge_config", "all\t00,99,00,00,\r\n");
    startWithPhoto();
    setTileInches(0.75, 0.75);
    window->chkPrinterClips.userSetChecked(true);
    ASSERT_FALSE(fakes.dialogs.messages.empty());
    EXPECT_EQ(fakes.dialogs.messages.back(), critical("Invalid", "Invalid tile configuration"));
    EXPECT_NE(shownPixel(150, 10), lineColour);
    EXPECT_TRUE(window->chkPreviewTiles.checked());
}

// Zoom

TEST_F(MainPreview, ZoomShowsItsAmountAndRefreshes) {
    startWithPhoto();
    window->scrZoom.userSetValue(100);
    EXPECT_EQ(window->lblZoomAmount.caption(), "(100%)");
    EXPECT_EQ(labels(), texts("(center)", "(center)"));
    EXPECT_EQ(window->lblResolution.caption(), "125.0 dpi");
    window->scrZoom.userSetValue(9999);
    EXPECT_EQ(window->lblZoomAmount.caption(), "(400%)");
    window->scrZoom.userSetValue(0);
    EXPECT_EQ(window->lblZoomAmount.caption(), "(0%)");
    EXPECT_EQ(labels(), texts("(full width)", "(full height)"));
}

TEST_F(MainPreview, ZoomWithoutAPhotoKeepsTheLabelsEmpty) {
    start().scrZoom.userSetValue(50);
    EXPECT_EQ(window->lblZoomAmount.caption(), "(50%)");
    EXPECT_EQ(labels(), texts("---", "---"));
}

TEST_F(MainPreview, PanSurvivesZoomingUntilTheCropSpansThePhoto) {
    startZoomed();
    drag(150, 100, 180, 100);
    EXPECT_EQ(labels().first, "(right 40%)");
    window->scrZoom.userSetValue(200);
    EXPECT_EQ(labels().first, "(right 40%)");
    window->scrZoom.userSetValue(0);
    window->scrZoom.userSetValue(100);
    EXPECT_EQ(labels().first, "(center)");
}

// Dragging

TEST_F(MainPreview, CropFollowsThePointerPixelByPixel) {
    startZoomed();
    drag(150, 100, 160, 95);
    EXPECT_EQ(shownPixel(85, 60), lineColour);
    EXPECT_EQ(shownPixel(100, 45), lineColour);
    EXPECT_EQ(labels(), texts("(right 13%)", "(up 10%)"));
}

TEST_F(MainPreview, DragByTheWholeSlackReachesTheEdges) {
    startZoomed();
    drag(150, 100, 75, 50);
    EXPECT_EQ(labels(), texts("(left 100%)", "(up 100%)"));
    drag(10, 10, 160, 110);
    EXPECT_EQ(labels(), texts("(right 100%)", "(down 100%)"));
}

TEST_F(MainPreview, DragIsLimitedToTheEdges) {
    startZoomed();
    drag(150, 100, -5000, 9000);
    EXPECT_EQ(labels(), texts("(left 100%)", "(down 100%)"));
}

TEST_F(MainPreview, LabelsOfAQuarter) {
    startZoomed();
    drag(100, 100, 81, 100); // 19 of 75 pixels
    EXPECT_EQ(labels().first, "(left 25%)");
}

TEST_F(MainPreview, CropOfTheWholePhotoDoesNotMove) {
    startWithPhoto();
    drag(150, 100, 10, 10);
    EXPECT_EQ(labels(), texts("(full width)", "(full height)"));
    EXPECT_EQ(shownPixel(150, 10), lineColour);
}

TEST_F(MainPreview, OnlyTheLeftButtonDrags) {
    startZoomed();
    for (MouseButton button : {MouseButton::middle, MouseButton::right}) {
        window->picCur.userMouseDown(button, 150, 100);
        window->picCur.userMouseMove(170, 100);
        window->picCur.userMouseUp(button, 170, 100);
    }
    EXPECT_EQ(labels().first, "(center)");
}

TEST_F(MainPreview, PressBesideTheCropDragsNothing) {
    startZoomed();
    drag(10, 10, 60, 60);
    EXPECT_EQ(labels(), texts("(center)", "(center)"));
}

TEST_F(MainPreview, MoveAfterTheReleaseDragsNothing) {
    startZoomed();
    drag(150, 100, 160, 100);
    const auto before = labels();
    window->picCur.userMouseMove(190, 100);
    EXPECT_EQ(labels(), before);
}

TEST_F(MainPreview, ReleaseWithoutAPressDoesNothing) {
    startZoomed();
    window->picCur.userMouseUp(MouseButton::left, 10, 10);
    EXPECT_EQ(labels(), texts("(center)", "(center)"));
}

TEST_F(MainPreview, PointerShowsWhereTheCropIs) {
    startZoomed();
    window->picCur.userMouseMove(150, 100);
    EXPECT_EQ(window->pointer(), Pointer::crossHair);
    window->picCur.userMouseMove(74, 100);
    EXPECT_EQ(window->pointer(), Pointer::arrow);
    window->picCur.userMouseMove(75, 50);
    EXPECT_EQ(window->pointer(), Pointer::crossHair);
    window->picCur.userMouseDown(MouseButton::left, 150, 100);
    EXPECT_EQ(window->pointer(), Pointer::move);
    window->picCur.userMouseMove(400, 400);
    EXPECT_EQ(window->pointer(), Pointer::move);
    window->picCur.userMouseUp(MouseButton::left, 0, 0);
    EXPECT_EQ(window->pointer(), Pointer::arrow);
}

TEST_F(MainPreview, PointerOfADragComesBackAfterAWait) {
    startZoomed();
    window->picCur.userMouseDown(MouseButton::left, 150, 100);
    window->setPointer(Pointer::arrow); // as at the end of other work
    window->picCur.userMouseMove(151, 100);
    EXPECT_EQ(window->pointer(), Pointer::move);
}

TEST_F(MainPreview, ReleaseOnTheCropLeavesTheCrossHair) {
    startZoomed();
    drag(150, 100, 152, 100);
    EXPECT_EQ(window->pointer(), Pointer::crossHair);
}

TEST_F(MainPreview, PointerStaysAnArrowWithoutAPhoto) {
    start().picCur.userMouseMove(0, 0);
    EXPECT_EQ(window->pointer(), Pointer::arrow);
}

TEST_F(MainPreview, WithTheGridOffTheLastDrawnCropIsDragged) {
    startZoomed();
    window->chkPreviewTiles.userSetChecked(false);
    window->scrZoom.userSetValue(0); // the crop is not drawn, so its rectangle stays
    window->picCur.userMouseMove(74, 100);
    EXPECT_EQ(window->pointer(), Pointer::arrow);
    drag(150, 100, 165, 100);
    EXPECT_EQ(labels().first, "(right 20%)");
}

TEST_F(MainPreview, DraggingSavesNothing) {
    startZoomed();
    drag(150, 100, 160, 100);
    EXPECT_FALSE(saved());
}

TEST_F(MainPreview, DoubleClickCentresTheCrop) {
    startZoomed();
    drag(150, 100, 170, 110);
    EXPECT_NE(labels(), texts("(center)", "(center)"));
    window->picCur.userMouseDown(MouseButton::left, 150, 100);
    window->picCur.userMouseUp(MouseButton::left, 150, 100);
    window->picCur.userDoubleClick();
    EXPECT_EQ(labels(), texts("(center)", "(center)"));
    EXPECT_EQ(window->scrZoom.value(), 100);
    EXPECT_EQ(shownPixel(75, 50), lineColour);
    window->picCur.userMouseMove(180, 100);
    EXPECT_EQ(labels(), texts("(center)", "(center)")) << "nothing is dragged";
}

TEST_F(MainPreview, DoubleClickWithoutAPhotoDoesNothing) {
    start().picCur.userDoubleClick();
    EXPECT_EQ(labels(), texts("---", "---"));
}

TEST_F(MainPreview, ResetTakesZoomAndPanBack) {
    startZoomed();
    drag(150, 100, 170, 110);
    window->ResetZoomAndPan();
    EXPECT_EQ(window->scrZoom.value(), 0);
    EXPECT_EQ(window->lblZoomAmount.caption(), "(0%)");
    window->scrZoom.userSetValue(100);
    EXPECT_EQ(labels(), texts("(center)", "(center)"));
}

TEST_F(MainPreview, ResetWithoutAPhotoKeepsTheZoom) {
    start().scrZoom.userSetValue(100);
    window->ResetZoomAndPan();
    EXPECT_EQ(window->scrZoom.value(), 100);
}

TEST_F(MainPreview, GridIsOffWhenThePhotoIsGone) {
    fakes.tree.addFolder("/photos/summer");
    startZoomed();
    EXPECT_TRUE(window->bPreviewOn);
    window->Dir1.setPath("/photos/summer");
    EXPECT_FALSE(window->bPreviewOn);
}

TEST_F(MainPreview, FiguresCanBeCopiedAsText) {
    startZoomed();
    const std::string text = window->FiguresText();
    EXPECT_THAT(text, ::testing::HasSubstr("Final Size: " + window->lblFinalSize.caption() + "\n"));
    EXPECT_THAT(text,
                ::testing::HasSubstr("Resolution: " + window->lblResolution.caption() + "\n"));
    EXPECT_THAT(text, ::testing::HasSubstr("Horizontal: (center)\n"));
    EXPECT_THAT(text, ::testing::HasSubstr("Zoom: (100%)\n"));
}

TEST_F(MainPreview, LosingThePhotoEndsTheDrag) {
    fakes.tree.addFolder("/photos/summer");
    startZoomed();
    window->picCur.userMouseDown(MouseButton::left, 150, 100);
    window->Dir1.setPath("/photos/summer");
    window->picCur.userMouseMove(160, 100);
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    EXPECT_EQ(labels(), texts("---", "---"));
}

// The arrow pad, 100 x 100 pixels

struct PadCase {
    int x;
    int y;
    Picture frmMain::*pressed;
};

class ArrowPadOfTheWindow : public MainPreview, public ::testing::WithParamInterface<PadCase> {};

TEST_P(ArrowPadOfTheWindow, ShowsThePressedStateAtHome) {
    startZoomed();
    const int home = window->imgArrow.left();
    press(GetParam().x, GetParam().y);
    for (Picture frmMain::*pad :
         {&frmMain::imgArrow, &frmMain::imgArrow_Up, &frmMain::imgArrow_right,
          &frmMain::imgArrow_down, &frmMain::imgArrow_left}) {
        EXPECT_EQ((*window.*pad).left(), pad == GetParam().pressed ? home : home + 10000);
        EXPECT_TRUE((*window.*pad).visible());
    }
    EXPECT_TRUE(window->tmrImg.enabled());
    EXPECT_EQ(window->tmrImg.interval(), 250);
    release();
    EXPECT_EQ(window->imgArrow.left(), home);
    EXPECT_EQ((*window.*GetParam().pressed).left(), home + 10000);
    EXPECT_FALSE(window->tmrImg.enabled());
}

INSTANTIATE_TEST_SUITE_P(All, ArrowPadOfTheWindow,
                         ::testing::Values(PadCase{50, 5, &frmMain::imgArrow_Up},
                                           PadCase{95, 50, &frmMain::imgArrow_right},
                                           PadCase{50, 95, &frmMain::imgArrow_down},
                                           PadCase{5, 50, &frmMain::imgArrow_left},
                                           PadCase{50, 50, &frmMain::imgArrow_right},
                                           PadCase{49, 50, &frmMain::imgArrow_left},
                                           PadCase{30, 10, &frmMain::imgArrow_Up}));

TEST_F(MainPreview, PadPicturesAreHiddenWhileTheyAreRearranged) {
    startZoomed();
    const std::array<Picture*, 5> pads{&window->imgArrow, &window->imgArrow_Up,
                                       &window->imgArrow_right, &window->imgArrow_down,
                                       &window->imgArrow_left};
    int moves = 0;
    int seen = 0;
    for (Picture* pad : pads) {
        pad->observe([&](Property property) {
            if (property == Property::range) {
                ++moves;
                seen += static_cast<int>(std::count_if(
                    pads.begin(), pads.end(), [](const Picture* one) { return one->visible(); }));
            }
        });
    }
    press(50, 5);
    EXPECT_GT(moves, 0);
    EXPECT_EQ(seen, 0);
}

class ArrowPadCorner : public MainPreview,
                       public ::testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(ArrowPadCorner, DoesNothing) {
    startZoomed();
    press(GetParam().first, GetParam().second);
    EXPECT_FALSE(window->tmrImg.enabled());
}

INSTANTIATE_TEST_SUITE_P(All, ArrowPadCorner,
                         ::testing::Values(std::pair{5, 5}, std::pair{95, 5}, std::pair{5, 95},
                                           std::pair{95, 95}, std::pair{25, 25}));

TEST_F(MainPreview, PadWithoutAPhotoDoesNothing) {
    start();
    press(50, 5);
    EXPECT_FALSE(window->tmrImg.enabled());
}

TEST_F(MainPreview, PadReleasedOnItsPressedStateStopsAsWell) {
    startZoomed();
    press(50, 5);
    window->imgArrow_Up.userMouseUp(MouseButton::left, 50, 5);
    EXPECT_FALSE(window->tmrImg.enabled());
}

TEST_F(MainPreview, HoldingThePadStepsFasterAndThenStops) {
    startZoomed();
    drag(150, 100, 75, 100); // to the very left, so that there is room for every step
    press(95, 50);
    std::vector<int> pans;
    const auto pan = [this] {
        const std::string text = labels().first;
        if (text == "(center)") {
            return 100;
        }
        const int percent = std::stoi(text.substr(text.find(' ') + 1));
        return text[1] == 'l' ? 100 - percent : 100 + percent;
    };
    for (int tick = 0; tick < 20; ++tick) {
        const int before = pan();
        window->tmrImg.tick();
        pans.push_back(pan() - before);
    }
    EXPECT_THAT(pans, ElementsAre(1, 2, 2, 2, 2, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 10, 10, 10, 10));
}

TEST_F(MainPreview, CropStopsAfterThirtySixSteps) {
    startZoomed();
    press(95, 50);
    for (int tick = 0; tick < 36; ++tick) {
        window->tmrImg.tick();
        // dragged back to the middle, so that the edge never ends the steps
        drag(150, 100, 150, 100);
        if (labels().first == "(right 100%)") {
            window->scrZoom.userSetValue(0);
            window->scrZoom.userSetValue(100);
        }
    }
    window->scrZoom.userSetValue(0);
    window->scrZoom.userSetValue(100);
    EXPECT_EQ(labels().first, "(center)");
    window->tmrImg.tick();
    window->tmrImg.tick();
    EXPECT_EQ(labels().first, "(center)");
    release();
    press(95, 50);
    window->tmrImg.tick();
    EXPECT_EQ(labels().first, "(right 1%)");
}

TEST_F(MainPreview, PadMovesInAllFourDirections) {
    startZoomed();
    const auto step = [this](int x, int y) {
        press(x, y);
        window->tmrImg.tick();
        release();
        return labels();
    };
    EXPECT_EQ(step(50, 5), texts("(center)", "(up 1%)"));
    EXPECT_EQ(step(50, 95), texts("(center)", "(center)"));
    EXPECT_EQ(step(50, 95), texts("(center)", "(down 1%)"));
    EXPECT_EQ(step(5, 50), texts("(left 1%)", "(down 1%)"));
    EXPECT_EQ(step(95, 50), texts("(center)", "(down 1%)"));
}

TEST_F(MainPreview, PadStopsAtTheEdges) {
    startZoomed();
    drag(150, 100, 75, 50);
    press(5, 50);
    for (int tick = 0; tick < 5; ++tick) {
        window->tmrImg.tick();
    }
    EXPECT_EQ(labels(), texts("(left 100%)", "(up 100%)"));
}

TEST_F(MainPreview, PadOverAFullWidthCropMovesNothing) {
    startWithPhoto();
    press(95, 50);
    window->tmrImg.tick();
    EXPECT_EQ(labels(), texts("(full width)", "(full height)"));
    EXPECT_EQ(shownPixel(150, 10), lineColour);
}

TEST_F(MainPreview, PadRepeatsEveryQuarterSecondWhileHeld) {
    startZoomed();
    fakes.clock.drive(window->tmrImg);
    press(95, 50);
    fakes.clock.advance(249);
    EXPECT_EQ(labels().first, "(center)");
    fakes.clock.advance(1);
    EXPECT_EQ(labels().first, "(right 1%)");
    fakes.clock.advance(250);
    EXPECT_EQ(labels().first, "(right 3%)");
    release();
    fakes.clock.advance(1000);
    EXPECT_EQ(labels().first, "(right 3%)");
}

TEST_F(MainPreview, PadThatWasPlacedByTheViewKeepsItsHome) {
    addPhoto("photo.jpg", 3000, 2000);
    create().imgArrow.setPlace(40, 7);
    window->load();
    clickFile("photo.jpg");
    press(95, 50);
    EXPECT_EQ(window->imgArrow_right.left(), 40);
    EXPECT_EQ(window->imgArrow.left(), 10040);
    release();
    EXPECT_EQ(window->imgArrow.left(), 40);
}

// The full-screen preview's picture

class PosterPicture : public MainPreview {
  protected:
    Picture box;
};

TEST_F(PosterPicture, NeedsAPhoto) {
    start();
    box.setSize(400, 400);
    window->FillPreview(box);
    EXPECT_FALSE(box.pixels());
}

TEST_F(PosterPicture, ShowsTheCropLessItsLastColumnAndRow) {
    startZoomed(); // a crop of 1500 x 1000
    box.setSize(400, 400);
    window->FillPreview(box);
    ASSERT_TRUE(box.pixels());
    EXPECT_EQ(box.pixels()->width(), 400);
    EXPECT_EQ(box.pixels()->height(), 267); // 999 / 1499 of the width: 266.58
}

TEST_F(PosterPicture, LinesAreEvenlySpacedAndAlwaysDrawn) {
    startZoomed();
    window->chkPreviewTiles.userSetChecked(false);
    box.setSize(401, 401);
    window->FillPreview(box);
    ASSERT_TRUE(box.pixels());
    for (int x : {0, 200, 400}) {
        EXPECT_EQ(box.pixels()->row(10)[3 * x], 255) << x;
        EXPECT_EQ(box.pixels()->row(10)[3 * x + 1], 0) << x;
    }
    EXPECT_NE(box.pixels()->row(10)[3 * 100 + 1], 0);
}

TEST_F(PosterPicture, InvalidSizeLeavesItEmpty) {
    startZoomed();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(0.5, 8);
    box.setSize(400, 400);
    window->FillPreview(box);
    EXPECT_FALSE(box.pixels());
}

TEST_F(PosterPicture, BoxWithoutASizeStaysEmpty) {
    startZoomed();
    window->FillPreview(box);
    EXPECT_FALSE(box.pixels());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(PosterPicture, PhotoReplacedInTheMiddleDoesNoHarm) {
    fakes.tree.addFolder("/photos/summer");
    startZoomed();
    box.setSize(400, 400);
    fakes.eventPump.whileServing = [this] { window->Dir1.setPath("/photos/summer"); };
    window->FillPreview(box);
    ASSERT_TRUE(box.pixels());
    EXPECT_EQ(box.pixels()->width(), 400);
    EXPECT_FALSE(window->bImgSelected);
}

TEST_F(PosterPicture, LackOfMemoryIsReported) {
    startZoomed();
    box.setSize(400, 400);
    fakes.eventPump.whileServing = [] { throw std::bad_alloc(); };
    window->FillPreview(box);
    EXPECT_EQ(fakes.dialogs.onlyMessage().icon, MessageIcon::critical);
    EXPECT_FALSE(box.pixels());
}

TEST_F(PosterPicture, LackOfAThreadIsReportedAndLeavesNoHourglass) {
    startZoomed();
    window->cmdLargePreview.userClick();
    auto& preview = static_cast<frmPreview&>(*fakes.screen.lastShown);
    preview.userResize(800, 600);
    fakes.eventPump.whileServing = [] {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    };
    window->cmdLargePreview.userClick();
    EXPECT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_EQ(window->pointer(), Pointer::arrow);
    EXPECT_EQ(preview.pointer(), Pointer::arrow);
}

TEST_F(PosterPicture, HourglassIsSetBeforeItsWindowIsShown) {
    startZoomed();
    std::vector<std::string> seen;
    window->observe([&](Property property) {
        if (property == Property::pointer && window->pointer() == Pointer::hourglass) {
            seen = fakes.screen.log;
        }
    });
    window->cmdLargePreview.userClick();
    EXPECT_THAT(seen, ElementsAre("show frmMain"));
}

} // namespace
} // namespace veldara::test
