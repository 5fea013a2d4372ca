#include "output/edge_compensation.h"
#include "output/tile_image.h"
#include "platform/error.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

// Pixel (x, y) is x, y and 100 + x.
Image numbered(int width, int height) {
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint8_t* pixel = image.row(y) + 3 * x;
            pixel[0] = static_cast<std::uint8_t>(x);
            pixel[1] = static_cast<std::uint8_t>(y);
            pixel[2] = static_cast<std::uint8_t>(100 + x);
        }
    }
    return image;
}

const std::uint8_t* pixelAt(const PixelView& view, int x, int y) {
    return view.row(y) + 3 * x;
}

bool samePixel(const PixelView& a, int ax, int ay, const PixelView& b, int bx, int by) {
    return std::equal(pixelAt(a, ax, ay), pixelAt(a, ax, ay) + 3, pixelAt(b, bx, by));
}

bool samePicture(const PixelView& a, const PixelView& b) {
    if (a.width() != b.width() || a.height() != b.height()) {
        return false;
    }
    for (int y = 0; y < a.height(); ++y) {
        if (!std::equal(a.row(y), a.row(y) + 3 * a.width(), b.row(y))) {
            return false;
        }
    }
    return true;
}

TEST(TileResolution, IsRoundedToEvenAndNeverBelowTwo) {
    EXPECT_EQ(tileResolution(1.4), 2);
    EXPECT_EQ(tileResolution(-300), 2);
    EXPECT_EQ(tileResolution(150.5), 150);
    EXPECT_EQ(tileResolution(151.5), 152);
    EXPECT_EQ(tileResolution(299.7), 300);
}

TEST(TileResolution, IsTakenFromTheFirstTile) {
    const std::vector<TileRect> tiles{{0, 0, 799, 599}, {800, 0, 1500, 599}};
    EXPECT_DOUBLE_EQ(tileDotsPerInch(tiles, false, 8), 100);
    EXPECT_DOUBLE_EQ(tileDotsPerInch(tiles, true, 8), 75); // a turned tile's height is its width
    EXPECT_THROW(tileDotsPerInch(tiles, false, 0), Error);
    EXPECT_THROW(tileDotsPerInch({}, false, 8), Error);
    const TileTreatment treatment = tileTreatment(tiles, true, 8, EdgeTrims{1, 2, 3, 4});
    EXPECT_TRUE(treatment.turned);
    EXPECT_EQ(treatment.resolution, 75);
    EXPECT_EQ(*treatment.trims, (EdgeTrims{1, 2, 3, 4}));
}

TEST(QuarterTurn, GoesCounterClockwise) {
    const Image tile = numbered(4, 3);
    const Image turnedTile = rotateTile90(tile.view());
    ASSERT_EQ(turnedTile.width(), 3);
    ASSERT_EQ(turnedTile.height(), 4);
    for (int a = 0; a < 3; ++a) {
        for (int b = 0; b < 4; ++b) {
            EXPECT_TRUE(samePixel(turnedTile.view(), a, b, tile.view(), 4 - 1 - b, a));
        }
    }
}

TEST(QuarterTurn, FourTimesIsTheSamePicture) {
    const Image tile = numbered(7, 5);
    Image turning = Image::copyOf(tile.view());
    for (int i = 0; i < 4; ++i) {
        turning = rotateTile90(turning.view());
    }
    EXPECT_TRUE(samePicture(turning.view(), tile.view()));
}

TEST(Compensation, WithoutTrimsIsTheSamePicture) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> side(1, 60);
    for (int round = 0; round < 50; ++round) {
        const Image tile = numbered(side(random), side(random));
        const Image result = applyEdgeClipComp(tile.view(), 64 + round, EdgeTrims{});
        ASSERT_TRUE(samePicture(result.view(), tile.view()));
        ASSERT_NE(result.row(0), tile.row(0)); // a picture of its own
    }
}

TEST(Compensation, NeverRoundsAMarginUp) {
    const CompensationPlan plan =
        planCompensation(100, 100, 127.9, {1 / 64.0, 2 / 64.0, 3 / 64.0, 0});
    EXPECT_EQ(plan.margins, (std::array<int, 4>{1, 3, 5, 0})); // 1.998, 3.997, 5.995
    EXPECT_EQ(plan.width(), 103);
    EXPECT_EQ(plan.height(), 106);
    EXPECT_EQ(planCompensation(10, 10, 128, {1 / 64.0, 0, 0, 0}).margins[0], 2);
}

TEST(Compensation, RepeatsTheOutermostPixels) {
    const Image tile = numbered(6, 4);
    const EdgeTrims trims{2 / 64.0, 3 / 64.0, 1 / 64.0, 4 / 64.0};
    const Image result = applyEdgeClipComp(tile.view(), 64, trims);
    ASSERT_EQ(result.width(), 6 + 3 + 4);
    ASSERT_EQ(result.height(), 4 + 2 + 1);
    for (int y = 0; y < result.height(); ++y) {
        for (int x = 0; x < result.width(); ++x) {
            const int fromX = std::clamp(x - 4, 0, 5);
            const int fromY = std::clamp(y - 2, 0, 3);
            ASSERT_TRUE(samePixel(result.view(), x, y, tile.view(), fromX, fromY)) << x << "," << y;
        }
    }
}

TEST(Compensation, BringsATileUpTo64DotsPerInchFirst) {
    const CompensationPlan plan = planCompensation(100, 50, 50, {1 / 64.0, 0, 2 / 64.0, 3 / 64.0});
    EXPECT_EQ(plan.imageWidth, 128);
    EXPECT_EQ(plan.imageHeight, 64);
    EXPECT_EQ(plan.margins, (std::array<int, 4>{1, 0, 2, 3}));
    const Image tile = Image::filled(100, 50, 10, 20, 30);
    const Image result = applyEdgeClipComp(tile.view(), 50, {1 / 64.0, 0, 2 / 64.0, 3 / 64.0});
    EXPECT_EQ(result.width(), 131);
    EXPECT_EQ(result.height(), 67);
    EXPECT_EQ(result.row(66)[3 * 130 + 2], 30);
    EXPECT_EQ(planCompensation(100, 50, 0.5, EdgeTrims{}).imageWidth, 12800);
    // Just at 64 nothing is resampled.
    EXPECT_EQ(planCompensation(100, 50, 64, EdgeTrims{}).imageWidth, 100);
}

TEST(Compensation, ResamplesATileOfWhichOneSideAloneGrows) {
    const Image low = Image::filled(100, 1, 10, 20, 30);
    const Image wider = applyEdgeClipComp(low.view(), 63, EdgeTrims{});
    EXPECT_EQ(wider.height(), 1);
    ASSERT_EQ(wider.width(), 102); // 101.6
    EXPECT_TRUE(samePixel(wider.view(), 101, 0, low.view(), 99, 0));
    const Image narrow = Image::filled(1, 100, 10, 20, 30);
    const Image higher = applyEdgeClipComp(narrow.view(), 63, EdgeTrims{});
    EXPECT_EQ(higher.width(), 1);
    ASSERT_EQ(higher.height(), 102);
    EXPECT_TRUE(samePixel(higher.view(), 0, 101, narrow.view(), 0, 99));
}

TEST(Compensation, RoundsAResampledSideHalfToEven) {
    const CompensationPlan plan = planCompensation(2, 6, 51.2, EdgeTrims{}); // by 1.25
    EXPECT_EQ(plan.imageWidth, 2);                                           // 2.5
    EXPECT_EQ(plan.imageHeight, 8);                                          // 7.5
}

// The margins are those of 64 dots per inch then, not of the dots that the tile had.
TEST(Compensation, MeasuresMarginsAtTheDotsThatTheTileHasThen) {
    EXPECT_EQ(planCompensation(50, 50, 50, {0.25, 0.25, 0.25, 0.25}).margins,
              (std::array<int, 4>{16, 16, 16, 16}));
    EXPECT_EQ(planCompensation(50, 50, 63.99, {1 / 64.0, 0, 0, 0}).margins[edgeTop], 1);
    EXPECT_EQ(planCompensation(50, 50, 100, {0.25, 0.25, 0.25, 0.25}).margins,
              (std::array<int, 4>{25, 25, 25, 25}));
}

TEST(Compensation, RefusesWhatHasNoSize) {
    const Image tile = numbered(5, 5);
    EXPECT_THROW(applyEdgeClipComp(tile.view(), 0, EdgeTrims{}), Error);
    EXPECT_THROW(applyEdgeClipComp(tile.view(), -10, EdgeTrims{}), Error);
    EXPECT_THROW(applyEdgeClipComp(tile.view(), 100, EdgeTrims{-1, 0, 0, 0}), Error);
    EXPECT_THROW(applyEdgeClipComp(tile.view(), 1e-9, EdgeTrims{}), Error);
    EXPECT_THROW(applyEdgeClipComp(PixelView(), 100, EdgeTrims{}), Error);
    EXPECT_THROW(planCompensation(0, 5, 100, EdgeTrims{}), Error);
    EXPECT_THROW(planCompensation(5, 0, 100, EdgeTrims{}), Error);
}

TEST(TileImage, IsAViewOfThePhotoWhereNothingIsDone) {
    const Image photo = numbered(20, 20);
    const PixelView cut = photo.view().cut(3, 4, 10, 5);
    const TileImage image = makeTileImage(cut, {});
    EXPECT_EQ(image.view().row(0), photo.row(4) + 9);
    EXPECT_EQ(image.view().width(), 10);
    EXPECT_EQ(image.view().height(), 5);
}

TEST(TileImage, IsTurnedBeforeItIsEnlarged) {
    const Image photo = numbered(20, 20);
    const PixelView cut = photo.view().cut(3, 4, 10, 5);
    TileTreatment treatment;
    treatment.turned = true;
    EXPECT_TRUE(samePicture(makeTileImage(cut, treatment).view(), rotateTile90(cut).view()));
    treatment.trims = EdgeTrims{2 / 64.0, 0, 0, 0};
    treatment.dotsPerInch = 64;
    const TileImage both = makeTileImage(cut, treatment);
    EXPECT_EQ(both.view().width(), 5);
    EXPECT_EQ(both.view().height(), 12); // the top margin lies above the turned tile
    EXPECT_TRUE(samePixel(both.view(), 0, 0, cut, 9, 0));
}

TEST(TileImage, HasTheSizeThatWasForetold) {
    std::mt19937 random(8);
    const auto whole = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    const Image photo = numbered(80, 80);
    for (int round = 0; round < 300; ++round) {
        const int left = whole(0, 60);
        const int top = whole(0, 60);
        const TileRect rect{left, top, whole(left, 79), whole(top, 79)};
        TileTreatment treatment;
        treatment.turned = whole(0, 1) == 1;
        treatment.dotsPerInch = whole(30, 300) + 0.25;
        if (whole(0, 1) == 1) {
            treatment.trims = EdgeTrims{whole(0, 16) / 64.0, whole(0, 16) / 64.0,
                                        whole(0, 16) / 64.0, whole(0, 16) / 64.0};
        }
        const TileImage image = makeTileImage(
            photo.view().cut(rect.left, rect.top, rect.width(), rect.height()), treatment);
        const PictureSize size = tileImageSize(rect, treatment);
        ASSERT_EQ(image.view().width(), size.width);
        ASSERT_EQ(image.view().height(), size.height);
    }
}

} // namespace
} // namespace veldara
