// Loading a photo: the order, the refusals, the animation, and what may happen in the middle of it.
#include "loading_fixture.h"

#include <new>
#include <system_error>

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(LoadingAPhoto, FileIsLoadedFromTheFolder) {
    const frmMain& main = startWithPhoto();
    EXPECT_THAT(loaded, ElementsAre("/photos/photo.jpg"));
    EXPECT_EQ(main.lImgWidth, 3000);
    EXPECT_EQ(main.lImgHeight, 2000);
    EXPECT_EQ(main.currentPhoto()->width(), 3000);
    EXPECT_TRUE(main.cmdSaveNow.enabled());
    EXPECT_TRUE(main.cmdLargePreview.enabled());
    EXPECT_EQ(main.loadError(), 0);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LoadingAPhoto, RootFolderGetsNoSecondSeparator) {
    fakes.tree.addFile("/a.jpg");
    sizes["a.jpg"] = {100, 100};
    store("last_folder", "/");
    start();
    clickFile("a.jpg");
    EXPECT_THAT(loaded, ElementsAre("/a.jpg"));
}

TEST_F(LoadingAPhoto, FiguresAndLabelsFollow) {
    const frmMain& main = startWithPhoto();
    EXPECT_EQ(main.lblFinalSize.caption(), "12 x 8 inches");
    EXPECT_EQ(main.lblResolution.caption(), "250.0 dpi");
    EXPECT_EQ(main.lblQuality.caption(), "Excellent");
    EXPECT_EQ(main.lblMPixVal.caption(), "6.00");
    EXPECT_EQ(main.lblLrValue.caption(), "(full width)");
    EXPECT_EQ(main.lblTbValue.caption(), "(full height)");
}

TEST_F(LoadingAPhoto, PreviewFitsTheBox) {
    startWithPhoto(1000, 2000);
    EXPECT_EQ(window->picCur.pixels()->width(), 100);
    EXPECT_EQ(window->picCur.pixels()->height(), 200);
}

TEST_F(LoadingAPhoto, PhotoOfTheBoxesRatioFillsIt) {
    startWithPhoto();
    EXPECT_EQ(window->picCur.pixels()->width(), 300);
    EXPECT_EQ(window->picCur.pixels()->height(), 200);
}

TEST_F(LoadingAPhoto, LongThinPhotoKeepsAPixelOfPreview) {
    startWithPhoto(25, 40000);
    EXPECT_EQ(window->picCur.pixels()->height(), 200);
    EXPECT_EQ(window->picCur.pixels()->width(), 1);
}

TEST_F(LoadingAPhoto, BoxWithoutASizeDoesNoHarm) {
    addPhoto("photo.jpg", 100, 100);
    create().picCur.setSize(0, 0);
    window->load();
    clickFile("photo.jpg");
    EXPECT_TRUE(window->bImgSelected);
}

class LoadingTurned : public LoadingAPhoto,
                      public ::testing::WithParamInterface<std::pair<int, bool>> {};

TEST_P(LoadingTurned, AppliesTheChosenRotation) {
    addPhoto("photo.jpg", 60, 40);
    start().cmbRotate.userSelect(GetParam().first);
    clickFile("photo.jpg");
    EXPECT_EQ(window->lImgWidth, GetParam().second ? 40 : 60);
    EXPECT_EQ(window->lImgHeight, GetParam().second ? 60 : 40);
    EXPECT_EQ(window->currentPhoto()->width(), window->lImgWidth);
    EXPECT_EQ(window->cmbRotate.listIndex(), GetParam().first);
}

INSTANTIATE_TEST_SUITE_P(All, LoadingTurned,
                         ::testing::Values(std::pair{0, false}, std::pair{1, true},
                                           std::pair{2, true}, std::pair{3, false}));

TEST_F(LoadingAPhoto, SmallestPhotoLoads) {
    startWithPhoto(25, 25);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

// Nothing is drawn that an impossible tile size could spoil; saving tells of it.
TEST_F(LoadingAPhoto, WithTheGridOffOffersBothButtonsWhateverTheTileSize) {
    addPhoto("photo.jpg", 300, 200);
    start();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(0.5, 8);
    clickFile("photo.jpg");
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_TRUE(window->cmdSaveNow.enabled());
    EXPECT_TRUE(window->cmdLargePreview.enabled());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

class TooSmall : public LoadingAPhoto, public ::testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(TooSmall, IsRefused) {
    addPhoto("tiny.jpg", GetParam().first, GetParam().second);
    start();
    clickFile("tiny.jpg");
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Image File Selected",
                       "The image you selected is EXTREMELY small.  It has a height and/or width "
                       "that is below the minimum allowable size of 25 pixels.  Please select a "
                       "larger image.  "));
    EXPECT_EQ(window->loadError(), 402);
    EXPECT_EQ(window->picCur.drawing(), Drawing::error);
    expectNoPhoto();
}

INSTANTIATE_TEST_SUITE_P(All, TooSmall,
                         ::testing::Values(std::pair{24, 500}, std::pair{500, 24},
                                           std::pair{1, 1}));

TEST_F(LoadingAPhoto, LongEndingIsRefusedEvenWhereItIsListed) {
    addPhoto("photo.jpeg", 100, 100);
    start().cmbFileType.userSelect(4);
    clickFile("photo.jpeg");
    const Message message = fakes.dialogs.onlyMessage();
    EXPECT_THAT(message.text, HasSubstr("photo.jpeg"));
    EXPECT_EQ(message.icon, MessageIcon::critical);
    EXPECT_EQ(window->picCur.drawing(), Drawing::error);
    EXPECT_THAT(loaded, IsEmpty());
    expectNoPhoto();
}

TEST_F(LoadingAPhoto, UnreadableFileIsNamedWithItsReason) {
    fakes.tree.addFile("/photos/broken.jpg");
    start();
    clickFile("broken.jpg");
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Image File Selected", "The file \"broken.jpg\" is no picture."));
    EXPECT_EQ(window->loadError(), 1);
    EXPECT_EQ(window->picCur.drawing(), Drawing::error);
    expectNoPhoto();
}

TEST_F(LoadingAPhoto, ErrorPictureIsShownBeforeTheMessage) {
    fakes.tree.addFile("/photos/broken.jpg");
    start();
    Drawing shown = Drawing::none;
    fakes.dialogs.whileMessageShown = [&](const Message&) { shown = window->picCur.drawing(); };
    clickFile("broken.jpg");
    EXPECT_EQ(shown, Drawing::error);
}

TEST_F(LoadingAPhoto, LackOfMemoryIsNamedLikeAnyOtherReason) {
    addPhoto("huge.jpg", 100, 100);
    start();
    whileLoading = [](const std::string&) { throw std::bad_alloc(); };
    clickFile("huge.jpg");
    const Message message = fakes.dialogs.onlyMessage();
    EXPECT_THAT(message.text, HasSubstr("huge.jpg"));
    EXPECT_THAT(message.text, HasSubstr("memory"));
    EXPECT_EQ(message.icon, MessageIcon::critical);
    expectNoPhoto();
}

TEST_F(LoadingAPhoto, LackOfAThreadIsReportedLikeLackOfMemory) {
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoadingOnce([] {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    });
    clickFile("photo.jpg");
    EXPECT_THAT(fakes.dialogs.onlyMessage().text, HasSubstr("photo.jpg"));
    expectNoPhoto();
    EXPECT_FALSE(window->tmrLoadingImg.enabled());
    clickFile("photo.jpg");
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(LoadingAPhoto, WindowStaysUsableAfterAFailure) {
    fakes.tree.addFile("/photos/broken.jpg");
    addPhoto("good.jpg", 100, 100);
    start();
    clickFile("broken.jpg");
    clickFile("good.jpg");
    EXPECT_TRUE(window->bImgSelected);
    clickFile("broken.jpg");
    expectNoPhoto();
    EXPECT_TRUE(window->currentPhoto()->empty()) << "the photo before it is let go";
}

TEST_F(LoadingAPhoto, SameFileCanBeTriedAgain) {
    fakes.tree.addFile("/photos/broken.jpg");
    start();
    clickFile("broken.jpg");
    sizes["broken.jpg"] = {100, 100}; // it was mended meanwhile
    clickFile("broken.jpg");
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(LoadingAPhoto, OldPhotoIsNoLongerSelectedWhileTheNextOneLoads) {
    addPhoto("next.jpg", 100, 100);
    startWithPhoto();
    bool selected = true;
    bool ready = true;
    whileLoading = [&](const std::string&) {
        selected = window->bImgSelected;
        ready = window->cmdSaveNow.enabled();
        EXPECT_EQ(window->lblResolution.caption(), "---");
        EXPECT_TRUE(window->currentPhoto()->empty()) << "its memory is free for the next";
    };
    clickFile("next.jpg");
    EXPECT_FALSE(selected);
    EXPECT_FALSE(ready);
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(LoadingAPhoto, AnimationRunsWhileTheLoaderWorks) {
    addPhoto("photo.jpg", 100, 100);
    start();
    fakes.clock.drive(window->tmrLoadingImg);
    std::vector<Drawing> frames;
    whileLoading = [&](const std::string&) {
        EXPECT_TRUE(window->tmrLoadingImg.enabled());
        frames.push_back(window->picCur.drawing());
        for (int i = 0; i < 5; ++i) {
            fakes.clock.advance(100);
            frames.push_back(window->picCur.drawing());
        }
    };
    clickFile("photo.jpg");
    EXPECT_THAT(frames, ElementsAre(Drawing::loading1, Drawing::loading2, Drawing::loading3,
                                    Drawing::loading4, Drawing::loading1, Drawing::loading2));
    EXPECT_FALSE(window->tmrLoadingImg.enabled());
}

TEST_F(LoadingAPhoto, EveryTickOfTheAnimationServesEvents) {
    addPhoto("photo.jpg", 100, 100);
    start();
    const int before = fakes.eventPump.eventRuns;
    whileLoading = [&](const std::string&) { window->tmrLoadingImg.tick(); };
    clickFile("photo.jpg");
    EXPECT_EQ(fakes.eventPump.eventRuns, before + 1);
}

TEST_F(LoadingAPhoto, TickInsideATickIsIgnored) {
    addPhoto("photo.jpg", 100, 100);
    start();
    fakes.eventPump.whileEventsRun = [&] { window->tmrLoadingImg.tick(); };
    whileLoading = [&](const std::string&) {
        window->tmrLoadingImg.tick();
        EXPECT_EQ(window->picCur.drawing(), Drawing::loading2);
    };
    clickFile("photo.jpg");
}

TEST_F(LoadingAPhoto, LatestOfSeveralClicksWins) {
    for (const char* name : {"1st.jpg", "2nd.jpg", "3rd.jpg"}) {
        addPhoto(name, 100, 100);
    }
    addPhoto("3rd.jpg", 120, 100);
    start();
    whileLoadingOnce([this] {
        clickFile("2nd.jpg");
        clickFile("3rd.jpg");
    });
    clickFile("1st.jpg");
    EXPECT_THAT(loaded, ElementsAre("/photos/1st.jpg", "/photos/3rd.jpg"));
    EXPECT_EQ(window->lImgWidth, 120);
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_EQ(window->lstFiles.selectedText(), "3rd.jpg");
}

TEST_F(LoadingAPhoto, AClickOnAnotherFileStopsTheDecoding) {
    addPhoto("1st.jpg", 100, 100);
    addPhoto("2nd.jpg", 120, 100);
    start();
    whileLoading = [this](const std::string& name) {
        if (name == "1st.jpg") {
            clickFile("2nd.jpg");
        }
    };
    clickFile("1st.jpg");
    EXPECT_THAT(decoded, ::testing::ElementsAre("2nd.jpg"));
    EXPECT_EQ(window->lImgWidth, 120);
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LoadingAPhoto, AnotherFolderStopsTheDecoding) {
    fakes.tree.addFolder("/photos/summer");
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoading = [this](const std::string&) { window->Dir1.setPath("/photos/summer"); };
    clickFile("photo.jpg");
    EXPECT_TRUE(decoded.empty());
    expectNoPhoto();
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LoadingAPhoto, ClosingTheWindowStopsTheDecoding) {
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoading = [this](const std::string&) { window->unload(); };
    clickFile("photo.jpg");
    EXPECT_TRUE(decoded.empty());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LoadingAPhoto, FailureOfASupersededPhotoIsNotReported) {
    fakes.tree.addFile("/photos/broken.jpg");
    addPhoto("good.jpg", 100, 100);
    start();
    whileLoadingOnce([this] { clickFile("good.jpg"); });
    clickFile("broken.jpg");
    EXPECT_TRUE(fakes.dialogs.quiet());
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(LoadingAPhoto, ClickWhileThePreviewIsMadeIsServedAsWell) {
    addPhoto("1st.jpg", 100, 100);
    addPhoto("2nd.jpg", 120, 100);
    start();
    int works = 0;
    fakes.eventPump.whileServing = [&] {
        if (++works == 2) { // the first is the loader's
            clickFile("2nd.jpg");
        }
    };
    clickFile("1st.jpg");
    EXPECT_EQ(window->lImgWidth, 120);
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(LoadingAPhoto, ChangingTheFolderAbandonsTheLoad) {
    fakes.tree.addFolder("/photos/summer");
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoadingOnce([this] { window->Dir1.setPath("/photos/summer"); });
    clickFile("photo.jpg");
    expectNoPhoto();
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LoadingAPhoto, FilterThatStillListsThePhotoLetsItLoad) {
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoadingOnce([this] { window->cmbFileType.userSelect(1); });
    clickFile("photo.jpg");
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_EQ(window->lstFiles.selectedText(), "photo.jpg");
}

TEST_F(LoadingAPhoto, NeitherButtonIsOfferedMeanwhileWhateverTheTileSize) {
    addPhoto("next.jpg", 100, 100);
    startWithPhoto();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(60, 60); // out of range: the figures are not refreshed
    window->cmdSaveNow.setEnabled(true);
    window->cmdLargePreview.setEnabled(true);
    bool offered = true;
    whileLoadingOnce(
        [&] { offered = window->cmdSaveNow.enabled() || window->cmdLargePreview.enabled(); });
    clickFile("next.jpg");
    EXPECT_FALSE(offered);
}

TEST_F(LoadingAPhoto, FilterThatNoLongerListsThePhotoAbandonsTheLoad) {
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoadingOnce([this] { window->cmbFileType.userSelect(2); });
    clickFile("photo.jpg");
    expectNoPhoto();
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
}

TEST_F(LoadingAPhoto, RotationChosenWhileLoadingIsApplied) {
    addPhoto("photo.jpg", 60, 40);
    start();
    whileLoadingOnce([this] { window->cmbRotate.userSelect(1); });
    clickFile("photo.jpg");
    EXPECT_EQ(window->lImgWidth, 40);
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(LoadingAPhoto, RotationChosenWhileThePreviewIsMadeIsApplied) {
    addPhoto("photo.jpg", 60, 40);
    start();
    int works = 0;
    fakes.eventPump.whileServing = [&] {
        if (++works == 2) {
            window->cmbRotate.userSelect(2);
        }
    };
    clickFile("photo.jpg");
    EXPECT_EQ(window->lImgWidth, 40);
    EXPECT_EQ(window->currentPhoto()->width(), 40);
}

TEST_F(LoadingAPhoto, EveryOtherHandlerIsSafeInTheMiddle) {
    addPhoto("photo.jpg", 3000, 2000);
    startWithPhoto();
    whileLoadingOnce([this] {
        window->cmbTilesWide.userSelect(3);
        window->cmbTilesHigh.userSelect(2);
        window->chkLockWh.userSetChecked(true);
        window->chkRotateTiles.userSetChecked(true);
        window->chkPreviewTiles.userSetChecked(false);
        window->chkPreviewTiles.userSetChecked(true);
        window->chkPrinterClips.userSetChecked(true);
        window->scrZoom.userSetValue(50);
        window->picCur.userMouseDown(MouseButton::left, 150, 100);
        window->picCur.userMouseMove(160, 100);
        window->picCur.userMouseUp(MouseButton::left, 170, 100);
        window->imgArrow.userMouseDown(MouseButton::left, 10, 50);
        window->tmrImg.tick();
        window->imgArrow.userMouseUp(MouseButton::left, 10, 50);
        window->picCur.userResize(150, 100);
        window->tmrResize.tick();
        window->cmdSaveNow.userClick();
        window->cmdLargePreview.userClick();
        setTileInches(8, 10);
    });
    clickFile("photo.jpg");
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_EQ(window->picCur.pixels()->width(), 150) << "made for the box as it is by then";
    EXPECT_EQ(window->lblLrValue.caption(), "(center)");
}

TEST_F(LoadingAPhoto, ClosingTheWindowInTheMiddleSavesAndEnds) {
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoadingOnce([this] { window->userClose(); });
    clickFile("photo.jpg");
    EXPECT_FALSE(window->visible());
    EXPECT_FALSE(window->bImgSelected);
    EXPECT_FALSE(window->tmrLoadingImg.enabled());
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LoadingAPhoto, ClosingTheWindowReportsNoFailureAfterwards) {
    fakes.tree.addFile("/photos/broken.jpg");
    start();
    whileLoadingOnce([this] { window->userClose(); });
    clickFile("broken.jpg");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LoadingAPhoto, ExitInTheMiddleSavesNothing) {
    addPhoto("photo.jpg", 100, 100);
    start();
    whileLoadingOnce([this] { window->cmdQuit.userClick(); });
    clickFile("photo.jpg");
    EXPECT_TRUE(fakes.screen.programEnded);
    EXPECT_FALSE(window->bImgSelected);
    EXPECT_FALSE(saved());
}

TEST_F(LoadingAPhoto, DecodingTurningAndResamplingAllServeEvents) {
    addPhoto("photo.jpg", 100, 100);
    start().cmbRotate.userSelect(1);
    const int before = fakes.eventPump.works;
    clickFile("photo.jpg");
    EXPECT_EQ(fakes.eventPump.works, before + 3);
}

} // namespace
} // namespace veldara::test
