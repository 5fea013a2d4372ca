#include "app/photo_file.h"

#include "platform/image/file_ending.h"
#include "platform/text/characters.h"

#include <array>
#include <cstddef>

namespace veldara {

namespace {

constexpr std::array<int, 4> rotationAngles{0, 90, 270, 180};

} // namespace

bool isListedFile(const std::string& name, int filterIndex) {
    if (characterCount(name) <= 4) {
        return false;
    }
    const std::optional<FileType> type = fileTypeByName(name);
    switch (filterIndex) {
    case filterImages:
        return type.has_value();
    case filterJpeg:
        return type == FileType::jpeg;
    case filterTiff:
        return type == FileType::tiff;
    case filterBitmap:
        return type == FileType::bmp;
    case filterAll:
        return true;
    default:
        return false;
    }
}

bool isPhotoFile(const std::string& name) {
    return characterCount(name) >= 4 && fileTypeByName(name).has_value();
}

int rotationAngle(int listIndex) {
    const bool chosen = listIndex >= 0 && listIndex < static_cast<int>(rotationAngles.size());
    return chosen ? rotationAngles[static_cast<std::size_t>(listIndex)] : 0;
}

int rotationIndex(int angle) {
    for (std::size_t i = 0; i < rotationAngles.size(); ++i) {
        if (rotationAngles[i] == angle) {
            return static_cast<int>(i);
        }
    }
    return 0;
}

int rotationDelta(int from, int to) {
    const int delta = to - from;
    return delta < 0 ? delta + 360 : delta;
}

} // namespace veldara
