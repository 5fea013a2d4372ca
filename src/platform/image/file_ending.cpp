#include "platform/image/file_ending.h"

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

std::optional<FileType> fileTypeByName(const std::string& name) {
    if (characterCount(name) < 3) {
        return std::nullopt;
    }
    const std::string ending = "." + lowerCase(sRight(name, 3));
    for (const FileType type : {FileType::bmp, FileType::tiff, FileType::jpeg}) {
        if (ending == extensionOf(type)) {
            return type;
        }
    }
    return std::nullopt;
}

} // namespace veldara
