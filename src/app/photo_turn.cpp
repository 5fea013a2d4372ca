#include "app/photo_turn.h"

#include "platform/image/operations.h"

namespace veldara {

namespace {

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

} // namespace

Image turnedBy(const Image& photo, int degrees) {
    Image result = turned(photo.view(), turnOf(degrees));
    result.dotsPerInch = photo.dotsPerInch;
    result.colourProfile = photo.colourProfile;
    return result;
}

} // namespace veldara
