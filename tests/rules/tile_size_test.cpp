#include "layout/tile_size.h"
#include "support/decimal_comma.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

using test::comma;

TEST(TileSize, AcceptsTheLimitsAndNothingBeyond) {
    EXPECT_TRUE(checkTileSizesNoTrim(0.75, 50, Units::inches));
    EXPECT_TRUE(checkTileSizesNoTrim(50, 0.75, Units::inches));
    EXPECT_FALSE(checkTileSizesNoTrim(0.7499, 10, Units::inches));
    EXPECT_FALSE(checkTileSizesNoTrim(10, 50.0001, Units::inches));
    EXPECT_FALSE(checkTileSizesNoTrim(8, 0.7499, Units::inches)); // a valid width is not enough
    EXPECT_FALSE(checkTileSizesNoTrim(0, 0, Units::inches));
    EXPECT_FALSE(checkTileSizesNoTrim(-1, 8, Units::inches));
}

TEST(TileSize, AcceptsTheSameLimitsInMillimetres) {
    EXPECT_TRUE(checkTileSizesNoTrim(19.05, 1270, Units::millimetres));
    EXPECT_FALSE(checkTileSizesNoTrim(19.04, 100, Units::millimetres));
    EXPECT_FALSE(checkTileSizesNoTrim(100, 1270.01, Units::millimetres));
    // Decimal margins that leave exactly the minimum miss it by the last bits of a double.
    EXPECT_TRUE(checkTileSizesNoTrim(148 - 64.475 - 64.475, 100, Units::millimetres));
}

TEST(TileSize, IsGivenInInches) {
    EXPECT_EQ(*checkTileSizesNoTrim(8, 10, Units::inches), (TileSize{8, 10}));
    EXPECT_DOUBLE_EQ(checkTileSizesNoTrim(254, 508, Units::millimetres)->width, 10);
    EXPECT_DOUBLE_EQ(checkTileSizesNoTrim(254, 508, Units::millimetres)->height, 20);
    EXPECT_EQ(ToInches(3, Units::inches), 3);
    EXPECT_DOUBLE_EQ(ToInches(25.4, Units::millimetres), 1);
}

TEST(TileSize, LosesTheTrimsAfterTheLimitsWereTested) {
    const EdgeTrims trims{0.1, 0.2, 0.3, 0.4};
    const auto size = checkTileSizes(8, 10, Units::inches, trims);
    EXPECT_DOUBLE_EQ(size->width, 7.4);  // right and left
    EXPECT_DOUBLE_EQ(size->height, 9.6); // top and bottom
    EXPECT_EQ(*checkTileSizes(8, 10, Units::inches, std::nullopt), (TileSize{8, 10}));
    EXPECT_FALSE(checkTileSizes(0.7, 10, Units::inches, trims));
}

TEST(TileSize, MayFallBelowTheMinimumByItsTrims) {
    const EdgeTrims tenths{0.1, 0.1, 0.1, 0.1};
    EXPECT_DOUBLE_EQ(checkTileSizes(0.75, 0.75, Units::inches, tenths)->width, 0.55);
    const EdgeTrims large{1, 1, 1, 1};
    EXPECT_DOUBLE_EQ(checkTileSizes(1, 2, Units::inches, large)->width, -1);
    EXPECT_DOUBLE_EQ(checkTileSizes(1, 2, Units::inches, large)->height, 0);
}

TEST(TileSize, LimitsAreShownAsPlainNumbers) {
    EXPECT_EQ(tileMinText(), "0.75");
    EXPECT_EQ(tileMaxText(), "50");
    EXPECT_EQ(tileMinText(comma), "0,75");
}

TEST(TileSize, IsTestedInMillimetresForExactlyOne) {
    EXPECT_TRUE(IsTileSizeInRange(0.75, 50, 0));
    EXPECT_TRUE(IsTileSizeInRange(19.05, 1270, 1));
    EXPECT_FALSE(IsTileSizeInRange(0.75, 50, 1));
    EXPECT_FALSE(IsTileSizeInRange(19.05, 1270, 0));
    EXPECT_FALSE(IsTileSizeInRange(19.04, 100, 1));
    EXPECT_FALSE(IsTileSizeInRange(100, 19.04, 1));
    EXPECT_FALSE(IsTileSizeInRange(1270.01, 100, 1));
    EXPECT_TRUE(IsTileSizeInRange(0.75, 50, 2)); // any other flag counts as inches here
    EXPECT_FALSE(IsTileSizeInRange(8, 0.74, 0));
    EXPECT_FALSE(IsTileSizeInRange(8, 50.01, 0));
}

TEST(TileSize, MessageIsWordedForTheUnits) {
    const Message inches = tileSizeMessage(Units::inches);
    EXPECT_EQ(inches.text, "You have entered invalid print tile sizes.  The width and height need "
                           "to be in the range of 0.75 to 50.00 inches.");
    EXPECT_EQ(inches.title, "Invalid Tile Print Size Entered");
    EXPECT_EQ(inches.icon, MessageIcon::critical);
    EXPECT_EQ(inches.buttons, MessageButtons::ok);
    EXPECT_EQ(tileSizeMessage(Units::millimetres).text,
              "You have entered an invalid tile print size.  The width and height need to be in "
              "the range of 19.05 to 1270.00 millimeters (0.75 to 50.00 inches).");
    EXPECT_NE(tileSizeMessage(Units::millimetres, comma).text.find("19,05 to 1270,00"),
              std::string::npos);
}

} // namespace
} // namespace veldara
