#include "printing/print_placement.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

constexpr double a3Width = 841.89;
constexpr double a3Height = 1190.55;

TEST(PrintPlacement, APageLiesOnThePaperWhereverThePrinterBeginsToCount) {
    const PrinterDots dots{600, 600, 100, 70};
    const std::vector<PlacedBand> bands = placedBands(72, 144, dots, 1 << 24);
    EXPECT_EQ(bands, (std::vector<PlacedBand>{{0, 1200, -100, -70, 600, 1200}}));
}

TEST(PrintPlacement, BandsFollowOneAnotherWithoutGaps) {
    const std::vector<PlacedBand> bands =
        placedBands(a3Width, a3Height, {600, 600, 99, 99}, 1 << 24);
    EXPECT_GT(bands.size(), 10U);
    int row = 0;
    int top = -99;
    for (const PlacedBand& band : bands) {
        EXPECT_EQ(band.firstRow, row);
        EXPECT_EQ(band.top, top);
        EXPECT_EQ(band.height, band.rows);
        EXPECT_LE(3LL * band.width * band.rows, 1LL << 24) << "a page of 208 megabytes";
        row += band.rows;
        top += band.height;
    }
    EXPECT_EQ(row, 9921);
}

TEST(PrintPlacement, DotsThatAreNotSquareAreStretched) {
    const std::vector<PlacedBand> bands = placedBands(72, 72, {600, 1200, 0, 10}, 3 * 600 * 250);
    EXPECT_EQ(bands, (std::vector<PlacedBand>{{0, 250, 0, -10, 600, 500},
                                              {250, 250, 0, 490, 600, 500},
                                              {500, 100, 0, 990, 600, 200}}));
    int height = 0;
    for (const PlacedBand& band : placedBands(72, 72, {600, 333, 0, 0}, 3 * 600 * 7)) {
        EXPECT_EQ(band.top, height) << "rounding leaves no gap either";
        height += band.height;
    }
    EXPECT_EQ(height, 333);
}

TEST(PrintPlacement, APageHasAtLeastADot) {
    EXPECT_EQ(placedBands(0.01, 0.01, {10, 10, 0, 0}, 100),
              (std::vector<PlacedBand>{{0, 1, 0, 0, 1, 1}}));
}

TEST(PrintPlacement, ARowIsTheLeast) {
    EXPECT_EQ(placedBands(72, 72, {10, 10, 0, 0}, 1).size(), 10U);
}

} // namespace
} // namespace veldara::test
