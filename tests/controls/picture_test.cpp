#include "controls/picture.h"
#include "controls/watch.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

class APicture : public ::testing::Test {
  protected:
    APicture() : watch(picture) {
        picture.onResize = watch.event("resize");
        picture.onMouseDown = [this](MouseButton, int x, int y) { note("down", x, y); };
        picture.onMouseMove = [this](int x, int y) { note("move", x, y); };
        picture.onMouseUp = [this](MouseButton, int x, int y) { note("up", x, y); };
    }
    void note(const std::string& what, int x, int y) {
        mouse.push_back(what + " " + std::to_string(x) + "," + std::to_string(y));
    }
    Picture picture;
    Watch watch;
    Log mouse;
};

TEST_F(APicture, ShowsEitherPixelsOrADrawing) {
    picture.setDrawing(Drawing::pickImage);
    EXPECT_EQ(picture.drawing(), Drawing::pickImage);
    picture.setPixels(std::make_shared<const Image>());
    EXPECT_EQ(picture.drawing(), Drawing::none);
    EXPECT_TRUE(picture.pixels());
    picture.setDrawing(Drawing::error);
    EXPECT_FALSE(picture.pixels());
    EXPECT_EQ(watch.taken(), (Log{"picture", "picture", "picture"}));
}

TEST_F(APicture, NotifiesNothingForTheDrawingThatItShows) {
    picture.setDrawing(Drawing::loading1);
    watch.taken();
    picture.setDrawing(Drawing::loading1);
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_F(APicture, TakesItsPixelsAwayForNoDrawing) {
    picture.setPixels(std::make_shared<const Image>());
    picture.setDrawing(Drawing::none);
    EXPECT_FALSE(picture.pixels());
    watch.taken();
    picture.setDrawing(Drawing::none);
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_F(APicture, ReportsADoubleClickOnlyWhileItCanBeReached) {
    picture.onDoubleClick = watch.event("double");
    picture.userDoubleClick();
    picture.setEnabled(false);
    picture.userDoubleClick();
    EXPECT_EQ(watch.taken(), (Log{"double", "enabled"}));
}

TEST_F(APicture, RaisesResizeForANewSizeOnly) {
    picture.setSize(400, 300);
    picture.userResize(400, 300);
    picture.userResize(400, 301);
    EXPECT_EQ(watch.taken(), (Log{"range", "resize", "range", "resize"}));
    EXPECT_EQ(picture.width(), 400);
    EXPECT_EQ(picture.height(), 301);
}

TEST_F(APicture, NotifiesItsPlaceWithoutAnEvent) {
    picture.setPlace(10, 19);
    picture.setPlace(10, 20);
    picture.setPlace(10, 20);
    EXPECT_EQ(watch.taken(), (Log{"range", "range"}));
    EXPECT_EQ(picture.left(), 10);
    EXPECT_EQ(picture.top(), 20);
}

TEST_F(APicture, PassesTheMouseOn) {
    picture.userMouseDown(MouseButton::left, 1, 2);
    picture.userMouseMove(3, 4);
    picture.userMouseUp(MouseButton::left, 5, 6);
    EXPECT_EQ(mouse, (Log{"down 1,2", "move 3,4", "up 5,6"}));
}

TEST_F(APicture, ThatCannotBeReachedStillLearnsOfARelease) {
    picture.userMouseDown(MouseButton::left, 1, 2);
    picture.setEnabled(false);
    picture.userMouseDown(MouseButton::left, 1, 2);
    picture.userMouseMove(3, 4);
    picture.userMouseUp(MouseButton::left, 5, 6);
    EXPECT_EQ(mouse, (Log{"down 1,2", "up 5,6"}));
}

TEST(APictureWithoutHandlers, IgnoresTheMouse) {
    Picture picture;
    EXPECT_NO_THROW({
        picture.userMouseDown(MouseButton::right, 0, 0);
        picture.userMouseMove(0, 0);
        picture.userMouseUp(MouseButton::right, 0, 0);
    });
}

} // namespace
} // namespace veldara::test
