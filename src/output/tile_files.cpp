#include "output/tile_files.h"

#include "platform/image/tile_format.h"
#include "platform/text/characters.h"
#include "platform/text/file_name.h"

#include <system_error>

namespace veldara {

std::optional<std::string> defaultBaseName(const std::string& photoName) {
    const std::size_t length = characterCount(photoName);
    if (length < 5) {
        return std::nullopt;
    }
    return sleft(photoName, length - 4);
}

std::string defaultFolderName(const std::string& baseName) {
    return baseName + "_poster_images";
}

std::string tileNumberText(int tileNumber) {
    std::string digits = std::to_string(tileNumber);
    if (digits.size() < 3) {
        digits.insert(0, 3 - digits.size(), '0');
    }
    return digits;
}

std::string tileFolderPath(const std::string& parent, const std::string& newFolder,
                           char separator) {
    return withSeparator(parent, separator) + newFolder;
}

std::string tileFolderPrefix(const std::string& parent, const std::string& newFolder,
                             char separator) {
    if (parent.empty()) {
        return {};
    }
    const std::string folder = tileFolderPath(parent, newFolder, separator);
    return newFolder.empty() ? folder : folder + separator;
}

TileFileName getTileFileName(const TileFileParts& parts, int tileNumber) {
    if (!parts.type) {
        return {{}, "File extension not selected"};
    }
    if (parts.folder.empty()) {
        return {{},
                "You must select the location where the new poster tile image folder will be "
                "created"};
    }
    const std::string name = parts.base + tileNumberText(tileNumber) + extensionOf(*parts.type);
    if (const std::string problem = fileNameProblem(name); !problem.empty()) {
        return {{}, problem};
    }
    return {parts.folder + name, {}};
}

bool isSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    std::error_code error; // of a file that is not there
    return std::filesystem::equivalent(one, other, error);
}

std::string photoOverwriteProblem(const std::vector<std::filesystem::path>& files,
                                  const std::filesystem::path& photo) {
    for (const std::filesystem::path& file : files) {
        if (isSameFile(file, photo)) {
            return "The tile \"" + pathText(file) + "\" would take the photo's place";
        }
    }
    return {};
}

} // namespace veldara
