// Bounds, signs and halves that a small slip would move, each by itself.
#include "calibration/edge_profile.h"
#include "calibration/profile_list.h"
#include "layout/full_preview.h"
#include "layout/preview_grid.h"
#include "layout/preview_resize.h"
#include "layout/tile_grid.h"
#include "layout/tile_size.h"
#include "platform/error.h"
#include "platform/text/characters.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(Letters, ChangeTheirCaseFromTheFirstToTheLast) {
    EXPECT_EQ(lowerCase("@AZ["), "@az[");
}

// A crop one pixel narrower than the photo, in its middle: the half pixel goes to the even side.
TEST(TheCropsPlace, IsRoundedHalfToEven) {
    PosterLayout layout;
    layout.photoWidth = 101;
    layout.photoHeight = 100;
    layout.tilesWide = 1;
    layout.tilesHigh = 1;
    layout.tileWidthInches = 1;
    layout.tileHeightInches = 1;
    EXPECT_EQ(cropRect(layout), (CropRect{0, 0, 100, 100})); // 0.5
    layout.photoWidth = 103;
    EXPECT_EQ(cropRect(layout), (CropRect{2, 0, 100, 100})); // 1.5
    layout.photoWidth = 100;
    layout.photoHeight = 105;
    EXPECT_EQ(cropRect(layout), (CropRect{0, 2, 100, 100})); // 2.5
}

TEST(TileLimits, ForgiveWhatASubtractionOfDecimalsLeaves) {
    const double least = 0.75 * 25.4;
    EXPECT_FALSE(isBelow(least - 1e-12, least)); // as 148 - 64.475 - 64.475 may come out
    EXPECT_TRUE(isBelow(least - 1e-6, least));
    EXPECT_FALSE(isAbove(50 + 1e-12, 50));
    EXPECT_TRUE(isAbove(50 + 1e-6, 50));
}

int redPixels(const Image& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const std::uint8_t* pixel = image.row(y) + 3 * x;
            count += pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 0;
        }
    }
    return count;
}

TEST(GridLines, RunFromTheirFirstPixelToTheirLast) {
    Image image = Image::filled(10, 8, 0, 0, 0);
    drawColumn(image.mutableView(), 4, 2, 5);
    EXPECT_EQ(redPixels(image), 4);
    EXPECT_EQ(image.row(2)[12], 255);
    EXPECT_EQ(image.row(5)[12], 255);
    image = Image::filled(10, 8, 0, 0, 0);
    drawRow(image.mutableView(), 3, 1, 7);
    EXPECT_EQ(redPixels(image), 7);
    EXPECT_EQ(image.row(3)[3], 255);
    EXPECT_EQ(image.row(3)[21], 255);
}

TEST(GridLines, EndAtThePicturesSides) {
    Image image = Image::filled(10, 8, 0, 0, 0);
    drawColumn(image.mutableView(), 0, -5, 50);
    drawColumn(image.mutableView(), 9, -5, 50);
    EXPECT_EQ(redPixels(image), 16);
    drawRow(image.mutableView(), 0, -5, 50);
    drawRow(image.mutableView(), 7, -5, 50);
    EXPECT_EQ(redPixels(image), 16 + 16);
    drawColumn(image.mutableView(), -1, 0, 7);
    drawColumn(image.mutableView(), 10, 0, 7);
    drawRow(image.mutableView(), -1, 0, 9);
    drawRow(image.mutableView(), 8, 0, 9);
    EXPECT_EQ(redPixels(image), 16 + 16);
}

TEST(PreviewWindow, HasItsButtonInTheMiddle) {
    EXPECT_EQ(fitToNewSize(1000, 700, 80, 30, 0).closeLeft, 460);
    EXPECT_EQ(fitToNewSize(50, 700, 80, 30, 0).closeLeft, 0);
}

TEST(ARescaledCrop, GrowsWithThePreview) {
    const PreviewCrop crop{10, 20, 31, 45};
    const PreviewCrop half = rescaledCrop(crop, 0.5, 0.25);
    EXPECT_EQ(half.left, 5);
    EXPECT_EQ(half.top, 10);
    EXPECT_EQ(half.right, 16);  // 15.5
    EXPECT_EQ(half.bottom, 22); // 22.5
    const PreviewCrop larger = rescaledCrop({1, 3, 5, 7}, 1.0, 1.5);
    EXPECT_EQ(larger.left, 2); // 1.5
    EXPECT_EQ(larger.top, 4);  // 4.5
    EXPECT_EQ(larger.right, 8);
    EXPECT_EQ(larger.bottom, 10); // 10.5
}

TEST(ARescaledCrop, StaysWhereThereWasNoPreview) {
    const PreviewCrop crop{10, 20, 31, 45};
    const PreviewCrop same = rescaledCrop(crop, 0.0, 0.25);
    EXPECT_EQ(same.left, 10);
    EXPECT_EQ(same.top, 20);
    EXPECT_EQ(same.right, 31);
    EXPECT_EQ(same.bottom, 45);
}

TEST(EdgeDescription, IsOfNothingForACountOfNothingOnly) {
    EXPECT_EQ(edgeDescription(0, Units::inches, {}), "None of the image is clipped");
    EXPECT_EQ(edgeDescription(1, Units::inches, {}), "Printer cuts off  1/64 inches of image");
    EXPECT_EQ(edgeDescription(2, Units::inches, {}), "Printer cuts off  1/32 inches of image");
}

TEST(AProfileLine, HasItsNameBeforeTheFirstTab) {
    EXPECT_THROW(ParseProfileLine("a\tb\t01,02,03,04,"), Error);
    EXPECT_EQ(ParseProfileLine("a\t01,02,03,04,\trest").name, "a");
}

TEST(AProfileName, CannotHoldWhatTheFileNeeds) {
    EXPECT_EQ(profileName("a\tb\rc\nd"), "a b c d");
    EXPECT_EQ(profileName(" my  printer, left tray "), " my  printer, left tray ");
}

TEST(ThePositionAfterADelete, StaysWithItsProfile) {
    EXPECT_EQ(positionAfterDelete(3, 1, 5), 2); // one before it went
    EXPECT_EQ(positionAfterDelete(1, 3, 5), 1); // one behind it went
    EXPECT_EQ(positionAfterDelete(2, 2, 5), 2); // it went itself: the one behind it
    EXPECT_EQ(positionAfterDelete(5, 5, 5), 4); // the last went
}

} // namespace
} // namespace veldara
