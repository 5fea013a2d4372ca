#include "app/preference_text.h"

namespace veldara {
namespace {

// The characters from `first` (counted from 1) as a whole number that is a list index.
std::optional<int> readIndex(std::string_view text, std::size_t first, int entries) {
    if (text.size() < first) {
        return std::nullopt;
    }
    const std::optional<int> index = readInteger(text.substr(first - 1, 2));
    return index && *index >= 0 && *index < entries ? index : std::nullopt;
}

} // namespace

std::string preferenceName(int id) {
    switch (id) {
    case prefAppDir:
        return applicationFolderName;
    case prefLastFolder:
        return "last_folder";
    case prefNumTiles:
        return "prefs_numTiles";
    case prefPrintSize:
        return "prefs_printSize";
    case prefEdgeAdjust:
        return "prefs_edgeAdjust";
    case prefShowTiles:
        return "prefs_showTiles";
    case prefHeightEqualsWidth:
        return "prefs_heightEqualsWidth";
    case prefUnits:
        return "prefs_units";
    case prefPaperRegLine:
        return "paperRegLine";
    case prefMarginLocked:
        return "cmbMarginLocked";
    case prefWindowPlace:
        return "window_place";
    case prefDimOutside:
        return "dim_outside";
    default:
        return {};
    }
}

StoredPreference storedPreference(std::string_view value, NumberStyle style) {
    if (const std::optional<int> number = readInteger(value, style)) {
        return {*number, {}};
    }
    return {std::nullopt, trimmed(value)};
}

std::string twoDigits(int number) {
    const std::string digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

std::string tileCountText(const TileCountPreference& counts) {
    return "w" + twoDigits(counts.wideIndex) + "h" + twoDigits(counts.highIndex);
}

TileCountPreference readTileCounts(std::string_view text, int entries) {
    return {readIndex(text, 2, entries).value_or(1), readIndex(text, 5, entries).value_or(1)};
}

std::string edgeAdjustText(const EdgeAdjustPreference& adjust) {
    return std::to_string(adjust.checked) + "_" + twoDigits(adjust.profileIndex);
}

EdgeAdjustPreference readEdgeAdjust(std::string_view text, int profiles) {
    return {readSwitch(text.substr(0, 1), 0), readIndex(text, 3, profiles).value_or(0)};
}

int readSwitch(std::string_view text, int otherwise) {
    const std::optional<int> value = readInteger(text);
    return value && (*value == 0 || *value == 1) ? *value : otherwise;
}

int readPrintSize(std::string_view text) {
    return readInteger(text.substr(0, 2)).value_or(3);
}

} // namespace veldara
