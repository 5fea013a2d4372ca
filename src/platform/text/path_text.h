// Paths into UTF-8 text and back: the one place where the two meet.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace veldara {

#ifdef _WIN32
constexpr char platformSeparator = '\\';
#else
constexpr char platformSeparator = '/';
#endif

// The path as UTF-8 text. Where file names are bytes, they come through byte for byte.
std::string pathText(const std::filesystem::path& path);

// The path that the UTF-8 text names; the reverse of pathText.
std::filesystem::path textPath(std::string_view text);

// The folder with a separator at its end, added when it is missing. The empty text stays empty.
std::string withSeparator(std::string_view folder, char separator = platformSeparator);

// The characters that the system takes in no name of a file or folder, its separators included.
std::string forbiddenInNames(char separator = platformSeparator);

} // namespace veldara
