// The preferences store over a registry in memory.
#include "app/preferences.h"
#include "support/decimal_comma.h"
#include "support/memory_registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using ::testing::ElementsAre;

constexpr RegistryRoot root = RegistryRoot::localMachine;
constexpr const char* key = R"(Software\Korvane\omra)";

class PreferencesStore : public ::testing::Test {
  protected:
    MemoryRegistry registry;
    Preferences preferences{registry};
};

TEST_F(PreferencesStore, MissingKeyReadsAsEmptyText) {
    EXPECT_EQ(preferences.read(prefLastFolder), "");
    EXPECT_NE(preferences.lastResult(), 0);
}

TEST_F(PreferencesStore, MissingValueReadsAsEmptyText) {
    registry.putText(key, "app_dir", "/app");
    EXPECT_EQ(preferences.read(prefLastFolder), "");
    EXPECT_EQ(preferences.read(prefAppDir), "/app");
    EXPECT_EQ(preferences.lastResult(), 0);
}

TEST_F(PreferencesStore, NumbersAndTextsReadAsText) {
    registry.putNumber(key, "prefs_showTiles", 1);
    registry.putNumber(key, "cmbMarginLocked", -7);
    registry.putText(key, "prefs_edgeAdjust", "1_03");
    EXPECT_EQ(preferences.read(prefShowTiles), "1");
    EXPECT_EQ(preferences.read(prefMarginLocked), "-7");
    EXPECT_EQ(preferences.read(prefEdgeAdjust), "1_03");
}

TEST_F(PreferencesStore, TextIsCutBeforeItsFirstNul) {
    registry.putText(key, "last_folder", std::string("/photos\0rest", 12));
    EXPECT_EQ(preferences.read(prefLastFolder), "/photos");
}

TEST_F(PreferencesStore, OtherTypesReadAsEmptyText) {
    RegistryValue value;
    value.type = RegistryType::other;
    value.bytes = {'1', 0};
    registry.put(key, "prefs_showTiles", value);
    EXPECT_EQ(preferences.read(prefShowTiles), "");
}

TEST_F(PreferencesStore, IdentifierOfNoValueHasAnEmptyName) {
    EXPECT_EQ(preferences.read(static_cast<PreferenceId>(4)), "");
    EXPECT_THAT(registry.log, ElementsAre(std::string("query ") + key + "|"));
}

struct WriteCase {
    const char* value;
    RegistryType type;
    const char* text;
    int number;
};

class PreferencesWrite : public PreferencesStore,
                         public ::testing::WithParamInterface<WriteCase> {};

TEST_P(PreferencesWrite, ChoosesTheTypeByTheText) {
    EXPECT_EQ(preferences.write(prefPrintSize, GetParam().value), 1);
    const RegistryValue value = registry.stored(key, "prefs_printSize");
    EXPECT_EQ(value.type, GetParam().type);
    EXPECT_EQ(value.text, GetParam().text);
    EXPECT_EQ(value.number, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    All, PreferencesWrite,
    ::testing::Values(WriteCase{"0", RegistryType::dword, "", 0},
                      WriteCase{"1", RegistryType::dword, "", 1},
                      WriteCase{" 12 ", RegistryType::dword, "", 12},
                      WriteCase{"-3", RegistryType::dword, "", -3},
                      WriteCase{"2.5", RegistryType::dword, "", 2},
                      WriteCase{"3.5", RegistryType::dword, "", 4},
                      WriteCase{"1_03", RegistryType::string, "1_03", 0},
                      WriteCase{"w03h02", RegistryType::string, "w03h02", 0},
                      WriteCase{"  two words ", RegistryType::string, "two words", 0},
                      WriteCase{"", RegistryType::string, "", 0},
                      WriteCase{"99999999999", RegistryType::string, "99999999999", 0}));

TEST_F(PreferencesStore, WhatIsWrittenReadsBack) {
    preferences.write(prefHeightEqualsWidth, "1");
    preferences.write(prefNumTiles, "w03h02");
    EXPECT_EQ(preferences.read(prefHeightEqualsWidth), "1");
    EXPECT_EQ(preferences.read(prefNumTiles), "w03h02");
}

TEST_F(PreferencesStore, FirstWriteMakesTheKeysFromTheTopDown) {
    preferences.write(prefShowTiles, "1");
    EXPECT_THAT(registry.log,
                ElementsAre(R"(open Software\Korvane)", R"(create Software\Korvane)",
                            R"(open Software\Korvane\omra)", R"(create Software\Korvane\omra)",
                            R"(set Software\Korvane\omra|prefs_showTiles)"));
}

TEST_F(PreferencesStore, LaterWritesMakeNoKeys) {
    preferences.ensureKeys();
    registry.log.clear();
    preferences.write(prefShowTiles, "1");
    EXPECT_THAT(registry.log,
                ElementsAre(R"(open Software\Korvane)", R"(open Software\Korvane\omra)",
                            R"(set Software\Korvane\omra|prefs_showTiles)"));
}

TEST_F(PreferencesStore, KeyThatCannotBeMadeLeavesTheWriteUndone) {
    registry.createFails = 5;
    EXPECT_EQ(preferences.write(prefShowTiles, "1"), 1);
    EXPECT_EQ(preferences.lastResult(), 5);
    EXPECT_TRUE(registry.empty());
}

TEST_F(PreferencesStore, ValueThatCannotBeWrittenIsLeftUndone) {
    registry.putNumber(key, "prefs_showTiles", 0);
    registry.setFails = 5;
    EXPECT_EQ(preferences.write(prefShowTiles, "1"), 1);
    EXPECT_EQ(registry.stored(key, "prefs_showTiles").number, 0);
    EXPECT_EQ(preferences.lastResult(), 5);
}

TEST_F(PreferencesStore, KeyExistsReturnsWhetherItOpens) {
    EXPECT_FALSE(preferences.keyExists(root, "Software\\Other"));
    EXPECT_NE(preferences.lastResult(), 0);
    preferences.createKey(root, "Software\\Other");
    EXPECT_EQ(preferences.lastResult(), 0);
    EXPECT_TRUE(preferences.keyExists(root, "Software\\Other"));
    registry.openFails = 5;
    EXPECT_FALSE(preferences.keyExists(root, "Software\\Other"));
    EXPECT_EQ(preferences.lastResult(), 5);
}

TEST_F(PreferencesStore, AnyKeyCanBeSetAndQueried) {
    preferences.setValue(root, "Software\\Other", "name", " text ");
    EXPECT_EQ(preferences.queryValue(root, "Software\\Other", "name"), "text");
    EXPECT_EQ(preferences.queryValue(root, "Software\\Other", "another"), "");
}

TEST_F(PreferencesStore, LastResultIsThatOfTheLastCall) {
    registry.queryFails = 5;
    preferences.read(prefAppDir);
    EXPECT_EQ(preferences.lastResult(), 5);
    registry.queryFails = 0;
    registry.putText(key, "app_dir", "x");
    preferences.read(prefAppDir);
    EXPECT_EQ(preferences.lastResult(), 0);
}

TEST_F(PreferencesStore, NumbersAreReadInTheUsersStyle) {
    Preferences german{registry, comma};
    german.write(prefPrintSize, "3,4");
    EXPECT_EQ(registry.stored(key, "prefs_printSize").number, 3);
}

} // namespace
} // namespace veldara::test
