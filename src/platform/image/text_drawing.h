// Lines of text drawn into pixels with the built-in font.
#pragma once

#include "platform/image/image.h"

#include <string>

namespace veldara {

struct TextSize {
    int width = 0; // pixels
    int height = 0;
};

// The size of a line of text in the built-in font at that size in pixels per em.
TextSize measureText(const std::string& utf8, int pixelSize);

// Draws the text with its box's top-left corner at (x, y); parts outside the picture are clipped.
// opacity 0 to 100.
void drawText(const MutablePixelView& pixels, int x, int y, const std::string& utf8, int pixelSize,
              std::uint8_t c0, std::uint8_t c1, std::uint8_t c2, int opacity);

} // namespace veldara
