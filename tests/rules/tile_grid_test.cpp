#include "layout/tile_grid.h"
#include "platform/error.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

// Square tiles, so that the poster's shape is that of the counts.
PosterLayout squareTiles(int photoWidth, int photoHeight, int wide, int high) {
    PosterLayout layout;
    layout.photoWidth = photoWidth;
    layout.photoHeight = photoHeight;
    layout.tilesWide = wide;
    layout.tilesHigh = high;
    layout.tileWidthInches = 1;
    layout.tileHeightInches = 1;
    return layout;
}

TEST(TileGrid, LeavesOutAColumnWhereTheRoundingsPart) {
    // 1000 columns in three tiles: column 666 belongs to none.
    PosterLayout layout = squareTiles(1000, 5000, 3, 15);
    const std::vector<TileRect> tiles = calcTileCoord(layout);
    ASSERT_EQ(tiles.size(), 45U);
    EXPECT_EQ(tiles[0].left, 0);
    EXPECT_EQ(tiles[0].right, 332);
    EXPECT_EQ(tiles[1].left, 333);
    EXPECT_EQ(tiles[1].right, 665);
    EXPECT_EQ(tiles[2].left, 667);
    EXPECT_EQ(tiles[2].right, 999);
}

TEST(TileGrid, SharesAColumnWhereBothHalvesRoundToIt) {
    const std::vector<TileRect> tiles = calcTileCoord(squareTiles(1001, 5005, 2, 10));
    EXPECT_EQ(tiles[0].left, 0);
    EXPECT_EQ(tiles[0].right, 500);
    EXPECT_EQ(tiles[1].left, 500);
    EXPECT_EQ(tiles[1].right, 1000);
}

TEST(TileGrid, TakesTheFullHeightWhenShapesAreEqual) {
    PosterLayout layout = squareTiles(3000, 2000, 3, 2);
    EXPECT_EQ(fullCropSize(layout).height, 2000);
    EXPECT_EQ(fullCropSize(layout).width, 3000);
    EXPECT_EQ(cropRect(layout), (CropRect{0, 0, 3000, 2000}));

    PosterLayout sameShape = squareTiles(42, 30, 1, 1);
    sameShape.tileWidthInches = 7;
    sameShape.tileHeightInches = 5;
    EXPECT_EQ(fullCropSize(sameShape).height, 30) << "and not 42 / 1.4, which is a little more";
}

TEST(TileGrid, CropsTheLongerSide) {
    PosterLayout layout = squareTiles(3000, 2000, 1, 1);
    EXPECT_EQ(cropRect(layout), (CropRect{500, 0, 2000, 2000}));
    layout = squareTiles(2000, 3000, 1, 1);
    EXPECT_EQ(cropRect(layout), (CropRect{0, 500, 2000, 2000}));
}

TEST(TileGrid, PansFromEdgeToEdge) {
    PosterLayout layout = squareTiles(3000, 2000, 1, 1);
    layout.horzPos = 0;
    EXPECT_EQ(cropRect(layout).left, 0);
    layout.horzPos = 200;
    EXPECT_EQ(cropRect(layout).left, 1000);
    layout.vertPos = 0; // the crop spans the whole height: no effect
    EXPECT_EQ(cropRect(layout).top, 0);
    layout.vertPos = 200;
    EXPECT_EQ(cropRect(layout).top, 0);
    layout.zoom = 100;
    EXPECT_EQ(cropRect(layout), (CropRect{2000, 1000, 1000, 1000}));
}

TEST(TileGrid, ZoomsBothSides) {
    PosterLayout layout = squareTiles(2000, 2000, 1, 1);
    EXPECT_EQ(zoomFactor(0), 1);
    layout.zoom = 100;
    EXPECT_EQ(cropRect(layout), (CropRect{500, 500, 1000, 1000}));
    layout.zoom = 400;
    EXPECT_EQ(cropRect(layout), (CropRect{800, 800, 400, 400}));
}

TEST(TileGrid, ExchangesTheSidesOfTurnedTiles) {
    PosterLayout layout = squareTiles(2500, 1000, 2, 1);
    layout.tileWidthInches = 8;
    layout.tileHeightInches = 10;
    EXPECT_DOUBLE_EQ(posterRatio(layout), 1.6);
    layout.tilesTurned = true;
    EXPECT_DOUBLE_EQ(posterRatio(layout), 2.5);
    EXPECT_EQ(cropRect(layout), (CropRect{0, 0, 2500, 1000}));
}

TEST(TileGrid, NumbersTilesRowByRow) {
    const std::vector<TileRect> tiles = calcTileCoord(squareTiles(400, 300, 4, 3));
    ASSERT_EQ(tiles.size(), 12U);
    EXPECT_EQ(tiles[0], (TileRect{0, 0, 99, 99}));
    EXPECT_EQ(tiles[1], (TileRect{100, 0, 199, 99}));
    EXPECT_EQ(tiles[4], (TileRect{0, 100, 99, 199}));
    EXPECT_EQ(tiles[11], (TileRect{300, 200, 399, 299}));
}

TEST(TileGrid, RefusesTilesOfWhichNothingIsLeft) {
    PosterLayout layout = squareTiles(100, 100, 1, 1);
    layout.tileHeightInches = 0;
    EXPECT_THROW(posterRatio(layout), Error);
    EXPECT_THROW(calcTileCoord(layout), Error);
    layout.tileHeightInches = 1;
    layout.tileWidthInches = 0;
    EXPECT_THROW(calcTileCoord(layout), Error);
    layout.tileWidthInches = -0.25;
    EXPECT_THROW(calcTileCoord(layout), Error);
    layout.tileWidthInches = 1;
    layout.tileHeightInches = -0.25;
    EXPECT_THROW(calcTileCoord(layout), Error);
}

TEST(TileGrid, RefusesAPhotoWithoutPixels) {
    EXPECT_THROW(calcTileCoord(squareTiles(0, 100, 1, 1)), Error);
    EXPECT_THROW(calcTileCoord(squareTiles(100, 0, 1, 1)), Error);
    EXPECT_EQ(calcTileCoord(squareTiles(1, 1, 1, 1)).front(), (TileRect{0, 0, 0, 0}));
}

TEST(TileGrid, KeepsTheLastColumnInsideThePhoto) {
    // The crop is one column narrower than the photo and stands at its right edge: the second
    // tile's right edge, 501.5 + 503 - 1, is a half that rounds up, out of the photo.
    PosterLayout layout = squareTiles(1004, 1003, 2, 2);
    layout.horzPos = 200;
    const std::vector<TileRect> tiles = calcTileCoord(layout);
    EXPECT_EQ(tiles[0].left, 1);
    EXPECT_EQ(tiles[1].left, 503);
    EXPECT_EQ(tiles[1].right, 1003);
}

TEST(TileGrid, TellsWhenATileIsEmpty) {
    EXPECT_TRUE(everyTileHasPixels(calcTileCoord(squareTiles(25, 25, 25, 25)))); // one pixel each
    PosterLayout layout = squareTiles(30, 30, 25, 25);
    layout.zoom = 400; // 6 pixels for 25 tiles
    EXPECT_FALSE(everyTileHasPixels(calcTileCoord(layout)));
    EXPECT_FALSE(everyTileHasPixels({{0, 0, 9, 9}, {10, 0, 9, 9}})) << "no column";
    EXPECT_FALSE(everyTileHasPixels({{0, 0, 9, 9}, {0, 10, 9, 9}})) << "no row";
}

PosterLayout randomLayout(std::mt19937& random) {
    const auto whole = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    std::uniform_real_distribution<double> inches(0.75, 50);
    PosterLayout layout;
    layout.photoWidth = whole(25, 12000);
    layout.photoHeight = whole(25, 12000);
    layout.tilesWide = whole(1, 25);
    layout.tilesHigh = whole(1, 25);
    layout.tileWidthInches = inches(random);
    layout.tileHeightInches = inches(random);
    layout.tilesTurned = whole(0, 1) == 1;
    layout.zoom = whole(0, 400);
    layout.horzPos = whole(0, 200);
    layout.vertPos = whole(0, 200);
    return layout;
}

TEST(TileGridProperties, TilesLieInThePhotoAndFillTheCrop) {
    std::mt19937 random(4711);
    for (int round = 0; round < 20000; ++round) {
        const PosterLayout layout = randomLayout(random);
        const CropRect crop = cropRect(layout);
        ASSERT_GE(crop.left, 0);
        ASSERT_GE(crop.top, 0);
        ASSERT_LE(crop.left + crop.width, layout.photoWidth);
        ASSERT_LE(crop.top + crop.height, layout.photoHeight);

        const std::vector<TileRect> tiles = calcTileCoord(layout);
        ASSERT_EQ(tiles.size(), static_cast<std::size_t>(layout.tilesWide * layout.tilesHigh));
        ASSERT_EQ(tiles.front().left, crop.left);
        ASSERT_EQ(tiles.front().top, crop.top);
        // The last edge may round by one pixel to either side.
        ASSERT_LE(std::abs(tiles.back().right - (crop.left + crop.width - 1)), 1);
        ASSERT_LE(std::abs(tiles.back().bottom - (crop.top + crop.height - 1)), 1);
        for (const TileRect& tile : tiles) {
            ASSERT_GE(tile.left, 0);
            ASSERT_GE(tile.top, 0);
            ASSERT_LT(tile.right, layout.photoWidth);
            ASSERT_LT(tile.bottom, layout.photoHeight);
        }
    }
}

TEST(TileGridProperties, NeighboursShareOrLeaveOutAtMostOnePixel) {
    std::mt19937 random(815);
    for (int round = 0; round < 5000; ++round) {
        const PosterLayout layout = randomLayout(random);
        const std::vector<TileRect> tiles = calcTileCoord(layout);
        const auto wide = static_cast<std::size_t>(layout.tilesWide);
        for (std::size_t k = 0; k < tiles.size(); ++k) {
            if (k % wide != 0) {
                ASSERT_LE(std::abs(tiles[k].left - tiles[k - 1].right - 1), 1);
            }
            if (k >= wide) {
                ASSERT_LE(std::abs(tiles[k].top - tiles[k - wide].bottom - 1), 1);
            }
        }
    }
}

TEST(TileGridProperties, CropHasThePostersShape) {
    std::mt19937 random(99);
    for (int round = 0; round < 5000; ++round) {
        const PosterLayout layout = randomLayout(random);
        const CropSize full = fullCropSize(layout);
        ASSERT_NEAR(full.width / full.height / posterRatio(layout), 1, 1e-9);
        // It touches the photo on one side at least, and leaves it on none.
        ASSERT_TRUE(full.width == layout.photoWidth || full.height == layout.photoHeight);
        ASSERT_LE(full.width, layout.photoWidth + 1e-6);
        ASSERT_LE(full.height, layout.photoHeight + 1e-6);
        const CropRect crop = cropRect(layout);
        ASSERT_NEAR(crop.width, full.width * zoomFactor(layout.zoom), 0.5);
        ASSERT_NEAR(crop.height, full.height * zoomFactor(layout.zoom), 0.5);
    }
}

} // namespace
} // namespace veldara
