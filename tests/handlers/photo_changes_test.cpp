// The loaded photo turned, and its preview for a box of another size.
#include "loading_fixture.h"

#include <new>
#include <system_error>

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class TurningThePhoto : public LoadingAPhoto {};

TEST_F(TurningThePhoto, ExchangesTheSidesForQuarterTurns) {
    startWithPhoto();
    window->cmbRotate.userSelect(1);
    EXPECT_EQ(window->lImgWidth, 2000);
    EXPECT_EQ(window->lImgHeight, 3000);
    window->cmbRotate.userSelect(3); // 90 to 180: a quarter turn more
    EXPECT_EQ(window->lImgWidth, 3000);
    window->cmbRotate.userSelect(2); // 180 to 270
    EXPECT_EQ(window->lImgWidth, 2000);
    window->cmbRotate.userSelect(0); // 270 to 0
    EXPECT_EQ(window->lImgWidth, 3000);
    EXPECT_EQ(loaded.size(), 1U) << "the file is never read again";
}

TEST_F(TurningThePhoto, TurnsThePixelsExactly) {
    addPhoto("photo.jpg", 60, 40);
    create();
    Platform& all = *platform;
    window = std::make_unique<frmMain>(all, fakes.screen, [](const auto&, const StopFlag&) {
        Image image = Image::filled(60, 40, 0, 0, 0);
        image.row(0)[0] = 200; // the top-left corner
        image.dotsPerInch = 300;
        image.colourProfile = {1, 2, 3};
        return image;
    });
    window->picCur.setSize(300, 200);
    window->load();
    clickFile("photo.jpg");
    window->cmbRotate.userSelect(1);
    EXPECT_EQ(window->currentPhoto()->row(0)[3 * 39], 200) << "clockwise: top right";
    window->cmbRotate.userSelect(3);
    EXPECT_EQ(window->currentPhoto()->row(39)[3 * 59], 200) << "half: bottom right";
    window->cmbRotate.userSelect(2);
    EXPECT_EQ(window->currentPhoto()->row(59)[0], 200) << "counter-clockwise: bottom left";
    window->cmbRotate.userSelect(0);
    EXPECT_EQ(window->currentPhoto()->row(0)[0], 200);
    EXPECT_EQ(window->currentPhoto()->dotsPerInch, 300);
    EXPECT_THAT(window->currentPhoto()->colourProfile, ElementsAre(1, 2, 3));
}

TEST_F(TurningThePhoto, RefreshesPreviewFiguresAndLabels) {
    startWithPhoto();
    window->cmbRotate.userSelect(1);
    EXPECT_EQ(window->picCur.pixels()->width(), 133);
    EXPECT_EQ(window->picCur.pixels()->height(), 200);
    EXPECT_EQ(window->lblResolution.caption(), "166.7 dpi");
    EXPECT_EQ(window->lblLrValue.caption(), "(full width)");
    EXPECT_EQ(window->lblTbValue.caption(), "(center)");
    EXPECT_TRUE(window->cmdSaveNow.enabled());
    EXPECT_FALSE(saved());
    EXPECT_EQ(window->pointer(), Pointer::arrow);
}

TEST_F(TurningThePhoto, DoesNothingWithoutAPhoto) {
    start().cmbRotate.userSelect(1);
    EXPECT_FALSE(window->bImgSelected);
    EXPECT_EQ(fakes.eventPump.works, 0);
}

TEST_F(TurningThePhoto, PhotoIsNotSelectedMeanwhile) {
    startWithPhoto();
    whileLoadingOnce([this] {
        EXPECT_FALSE(window->bImgSelected);
        EXPECT_FALSE(window->cmdSaveNow.enabled());
        EXPECT_EQ(window->pointer(), Pointer::hourglass);
    });
    window->cmbRotate.userSelect(1);
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(TurningThePhoto, AnotherChoiceDuringTheTurnIsServed) {
    startWithPhoto();
    whileLoadingOnce([this] { window->cmbRotate.userSelect(3); });
    window->cmbRotate.userSelect(1);
    EXPECT_EQ(window->lImgWidth, 3000);
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(TurningThePhoto, ChoiceTakenBackDuringTheTurnIsTakenBack) {
    startWithPhoto();
    whileLoadingOnce([this] { window->cmbRotate.userSelect(0); });
    window->cmbRotate.userSelect(1);
    EXPECT_EQ(window->lImgWidth, 3000);
    EXPECT_EQ(window->currentPhoto()->width(), 3000);
}

TEST_F(TurningThePhoto, ClickOnAFileMeanwhileLoadsIt) {
    addPhoto("next.jpg", 100, 50);
    startWithPhoto();
    whileLoadingOnce([this] { clickFile("next.jpg"); });
    window->cmbRotate.userSelect(1);
    EXPECT_EQ(window->lImgWidth, 50) << "turned as the list says";
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(TurningThePhoto, FolderChangedMeanwhileLeavesNoPhoto) {
    fakes.tree.addFolder("/photos/summer");
    startWithPhoto();
    whileLoadingOnce([this] { window->Dir1.setPath("/photos/summer"); });
    window->cmbRotate.userSelect(1);
    expectNoPhoto();
    EXPECT_TRUE(window->currentPhoto()->empty());
}

TEST_F(TurningThePhoto, LackOfMemoryOrOfAThreadLeavesThePhotoAsItWas) {
    startWithPhoto();
    whileLoadingOnce([] { throw std::bad_alloc(); });
    window->cmbRotate.userSelect(1);
    whileLoadingOnce([] {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    });
    window->cmbRotate.userSelect(1);
    ASSERT_EQ(fakes.dialogs.messages.size(), 2U);
    EXPECT_THAT(fakes.dialogs.messages[0].text, HasSubstr("memory"));
    EXPECT_EQ(fakes.dialogs.messages[1], fakes.dialogs.messages[0]);
    EXPECT_EQ(window->cmbRotate.listIndex(), 0);
    EXPECT_EQ(window->lImgWidth, 3000);
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_TRUE(window->cmdSaveNow.enabled());
    EXPECT_EQ(window->pointer(), Pointer::arrow);
}

TEST_F(TurningThePhoto, LackOfMemoryForItsPreviewLeavesThePhotoAsItWas) {
    startWithPhoto();
    const std::shared_ptr<const Image> photo = window->currentPhoto();
    const std::shared_ptr<const Image> shown = window->picCur.pixels();
    int work = 0;
    fakes.eventPump.whileServing = [&] {
        if (++work == 2) { // the turn itself has ended
            throw std::bad_alloc();
        }
    };
    window->cmbRotate.userSelect(1);
    EXPECT_THAT(fakes.dialogs.onlyMessage().text, HasSubstr("memory"));
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_EQ(window->currentPhoto(), photo);
    EXPECT_EQ(window->picCur.pixels(), shown);
    EXPECT_EQ(window->lImgWidth, 3000);
    EXPECT_EQ(window->cmbRotate.listIndex(), 0);
    EXPECT_TRUE(window->cmdSaveNow.enabled());
    EXPECT_EQ(window->pointer(), Pointer::arrow);
    window->cmbRotate.userSelect(1);
    EXPECT_EQ(window->lImgWidth, 2000) << "and it can be turned again";
}

// Resizing the picture box

class ResizingThePreview : public LoadingAPhoto {
  protected:
    void resize(int width, int height) {
        window->picCur.userResize(width, height);
        fakes.clock.drive(window->tmrResize);
        fakes.clock.advance(200);
    }
};

TEST_F(ResizingThePreview, RebuildsItForTheNewBox) {
    startWithPhoto();
    resize(600, 500);
    EXPECT_EQ(window->picCur.pixels()->width(), 600);
    EXPECT_EQ(window->picCur.pixels()->height(), 400);
    EXPECT_FALSE(window->tmrResize.enabled());
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(ResizingThePreview, WaitsUntilTheBoxRests) {
    startWithPhoto();
    const int before = fakes.eventPump.works;
    fakes.clock.drive(window->tmrResize);
    for (int width = 301; width < 400; ++width) {
        window->picCur.userResize(width, 300);
        fakes.clock.advance(10);
    }
    EXPECT_LE(fakes.eventPump.works - before, 17) << "not once a step";
    fakes.clock.advance(200);
    EXPECT_EQ(window->picCur.pixels()->width(), 399);
}

TEST_F(ResizingThePreview, WithoutAPhotoDoesNothing) {
    start();
    resize(600, 500);
    EXPECT_EQ(fakes.eventPump.works, 0);
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
}

TEST_F(ResizingThePreview, CropKeepsItsPlaceWhileTheGridIsOff) {
    startWithPhoto();
    window->scrZoom.userSetValue(100); // the crop is 75..224 x 50..149
    window->chkPreviewTiles.userSetChecked(false);
    resize(600, 400);
    window->picCur.userMouseMove(300, 200);
    EXPECT_EQ(window->pointer(), Pointer::crossHair);
    window->picCur.userMouseMove(140, 200);
    EXPECT_EQ(window->pointer(), Pointer::arrow);
    EXPECT_EQ(window->lblLrValue.caption(), "(center)");
}

TEST_F(ResizingThePreview, FailureKeepsTheOldPreview) {
    startWithPhoto();
    whileLoadingOnce([] { throw std::bad_alloc(); });
    resize(600, 400);
    EXPECT_EQ(window->picCur.pixels()->width(), 300);
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(ResizingThePreview, PhotoCanBeWorkedOnMeanwhile) {
    startWithPhoto();
    whileLoadingOnce([this] {
        EXPECT_TRUE(window->bImgSelected);
        window->scrZoom.userSetValue(100);
        EXPECT_EQ(window->picCur.pixels()->width(), 300);
    });
    resize(600, 400);
    EXPECT_EQ(window->picCur.pixels()->width(), 600);
}

TEST_F(ResizingThePreview, FolderChangedMeanwhileLeavesNoPhoto) {
    fakes.tree.addFolder("/photos/summer");
    startWithPhoto();
    whileLoadingOnce([this] { window->Dir1.setPath("/photos/summer"); });
    resize(600, 400);
    expectNoPhoto();
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
}

TEST_F(ResizingThePreview, ResizedAgainMeanwhileIsRebuiltAgain) {
    startWithPhoto();
    whileLoadingOnce([this] { window->picCur.userResize(900, 600); });
    resize(600, 400);
    EXPECT_EQ(window->picCur.pixels()->width(), 900);
}

} // namespace
} // namespace veldara::test
