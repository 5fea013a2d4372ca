// The edge calibration profile file: its path, reading and writing its lines.
#pragma once

#include "calibration/edge_profile.h"
#include "platform/file_system.h"
#include "platform/text/path_text.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldara {

// Further lines are ignored.
constexpr std::size_t mostProfiles = 199;

constexpr int profilesUnreadable = 0; // no file, or a line that is no profile
constexpr int profileFileEmpty = -33; // not a single line

// status: the number of profiles, profilesUnreadable or profileFileEmpty. profiles is filled only
// when the status is at least 1.
struct ProfileFileContent {
    int status = profilesUnreadable;
    std::vector<EdgeProfile> profiles;
};

// Full path of the file: in the application folder, or in the program's own when that is empty.
std::string profileFilePath(const std::string& applicationFolder, const std::string& programFolder,
                            char separator = platformSeparator);

// Reads lines from nextLine until it returns nothing or 199 profiles are read. One bad line, or an
// Error thrown by nextLine, makes the whole file unreadable.
ProfileFileContent readProfiles(const std::function<std::optional<std::string>()>& nextLine);

// The same from a file. One that is not there or cannot be read is profilesUnreadable.
ProfileFileContent readProfileFile(FileSystem& fileSystem, const std::string& path);

// The profiles to work with: those of the file, or the built-in ones when it has none that can be
// read.
std::vector<EdgeProfile> loadProfiles(FileSystem& fileSystem, const std::string& path);

// The same as readProfiles from the whole text of a file.
ProfileFileContent readProfileText(std::string_view text);

// The lines to be written, without line ends.
std::vector<std::string> profileLines(const std::vector<EdgeProfile>& profiles);

} // namespace veldara
