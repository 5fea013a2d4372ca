#include "layout/preview_geometry.h"

#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(PreviewSize, FillsTheBoxWithTheSameShape) {
    const PreviewSize size = previewSize(3000, 2000, 450, 300);
    EXPECT_EQ(size.width, 450);
    EXPECT_EQ(size.height, 300);
    EXPECT_DOUBLE_EQ(size.scale, 0.15);
}

TEST(PreviewSize, FitsTheTighterSide) {
    EXPECT_EQ(previewSize(3000, 1000, 450, 300).width, 450);
    EXPECT_EQ(previewSize(3000, 1000, 450, 300).height, 150);
    EXPECT_EQ(previewSize(1000, 3000, 450, 300).width, 100);
    EXPECT_EQ(previewSize(1000, 3000, 450, 300).height, 300);
    EXPECT_EQ(previewSize(1000, 666, 300, 400).height, 200); // 199.8
}

TEST(PreviewSize, NeverRoundsASideAway) {
    EXPECT_EQ(previewSize(25, 30000, 400, 400).width, 1);
    EXPECT_EQ(previewSize(30000, 25, 400, 400).height, 1);
}

TEST(PreviewGrid, StandsAtTheTilesPlaces) {
    PosterLayout layout;
    layout.photoWidth = 1000;
    layout.photoHeight = 500;
    layout.tilesWide = 4;
    layout.tilesHigh = 2;
    layout.tileWidthInches = 1;
    layout.tileHeightInches = 1;
    const PreviewGrid grid = previewGrid(calcTileCoord(layout), 4, 2, 0.5, 500, 250);
    EXPECT_EQ(grid.columns, (std::vector<int>{0, 125, 250, 375, 499}));
    EXPECT_EQ(grid.rows, (std::vector<int>{0, 125, 249}));
    EXPECT_EQ(grid.crop, (PreviewCrop{0, 0, 499, 249}));
}

TEST(PreviewGrid, LowersOnlyRightAndBottomToThePicture) {
    const std::vector<TileRect> tiles{{999, 999, 999, 999}};
    const PreviewGrid grid = previewGrid(tiles, 1, 1, 1.0, 900, 950);
    EXPECT_EQ(grid.crop, (PreviewCrop{999, 999, 899, 949}));
}

TEST(PreviewCrop, ContainsItsEdges) {
    const PreviewCrop crop{10, 20, 30, 40};
    EXPECT_TRUE(crop.contains(10, 20));
    EXPECT_TRUE(crop.contains(30, 40));
    EXPECT_FALSE(crop.contains(9, 30));
    EXPECT_FALSE(crop.contains(31, 30));
    EXPECT_FALSE(crop.contains(20, 19));
    EXPECT_FALSE(crop.contains(20, 41));
}

TEST(Placement, TellsTheSideAndTheDistance) {
    const PreviewCrop crop{0, 0, 99, 99}; // in a preview of 200 x 200
    const auto texts = [&](int horz, int vert) {
        return placement(2000, 2000, 0.1, crop, {horz, vert});
    };
    EXPECT_EQ(texts(100, 100).horizontal, "(center)");
    EXPECT_EQ(texts(100, 100).vertical, "(center)");
    EXPECT_EQ(texts(75, 100).horizontal, "(left 25%)");
    EXPECT_EQ(texts(0, 100).horizontal, "(left 100%)");
    EXPECT_EQ(texts(200, 100).horizontal, "(right 100%)");
    EXPECT_EQ(texts(101, 100).horizontal, "(right 1%)");
    EXPECT_EQ(texts(100, 0).vertical, "(up 100%)");
    EXPECT_EQ(texts(100, 180).vertical, "(down 80%)");
    EXPECT_EQ(texts(75, 180).pan, (Pan{75, 180}));
}

TEST(Placement, CentresAnAxisThatIsFull) {
    const Placement wide = placement(2000, 2000, 0.1, {0, 0, 199, 99}, {30, 40});
    EXPECT_EQ(wide.horizontal, "(full width)");
    EXPECT_EQ(wide.vertical, "(up 60%)");
    EXPECT_EQ(wide.pan, (Pan{100, 40}));
    const Placement high = placement(2000, 2000, 0.1, {0, 0, 99, 199}, {30, 40});
    EXPECT_EQ(high.vertical, "(full height)");
    EXPECT_EQ(high.pan, (Pan{30, 100}));
}

TEST(ZoomAmount, StandsInBrackets) {
    EXPECT_EQ(zoomAmountText(0), "(0%)");
    EXPECT_EQ(zoomAmountText(400), "(400%)");
}

TEST(DragPan, GoesByTwoHundredOverTheWholeSlack) {
    const PreviewCrop crop{0, 0, 99, 149}; // slack 100 and 50 in 200 x 200
    const DragStart start{10, 10, {0, 0}};
    EXPECT_EQ(dragPan(2000, 2000, 0.1, crop, start, 110, 60), (Pan{200, 200}));
    EXPECT_EQ(dragPan(2000, 2000, 0.1, crop, start, 60, 35), (Pan{100, 100}));
    EXPECT_EQ(dragPan(2000, 2000, 0.1, crop, start, 500, 500), (Pan{200, 200}));
    EXPECT_EQ(dragPan(2000, 2000, 0.1, crop, start, -500, -500), (Pan{0, 0}));
    EXPECT_EQ(dragPan(2000, 2000, 0.1, crop, start, 11, 11), (Pan{2, 4}));
    EXPECT_EQ(dragPan(2000, 2000, 0.1, crop, {10, 10, {150, 50}}, 0, 0), (Pan{130, 10}));
}

TEST(DragPan, CentresAnAxisWithoutSlack) {
    const PreviewCrop crop{0, 0, 199, 99};
    EXPECT_EQ(dragPan(2000, 2000, 0.1, crop, {0, 0, {30, 30}}, 5, 0), (Pan{100, 30}));
}

TEST(DragPan, RoundsAHalfToEven) {
    const PreviewCrop crop{0, 0, 99, 99};
    // Slack 400: a pixel is half a pan unit.
    EXPECT_EQ(dragPan(500, 500, 1, crop, {0, 0, {0, 0}}, 1, 3), (Pan{0, 2}));
}

// 200 pan units span the slack, so the crop moves with the pointer.
TEST(DragPanProperties, CropFollowsThePointer) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        const auto whole = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        const int side = whole(60, 200);
        const int cropSide = whole(10, side - 20);
        const PreviewCrop crop{0, 0, cropSide - 1, cropSide - 1};
        const int slack = side - cropSide;
        const int moved = whole(0, slack);
        const Pan pan = dragPan(side, side, 1, crop, {0, 0, {0, 0}}, moved, 0);
        ASSERT_NEAR(pan.horzPos / 200.0 * slack, moved, slack / 400.0 + 1e-9);
    }
}

} // namespace
} // namespace veldara
