// What is done to pixels: quarter turns, resampling, text.
#pragma once

#include "platform/image/image.h"

#include <string>

namespace veldara {

enum class Turn { none, clockwise, half, counterClockwise };

// The picture turned, exactly: no pixel is changed. Carries no resolution and no profile.
Image turned(const PixelView& pixels, Turn turn);

// The picture resampled to another size with an area/cubic filter, spread over the cores.
Image resampled(const PixelView& pixels, int width, int height);

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
