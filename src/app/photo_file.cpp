#include "app/photo_file.h"

#include "platform/text/characters.h"

#include <array>
#include <cstddef>

namespace veldara {

namespace {

constexpr std::array<int, 4> rotationAngles{0, 90, 270, 180};

// The last three characters as capitals; empty for a shorter name.
std::string endingOf(const std::string& name) {
    return characterCount(name) < 3 ? std::string() : upperCase(sRight(name, 3));
}

} // namespace

bool isListedFile(const std::string& name, int filterIndex) {
    if (characterCount(name) <= 4) {
        return false;
    }
    const std::string ending = endingOf(name);
    switch (filterIndex) {
    case filterImages:
        return ending == "JPG" || ending == "TIF" || ending == "BMP";
    case filterJpeg:
        return ending == "JPG";
    case filterTiff:
        return ending == "TIF";
    case filterBitmap:
        return ending == "BMP";
    case filterAll:
        return true;
    default:
        return false;
    }
}

bool isPhotoFile(const std::string& name) {
    const std::string ending = endingOf(name);
    return characterCount(name) >= 4 && (ending == "BMP" || ending == "JPG" || ending == "TIF");
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
