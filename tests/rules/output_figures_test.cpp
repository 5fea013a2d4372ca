#include "layout/output_figures.h"
#include "platform/error.h"
#include "support/decimal_comma.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

using test::comma;

PosterLayout example() {
    PosterLayout layout;
    layout.photoWidth = 3000;
    layout.photoHeight = 2000;
    layout.tilesWide = 3;
    layout.tilesHigh = 2;
    layout.tileWidthInches = 8;
    layout.tileHeightInches = 10;
    return layout;
}

TEST(OutputFigures, OfThreeByTwoSheets) {
    EXPECT_EQ(outputFigures(example(), true, Units::inches),
              (OutputFigures{"24 x 20 inches", "4.80", "100.0 dpi", "Good"}));
}

TEST(OutputFigures, AtZoom100) {
    PosterLayout layout = example();
    layout.zoom = 100;
    // The zoom halves the megapixels although a quarter of the area is left.
    EXPECT_EQ(outputFigures(layout, true, Units::inches),
              (OutputFigures{"24 x 20 inches", "2.40", "50.0 dpi", "Good from a distance"}));
}

TEST(OutputFigures, OfTurnedTiles) {
    PosterLayout layout = example();
    layout.tilesTurned = true;
    EXPECT_EQ(posterSizeText(layout, Units::inches), "30 x 16 inches");
    // The photo is now relatively taller than the poster: its whole width is used.
    EXPECT_DOUBLE_EQ(posterDotsPerInch(layout), 100);
    EXPECT_DOUBLE_EQ(posterMegapixels(layout), 3000 * 1600 / 1e6);
}

TEST(OutputFigures, InMillimetreUnits) {
    const OutputFigures figures = outputFigures(example(), true, Units::millimetres);
    EXPECT_EQ(figures.size, "61 x 50.8 cm");
    EXPECT_EQ(figures.resolution, "39.4 dots/cm");
    EXPECT_EQ(figures.quality, "Good"); // by dots per inch nevertheless
}

TEST(OutputFigures, WithoutAPhotoKeepTheSize) {
    PosterLayout layout = example();
    layout.photoWidth = 0;
    layout.photoHeight = 0;
    EXPECT_EQ(outputFigures(layout, false, Units::inches),
              (OutputFigures{"24 x 20 inches", "---", "---", "---"}));
}

TEST(OutputFigures, DropZerosAtTheEndOfASize) {
    PosterLayout layout = example();
    layout.tilesWide = 1;
    layout.tilesHigh = 1;
    layout.tileWidthInches = 24.5;
    layout.tileHeightInches = 12.345;
    EXPECT_EQ(posterSizeText(layout, Units::inches), "24.5 x 12.35 inches");
    EXPECT_EQ(posterSizeText(layout, Units::inches, comma), "24,5 x 12,35 inches");
}

TEST(OutputFigures, UseTheUsersSeparator) {
    const OutputFigures figures = outputFigures(example(), true, Units::inches, comma);
    EXPECT_EQ(figures.megapixels, "4,80");
    EXPECT_EQ(figures.resolution, "100,0 dpi");
}

TEST(OutputFigures, QualityIsStrictAboutItsBounds) {
    EXPECT_EQ(qualityWord(200.01), "Excellent");
    EXPECT_EQ(qualityWord(200), "Very Good");
    EXPECT_EQ(qualityWord(140.01), "Very Good");
    EXPECT_EQ(qualityWord(140), "Good");
    EXPECT_EQ(qualityWord(90.01), "Good");
    EXPECT_EQ(qualityWord(90), "Fair");
    EXPECT_EQ(qualityWord(70.01), "Fair");
    EXPECT_EQ(qualityWord(70), "Good from a distance");
    EXPECT_EQ(qualityWord(35.01), "Good from a distance");
    EXPECT_EQ(qualityWord(35), "Fair from a distance");
    EXPECT_EQ(qualityWord(0), "Fair from a distance");
}

TEST(OutputFigures, SuffixIsStrippedOnlyFromTheEnd) {
    EXPECT_EQ(stripSuffix("150.", "."), "150");
    EXPECT_EQ(stripSuffix("150.0", "."), "150.0");
    EXPECT_EQ(stripSuffix(".", "."), "");
    EXPECT_EQ(stripSuffix("", "."), "");
    EXPECT_EQ(stripSuffix("a", "ab"), "a");
}

TEST(OutputFigures, ResolutionTexts) {
    EXPECT_EQ(resolutionText(150, Units::inches), "150.0 dpi");
    EXPECT_EQ(resolutionText(149.96, Units::inches), "150.0 dpi");
    EXPECT_EQ(resolutionText(254, Units::millimetres), "100.0 dots/cm");
}

TEST(OutputFigures, FailWhenNothingIsLeftOfATile) {
    PosterLayout layout = example();
    layout.tileHeightInches = 0;
    EXPECT_THROW(outputFigures(layout, true, Units::inches), Error);
}

} // namespace
} // namespace veldara
