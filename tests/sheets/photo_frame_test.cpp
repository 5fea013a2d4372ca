// From stored pixels to the turned photo and to the page, for every orientation mark and turn.
#include "sheets/photo_frame.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

namespace veldara {
namespace {

constexpr int width = 50; // of the stored photo
constexpr int height = 30;

// Where the camera's tag says that a stored point belongs, as the standard's table has it: the
// sides that the stored first row and first column show.
PagePoint upright(int orientation, PagePoint p) {
    switch (orientation) {
    case 2:
        return {width - p.x, p.y};
    case 3:
        return {width - p.x, height - p.y};
    case 4:
        return {p.x, height - p.y};
    case 5:
        return {p.y, p.x};
    case 6:
        return {height - p.y, p.x};
    case 7:
        return {height - p.y, width - p.x};
    case 8:
        return {p.y, width - p.x};
    default:
        return p;
    }
}

PagePoint turnedOnce(PagePoint p, double photoHeight) { // clockwise
    return {photoHeight - p.y, p.x};
}

class EveryFrame : public testing::TestWithParam<std::tuple<int, int>> {
  protected:
    int orientation = std::get<0>(GetParam());
    int quarters = std::get<1>(GetParam()); // clockwise
    std::array<Turn, 4> turns{Turn::none, Turn::clockwise, Turn::half, Turn::counterClockwise};
    PhotoFrame frame = photoFrame(width, height, static_cast<Orientation>(orientation),
                                  turns.at(static_cast<std::size_t>(quarters)));

    PagePoint expected(PagePoint stored) const {
        PagePoint point = upright(orientation, stored);
        double high = orientation >= 5 ? width : height;
        double wide = orientation >= 5 ? height : width;
        for (int i = 0; i < quarters; ++i) {
            point = turnedOnce(point, high);
            std::swap(wide, high);
        }
        return point;
    }
};

INSTANTIATE_TEST_SUITE_P(PhotoFrame, EveryFrame,
                         testing::Combine(testing::Range(1, 9), testing::Range(0, 4)));

TEST_P(EveryFrame, PutsPointsWhereTheMarkAndTheTurnSay) {
    const bool exchanged = (orientation >= 5) != (quarters % 2 == 1);
    EXPECT_EQ(frame.width, exchanged ? height : width);
    EXPECT_EQ(frame.height, exchanged ? width : height);
    for (const PagePoint stored : {PagePoint{0, 0}, {width, 0}, {7, 11}}) {
        const PagePoint found = turnedPoint(frame, stored);
        EXPECT_EQ(found.x, expected(stored).x);
        EXPECT_EQ(found.y, expected(stored).y);
    }
}

TEST_P(EveryFrame, FindsTheStoredPixelsOfAPart) {
    const TileRect part{3, 4, 12, 20}; // the last column and row belong to it
    const PixelRectangle stored = storedPixels(frame, part);
    const PagePoint one =
        expected({static_cast<double>(stored.left), static_cast<double>(stored.top)});
    const PagePoint other =
        expected({static_cast<double>(stored.right()), static_cast<double>(stored.bottom())});
    EXPECT_EQ(std::min(one.x, other.x), 3);
    EXPECT_EQ(std::max(one.x, other.x), 13);
    EXPECT_EQ(std::min(one.y, other.y), 4);
    EXPECT_EQ(std::max(one.y, other.y), 21);
}

TEST_P(EveryFrame, TheMatrixBringsThePiecesCornersToTheirPlace) {
    const PixelRectangle piece{8, 5, 16, 12};
    for (const bool tileTurned : {false, true}) {
        PagePhoto photo;
        photo.source = {2, 3, 22, 28};
        photo.target = {100, 200, 180, 350};
        photo.turned = tileTurned;
        const PageMatrix m = pieceMatrix(frame, piece, photo, 800);
        // The unit square's corners: bottom left, bottom right, top left.
        const std::array<PagePoint, 3> corners{{{0, 0}, {1, 0}, {0, 1}}};
        const std::array<PagePoint, 3> stored{{{8, 17}, {24, 17}, {8, 5}}};
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const PagePoint at = pagePoint(photo, expected(stored[i]));
            EXPECT_NEAR(m.a * corners[i].x + m.c * corners[i].y + m.e, at.x, 1e-9);
            EXPECT_NEAR(m.b * corners[i].x + m.d * corners[i].y + m.f, 800 - at.y, 1e-9);
        }
    }
}

TEST(PhotoFrame, PutsThePhotoOnThePageUprightOrOnItsSide) {
    PagePhoto photo;
    photo.source = {10, 20, 30, 60};
    photo.target = {100, 200, 140, 280};
    const PagePoint upright = pagePoint(photo, {15, 30}); // a quarter across and down
    EXPECT_DOUBLE_EQ(upright.x, 110);
    EXPECT_DOUBLE_EQ(upright.y, 220);
    photo.turned = true; // its left edge lies at the bottom
    const PagePoint turned = pagePoint(photo, {15, 30});
    EXPECT_DOUBLE_EQ(turned.x, 110);
    EXPECT_DOUBLE_EQ(turned.y, 260);
}

} // namespace
} // namespace veldara
