// The text of the value file: keys with their typed values, as a person can read and mend them.
//
//     [Software\Name\program]
//     string "last_folder" = "/home/me/Pictures"
//     dword "prefs_showTiles" = 1
//     other "picture" = 01 ff 3c
#pragma once

#include "platform/registry.h"

#include <map>
#include <string>
#include <string_view>

namespace veldara {

// Compares names without regard to the case of the letters A to Z.
struct CaselessLess {
    bool operator()(std::string_view a, std::string_view b) const;
};

using KeyValues = std::map<std::string, RegistryValue, CaselessLess>;
using StoredValues = std::map<std::string, KeyValues, CaselessLess>; // by key path

// Reads such a text. A line that does not read as one of the forms is passed over, so a damaged
// file loses the damaged values and no others; of a value that stands twice the last counts.
StoredValues parseStoredValues(std::string_view text);

// Writes it, so that parseStoredValues gives the same values back. Bytes below the blank, quotes
// and backslashes in texts are written as \xNN, \" and \\.
std::string storedValuesText(const StoredValues& values);

} // namespace veldara
