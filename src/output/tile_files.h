// Where tile files go and what they are called.
#pragma once

#include "platform/image/codec.h"
#include "platform/text/path_text.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

// A photo's name without the last four characters. Nothing when the name has fewer than five.
std::optional<std::string> defaultBaseName(const std::string& photoName);

// The base name with "_poster_images" appended.
std::string defaultFolderName(const std::string& baseName);

// The number in at least three digits.
std::string tileNumberText(int tileNumber);

// The folder that the tiles go to: the parent folder, a separator when it has none at its end, and
// the new folder's name (which may be empty).
std::string tileFolderPath(const std::string& parent, const std::string& newFolder,
                           char separator = platformSeparator);

// The same with a separator at its end: behind the parent, and behind a new folder's name whatever
// that ends with. What a label shows, and what the files' names begin with. Empty without a parent.
std::string tileFolderPrefix(const std::string& parent, const std::string& newFolder,
                             char separator = platformSeparator);

// What a tile's file name is made of.
struct TileFileParts {
    std::string folder; // as tileFolderPrefix gives it; empty: none was chosen
    std::string base;
    std::optional<TileFormat> type;
};

// A name, or the problem that prevents it.
struct TileFileName {
    std::string path;
    std::string problem; // empty when there is none
    bool ok() const { return problem.empty(); }
};

// tileNumber counts from 1.
TileFileName getTileFileName(const TileFileParts& parts, int tileNumber);

// Whether both paths lead to the same existing file.
bool isSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

// What is wrong when one of the files is the photo itself, which no run may overwrite; the empty
// text when none is.
std::string photoOverwriteProblem(const std::vector<std::filesystem::path>& files,
                                  const std::filesystem::path& photo);

} // namespace veldara
