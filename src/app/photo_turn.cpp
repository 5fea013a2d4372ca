#include "app/photo_turn.h"

#include "platform/image/turn.h"

#include <array>
#include <cstddef>

namespace veldara {

namespace {

constexpr std::array<int, 4> rotationAngles{0, 90, 270, 180}; // of the list's entries

} // namespace

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

Turn turnOf(int degrees) {
    switch (degrees) {
    case 90:
        return Turn::clockwise;
    case 180:
        return Turn::half;
    case 270:
        return Turn::counterClockwise;
    default:
        return Turn::none;
    }
}

Image turnedBy(const Image& photo, int degrees) {
    Image result = turned(photo.view(), turnOf(degrees));
    result.dotsPerInch = photo.dotsPerInch;
    result.colourProfile = photo.colourProfile;
    return result;
}

} // namespace veldara
