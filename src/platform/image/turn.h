// Moving pixels to where a turn or a mirror puts them.
#pragma once

#include "platform/image/image.h"

namespace veldara {

// target(x, y) = source(y, x), then mirrored as asked: the pixel of source column x and row y goes
// to column y (from the right when mirrorColumns) of row x (from the bottom when mirrorRows).
// target is as wide as source is high, and the other way round.
void exchangeSides(const PixelView& source, const MutablePixelView& target, bool mirrorColumns,
                   bool mirrorRows);

// Exchanges left and right within a row of that many pixels.
void mirrorRow(std::uint8_t* row, int width);

} // namespace veldara
