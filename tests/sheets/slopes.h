// A picture in which every place is different.
#pragma once

#include "platform/image/image.h"

#include <cstdint>

namespace veldara::test {

// Ever more red to the right and ever more green to the bottom, so that a part of a pixel to the
// side is hardly different.
inline Image slopes(int width, int height) {
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.row(y)[3 * x] = static_cast<std::uint8_t>(255 * x / width);
            image.row(y)[3 * x + 1] = static_cast<std::uint8_t>(255 * y / height);
            image.row(y)[3 * x + 2] = 100;
        }
    }
    return image;
}

} // namespace veldara::test
