// Where a photo can be cut: whole MCUs with one of context, as far as the photo goes.
#include "sheets/jpeg_geometry.h"

#include <gtest/gtest.h>

namespace veldara::test {

namespace {

constexpr McuGrid grid{100, 70, 16, 8};

} // namespace

TEST(JpegGeometry, WidensToBordersAndByOneMcuMore) {
    // Columns 40 to 49 lie in MCUs 2 and 3, rows 20 to 29 in MCUs 2 and 3.
    EXPECT_EQ(withContext(grid, {40, 20, 10, 10}), (PixelRectangle{16, 8, 64, 32}));
}

TEST(JpegGeometry, AWantedBorderIsABorderOfTheInside) {
    EXPECT_EQ(withContext(grid, {32, 16, 16, 8}), (PixelRectangle{16, 8, 48, 24}));
    EXPECT_EQ(withContext(grid, {31, 15, 18, 10}), (PixelRectangle{0, 0, 80, 40}));
}

TEST(JpegGeometry, StopsWhereThePhotoEnds) {
    EXPECT_EQ(withContext(grid, {0, 0, 100, 70}), (PixelRectangle{0, 0, 100, 70}));
    EXPECT_EQ(withContext(grid, {0, 0, 1, 1}), (PixelRectangle{0, 0, 32, 16}));
    EXPECT_EQ(withContext(grid, {99, 69, 1, 1}), (PixelRectangle{80, 56, 20, 14}));
}

TEST(JpegGeometry, RefusesWhatIsNotInThePhoto) {
    EXPECT_TRUE(liesInPhoto(grid, {0, 0, 100, 70}));
    EXPECT_TRUE(liesInPhoto(grid, {99, 69, 1, 1}));
    for (const PixelRectangle& outside :
         {PixelRectangle{0, 0, 0, 5}, PixelRectangle{0, 0, 5, 0}, PixelRectangle{-1, 0, 5, 5},
          PixelRectangle{0, -1, 5, 5}, PixelRectangle{0, 0, 101, 5}, PixelRectangle{0, 0, 5, 71},
          PixelRectangle{100, 0, 1, 1}, PixelRectangle{1, 1, 2147483647, 1},
          PixelRectangle{1, 1, 1, 2147483647}, PixelRectangle{5, 5, -1, -1}}) {
        EXPECT_FALSE(liesInPhoto(grid, outside)) << outside.left << ' ' << outside.width;
    }
}

TEST(JpegGeometry, CountsRowsOfMcus) {
    EXPECT_EQ(grid.rows(), 9);
    EXPECT_EQ(mcuRowsOf(grid, {16, 8, 64, 32}), (McuRows{1, 5}));
    EXPECT_EQ(mcuRowsOf(grid, {80, 56, 20, 14}), (McuRows{7, 9}));
}

} // namespace veldara::test
