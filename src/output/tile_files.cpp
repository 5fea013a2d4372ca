#include "output/tile_files.h"

#include "platform/text/characters.h"

namespace veldara {

std::string extensionOf(FileType type) {
    switch (type) {
    case FileType::bmp:
        return ".bmp";
    case FileType::tiff:
        return ".tif";
    case FileType::jpeg:
        break;
    }
    return ".jpg";
}

std::optional<FileType> tileFileType(const std::string& fileName) {
    if (characterCount(fileName) < 3) {
        return std::nullopt;
    }
    const std::string ending = "." + lowerCase(sRight(fileName, 3));
    for (const FileType type : {FileType::bmp, FileType::tiff, FileType::jpeg}) {
        if (ending == extensionOf(type)) {
            return type;
        }
    }
    return std::nullopt;
}

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

std::string tileFolderLabel(const std::string& parent, const std::string& newFolder,
                            char separator) {
    return withSeparator(tileFolderPath(parent, newFolder, separator), separator);
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
    return {tileFolderLabel(parts.parent, parts.newFolder, separator) + parts.base +
                tileNumberText(tileNumber) + extensionOf(*parts.type),
            {}};
}

} // namespace veldara
