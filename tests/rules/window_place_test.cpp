#include "layout/window_place.h"

#include <gtest/gtest.h>

namespace veldara {

namespace {

const ScreenRect laptop{0, 0, 1366, 740};
const ScreenRect beside{1366, -200, 1920, 1080};

TEST(WindowPlace, IsTheSameAfterItWasStored) {
    const WindowPlace place{{-30, 40, 1180, 780}, true, 250};
    EXPECT_EQ(windowPlaceText(place), "-30 40 1180 780 1 250");
    EXPECT_EQ(readWindowPlace(windowPlaceText(place)), place);
}

TEST(WindowPlace, IsNotReadFromOtherText) {
    for (const char* text :
         {"", "1180", "10 20 1180 780 0", "10 20 1180 780 0 250 ", "10 20 1180 780 0 250 9",
          "10,20,1180,780,0,250", "10 20 0 780 0 250", "10 20 1180 -780 0 250",
          "10 20 1180 780 0 -1", "10 20 1180 780 0 9999999999", "10 20 1180 780000 0 250"}) {
        EXPECT_FALSE(readWindowPlace(text)) << text;
    }
}

TEST(WindowPlace, StaysWhereItIsWhenAScreenShowsAllOfIt) {
    const ScreenRect there{1500, 100, 800, 600};
    EXPECT_EQ(placeOnScreen(there, {laptop, beside}), there);
}

TEST(WindowPlace, MovesOntoTheScreenThatShowsMostOfIt) {
    EXPECT_EQ(placeOnScreen({1200, 100, 800, 600}, {laptop, beside}),
              (ScreenRect{1366, 100, 800, 600}));
    EXPECT_EQ(placeOnScreen({-500, 300, 1000, 700}, {laptop, beside}),
              (ScreenRect{0, 40, 1000, 700}));
}

TEST(WindowPlace, MovesOntoTheFirstScreenWhenItsOwnIsGone) {
    EXPECT_EQ(placeOnScreen({3000, -100, 900, 600}, {laptop}), (ScreenRect{466, 0, 900, 600}));
}

TEST(WindowPlace, ShrinksToASmallerScreen) {
    EXPECT_EQ(placeOnScreen({100, 100, 1900, 1000}, {laptop}), laptop);
}

TEST(LineWidth, FollowsTheScaleOfTheDisplay) {
    EXPECT_EQ(lineWidth(0.5), 1);
    EXPECT_EQ(lineWidth(1), 1);
    EXPECT_EQ(lineWidth(1.25), 1);
    EXPECT_EQ(lineWidth(1.5), 2);
    EXPECT_EQ(lineWidth(2), 2);
    EXPECT_EQ(lineWidth(3), 3);
}

TEST(LineStart, CoversThePixelAndStaysInside) {
    EXPECT_EQ(lineStart(50, 1, 0, 99), 50);
    for (const int width : {2, 3, 4}) {
        for (const int pixel : {0, 1, 50, 98, 99}) {
            const int start = lineStart(pixel, width, 0, 99);
            EXPECT_GE(start, 0);
            EXPECT_LE(start, pixel);
            EXPECT_GT(start + width, pixel);
            EXPECT_LE(start + width, 100);
        }
    }
    EXPECT_EQ(lineStart(7, 3, 7, 8), 7); // no room for all of it
}

} // namespace

} // namespace veldara
