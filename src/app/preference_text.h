// The preferences as they are stored: their names, and each value into text and back.
#pragma once

#include "platform/preference_keys.h"
#include "platform/text/number_text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veldara {

// The numbers that callers use instead of value names.
enum PreferenceId {
    prefAppDir = 1,
    prefLastFolder = 2,
    prefNumTiles = 3,
    prefPrintSize = 7,
    prefEdgeAdjust = 8,
    prefShowTiles = 9,
    prefHeightEqualsWidth = 10,
    prefUnits = 11,
    prefPaperRegLine = 12,
    prefMarginLocked = 13,
    prefWindowPlace = 101, // the main window's, with its splitter
    prefDimOutside = 102,
};

// The name of the value; empty for a number that stands for none.
std::string preferenceName(int id);

// What a value becomes in the registry: a number when it reads as one, else its trimmed text.
struct StoredPreference {
    std::optional<std::int32_t> number;
    std::string text; // when it is no number
};
StoredPreference storedPreference(std::string_view value, NumberStyle style = {});

// A list index in two digits. Only what is shorter is padded: -1 stays "-1", 100 stays "100".
std::string twoDigits(int number);

// "w03h02": the list indices of the tile counts.
struct TileCountPreference {
    int wideIndex = 1;
    int highIndex = 1;
    bool operator==(const TileCountPreference&) const = default;
};
std::string tileCountText(const TileCountPreference& counts);
// entries: how many the lists have. An index that cannot be read or is no entry becomes 1.
TileCountPreference readTileCounts(std::string_view text, int entries);

// "1_03": the check value of edge compensation and the list index of the profile.
struct EdgeAdjustPreference {
    int checked = 0;
    int profileIndex = 0;
    bool operator==(const EdgeAdjustPreference&) const = default;
};
std::string edgeAdjustText(const EdgeAdjustPreference& adjust);
// profiles: how many there are. What cannot be read becomes 0.
EdgeAdjustPreference readEdgeAdjust(std::string_view text, int profiles);

// A stored 0 or 1; anything else becomes the default.
int readSwitch(std::string_view text, int otherwise);

// The first two characters as a number, or 3.
int readPrintSize(std::string_view text);

} // namespace veldara
