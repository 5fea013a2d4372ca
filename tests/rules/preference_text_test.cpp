#include "app/preference_text.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(Preferences, HaveTheirNames) {
    EXPECT_EQ(preferenceName(1), "app_dir");
    EXPECT_EQ(preferenceName(2), "last_folder");
    EXPECT_EQ(preferenceName(3), "prefs_numTiles");
    EXPECT_EQ(preferenceName(7), "prefs_printSize");
    EXPECT_EQ(preferenceName(8), "prefs_edgeAdjust");
    EXPECT_EQ(preferenceName(9), "prefs_showTiles");
    EXPECT_EQ(preferenceName(10), "prefs_heightEqualsWidth");
    EXPECT_EQ(preferenceName(11), "prefs_units");
    EXPECT_EQ(preferenceName(12), "paperRegLine");
    EXPECT_EQ(preferenceName(13), "cmbMarginLocked");
    EXPECT_EQ(preferenceName(101), "window_place");
    EXPECT_EQ(preferenceName(102), "dim_outside");
    for (const int id : {-1, 0, 4, 5, 6, 14, 100}) {
        EXPECT_EQ(preferenceName(id), "") << id;
    }
}

TEST(Preferences, AreStoredAsNumbersWhereTheyReadAsOne) {
    EXPECT_EQ(storedPreference("0").number, 0);
    EXPECT_EQ(storedPreference("1").number, 1);
    EXPECT_EQ(storedPreference(" 12 ").number, 12);
    EXPECT_EQ(storedPreference("2.5").number, 2);
    EXPECT_EQ(storedPreference("-3").number, -3);
    for (const char* text : {"1_03", "w03h02", "c:\\photos", "|0|Letter|", "", "99999999999"}) {
        EXPECT_FALSE(storedPreference(text).number) << text;
        EXPECT_EQ(storedPreference(text).text, text);
    }
    EXPECT_EQ(storedPreference("  a b ").text, "a b");
}

TEST(TileCountPreference, IsWrittenInTwoDigits) {
    EXPECT_EQ(tileCountText({3, 2}), "w03h02");
    EXPECT_EQ(tileCountText({24, 0}), "w24h00");
    EXPECT_EQ(tileCountText({-1, 2}), "w-1h02");
}

TEST(TileCountPreference, IsReadByPosition) {
    EXPECT_EQ(readTileCounts("w03h02", 25), (TileCountPreference{3, 2}));
    EXPECT_EQ(readTileCounts("w24h00", 25), (TileCountPreference{24, 0}));
    EXPECT_EQ(readTileCounts("w-1h02", 25), (TileCountPreference{1, 2}));
    EXPECT_EQ(readTileCounts("w25h24", 25), (TileCountPreference{1, 24}));
    EXPECT_EQ(readTileCounts("", 25), (TileCountPreference{1, 1}));
    EXPECT_EQ(readTileCounts("w", 25), (TileCountPreference{1, 1}));
    EXPECT_EQ(readTileCounts("w03", 25), (TileCountPreference{3, 1}));
    EXPECT_EQ(readTileCounts("wxxhyy", 25), (TileCountPreference{1, 1}));
}

TEST(EdgeAdjustPreference, IsWrittenAndRead) {
    EXPECT_EQ(edgeAdjustText({1, 3}), "1_03");
    EXPECT_EQ(edgeAdjustText({0, 120}), "0_120");
    EXPECT_EQ(readEdgeAdjust("1_03", 4), (EdgeAdjustPreference{1, 3}));
    EXPECT_EQ(readEdgeAdjust("1_03", 3), (EdgeAdjustPreference{1, 0})); // no such profile any more
    EXPECT_EQ(readEdgeAdjust("2_01", 3), (EdgeAdjustPreference{0, 1}));
    EXPECT_EQ(readEdgeAdjust("1_-1", 3), (EdgeAdjustPreference{1, 0}));
    EXPECT_EQ(readEdgeAdjust("", 3), (EdgeAdjustPreference{0, 0}));
    EXPECT_EQ(readEdgeAdjust("1", 3), (EdgeAdjustPreference{1, 0}));
}

TEST(SwitchPreference, IsNoughtOrOneOrTheDefault) {
    EXPECT_EQ(readSwitch("0", 1), 0);
    EXPECT_EQ(readSwitch("1", 0), 1);
    EXPECT_EQ(readSwitch("2", 1), 1);
    EXPECT_EQ(readSwitch("", 1), 1);
    EXPECT_EQ(readSwitch("", 0), 0);
    EXPECT_EQ(readSwitch("on", 0), 0);
}

TEST(PrintSizePreference, IsItsFirstTwoCharacters) {
    EXPECT_EQ(readPrintSize("05x"), 5);
    EXPECT_EQ(readPrintSize(""), 3);
    EXPECT_EQ(readPrintSize("ab"), 3);
}

} // namespace
} // namespace veldara
