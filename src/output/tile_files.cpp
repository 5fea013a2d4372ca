#include "output/tile_files.h"

#include "platform/image/file_ending.h"
#include "platform/text/characters.h"

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
    const std::string folder = tileFolderPath(parent, newFolder, separator);
    return newFolder.empty() ? folder : folder + separator;
}

TileFileName getTileFileName(const TileFileParts& parts, int tileNumber, char separator) {
    if (!parts.type) {
        return {{}, "File extension not selected"};
    }
    if (parts.parent.empty()) {
        return {{},
                "You must select the location where the new poster tile image folder will be "
                "created"};
    }
    return {tileFolderPrefix(parts.parent, parts.newFolder, separator) + parts.base +
                tileNumberText(tileNumber) + extensionOf(*parts.type),
            {}};
}

bool isSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    std::error_code error; // of a file that is not there
    return std::filesystem::equivalent(one, other, error);
}

} // namespace veldara
