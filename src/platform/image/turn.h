// Quarter turns and mirrors: pixels are moved and never changed.
#pragma once

#include "platform/image/image.h"

namespace veldara {

enum class Turn { none, clockwise, half, counterClockwise };

// Whether the width becomes the height.
constexpr bool exchangesSides(Turn turn) {
    return turn == Turn::clockwise || turn == Turn::counterClockwise;
}

// The picture turned, exactly. Carries no resolution and no profile.
Image turned(const PixelView& pixels, Turn turn);

// target(x, y) = source(y, x), then mirrored as asked: the pixel of source column x and row y goes
// to column y (from the right when mirrorColumns) of row x (from the bottom when mirrorRows).
// target is as wide as source is high, and the other way round.
void exchangeSides(const PixelView& source, const MutablePixelView& target, bool mirrorColumns,
                   bool mirrorRows);

// Exchanges left and right within a row of that many pixels.
void mirrorRow(std::uint8_t* row, int width);

} // namespace veldara
