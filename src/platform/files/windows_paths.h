// What every call on a file needs on Windows: its path in the form without a length limit, and
// patience with programs that hold a file for a moment.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

namespace veldara {

// The absolute path with the prefix \\?\ (\\?\UNC\ for a share), under which the system takes paths
// of up to 32,767 characters. Device names such as \\.\CON stay as they are.
std::wstring extendedPath(const std::filesystem::path& path);

// How long a file may be held by another program: virus scanners and synchronising services open a
// new file for a moment, often without letting others rename or delete it.
constexpr std::chrono::milliseconds heldFilePatience(2000);

// Runs the call, which returns the system's code (0 for success), again and again while the code
// says that another program holds the file (5, 32, 33), until the patience ends. The last code.
unsigned long retryWhileHeld(const std::function<unsigned long()>& call);

// The reason behind a code of retryWhileHeld, as the end of a sentence: names the other program
// where the code can mean one.
std::string heldReason(unsigned long code);

} // namespace veldara
