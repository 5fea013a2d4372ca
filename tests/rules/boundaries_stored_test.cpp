// Bounds and forms of what is entered, stored and named, each by itself.
#include "app/preference_text.h"
#include "output/edge_compensation.h"
#include "output/tile_files.h"
#include "paper/paper_check.h"
#include "paper/paper_line.h"
#include "platform/error.h"
#include "platform/image/tile_format.h"
#include "support/decimal_comma.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace veldara {
namespace {

std::string faultOf(double width, double height, const Margins& margins, double least,
                    NumberStyle style = {}) {
    PaperEntries entries{width, height, {}};
    std::copy(margins.begin(), margins.end(), entries.margins.begin());
    return checkPaper(entries, Units::inches, least, 50, style).text;
}

TEST(PaperLimits, HoldForTheHeightAsForTheWidth) {
    const std::string small = "Invalid paper size - size too small.  Minimum size is 0.5.";
    EXPECT_EQ(faultOf(4, 0.49, {}, 0.75), small);
    EXPECT_EQ(faultOf(0.49, 4, {}, 0.75), small);
    EXPECT_EQ(faultOf(4, 1.9, {}, 2), "Paper size too small");
    EXPECT_EQ(faultOf(1.9, 4, {}, 2), "Paper size too small");
    EXPECT_EQ(faultOf(4, 51, {}, 2), "Paper size too large");
    EXPECT_EQ(faultOf(51, 4, {}, 2), "Paper size too large");
    EXPECT_EQ(faultOf(4, 4, {1.1, 0, 1, 0}, 2), "Paper/Margins too small");
    EXPECT_EQ(faultOf(4, 4, {0, 1.1, 0, 1}, 2), "Paper/Margins too small");
    EXPECT_EQ(faultOf(4, 4, {1, 1, 1, 1}, 2), "");
}

TEST(PaperLimits, AreShownWithTheUsersSeparator) {
    EXPECT_EQ(faultOf(4, 0.49, {}, 0.75, test::comma),
              "Invalid paper size - size too small.  Minimum size is 0,5.");
}

constexpr const char* customLine = "|0|Custom (Inches)|5|7|0|0|0|0|0.25|0.5|0.75|1";

TEST(APaperLine, NeedsNoBarAtItsEnd) {
    for (const std::string end : {"", "|", "|more|"}) {
        PaperTables tables = buildPaperTables();
        EXPECT_TRUE(setPrefFromRegLine(tables, customLine + end, 0.75, 50));
        EXPECT_EQ(tables.current().width, 5);
        EXPECT_EQ(tables.current().height, 7);
        EXPECT_EQ(tables.current().margins, (Margins{0.25, 0.5, 0.75, 1}));
    }
    PaperTables tables = buildPaperTables();
    EXPECT_FALSE(
        setPrefFromRegLine(tables, "|0|Custom (Inches)|5|7|0|0|0|0|0.25|0.5|0.75", 0.75, 50));
}

TEST(APaperLine, NeedsBothSizesOfACustomPaper) {
    PaperTables tables = buildPaperTables();
    EXPECT_FALSE(setPrefFromRegLine(tables, "|0|Custom (Inches)|x|7|0|0|0|0|0|0|0|0|", 0.75, 50));
    EXPECT_FALSE(setPrefFromRegLine(tables, "|0|Custom (Inches)|5|x|0|0|0|0|0|0|0|0|", 0.75, 50));
}

TEST(APaperLine, CarriesTheDefaultMarginsBesideTheOnesNow) {
    PaperTables tables = buildPaperTables();
    ASSERT_TRUE(setPrefFromRegLine(tables, "|0|Letter 8.5\" x 11\"|8.5|11|9|9|9|9|0.25|0.5|0.75|1|",
                                   0.75, 50));
    EXPECT_EQ(makePaperRegLine(tables),
              "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|0.25|0.5|0.75|1|");
}

TEST(Compensation, ByLessThanNothingIsRefusedFromTheFirstPixel) {
    EXPECT_THROW(planCompensation(100, 100, 100, {0, 0, 0, -0.001}), Error);
    EXPECT_THROW(planCompensation(100, 100, 100, {-0.001, 0, 0, 0}), Error);
}

TEST(ATilesType, CanBeThatOfANameThatIsNothingElse) {
    EXPECT_EQ(tileFormatByName("bmp"), TileFormat::bmp);
    EXPECT_EQ(tileFormatByName("mp"), std::nullopt);
}

TEST(ATilesName, MissesItsTypeBeforeItsFolder) {
    EXPECT_EQ(getTileFileName({"", "a", std::nullopt}, 1).problem, "File extension not selected");
}

TEST(StoredIndices, MayEndWithTheirFirstDigit) {
    EXPECT_EQ(readTileCounts("w3", 25), (TileCountPreference{3, 1}));
    EXPECT_EQ(readTileCounts("w03h4", 25), (TileCountPreference{3, 4}));
    EXPECT_EQ(readTileCounts("w", 25), (TileCountPreference{1, 1}));
}

TEST(ASwitch, IsNoughtOrOneAndNothingBelow) {
    EXPECT_EQ(readSwitch("-1", 1), 1);
    EXPECT_EQ(readSwitch("2", 1), 1);
    EXPECT_EQ(readSwitch("0", 1), 0);
}

} // namespace
} // namespace veldara
