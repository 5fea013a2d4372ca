// A picture without two rows that are alike, the same at every call.
#pragma once

#include "platform/image/image.h"

#include <cstdint>

namespace veldara::test {

inline Image noise(int width, int height) {
    Image image(width, height);
    std::uint32_t state = 12345;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < 3 * width; ++x) {
            state = state * 1664525U + 1013904223U;
            image.row(y)[x] = static_cast<std::uint8_t>(state >> 24U);
        }
    }
    return image;
}

} // namespace veldara::test
