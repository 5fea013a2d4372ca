// Edge compensation: a tile is enlarged on every side by what the printer will clip off, the added
// border repeating the tile's outermost pixels.
#pragma once

#include "platform/image/image.h"
#include "platform/measures.h"

#include <array>

namespace veldara {

// Below this many dots per inch a tile is resampled up to it before its border is added, so that a
// border of a quarter stripe is at least one pixel.
constexpr double leastCompensationDotsPerInch = 64.0;

// The size of a tile after compensation.
struct CompensationPlan {
    int imageWidth = 0; // the tile after resampling, without its border
    int imageHeight = 0;
    std::array<int, 4> margins{}; // pixels: top, right, bottom, left
    int width() const { return imageWidth + margins[edgeRight] + margins[edgeLeft]; }
    int height() const { return imageHeight + margins[edgeTop] + margins[edgeBottom]; }
};

// dotsPerInch unrounded, above 0. Throws Error when it is not, or a size does not fit.
CompensationPlan planCompensation(int width, int height, double dotsPerInch,
                                  const EdgeTrims& trims);

// One row of the tile (plan.imageWidth pixels) with its left and right border (plan.width()
// pixels).
void borderRow(std::uint8_t* to, const std::uint8_t* from, const CompensationPlan& plan);

// Always a new picture, even if all trims are zero. Throws Error.
Image applyEdgeClipComp(const PixelView& tile, double dotsPerInch, const EdgeTrims& trims);

} // namespace veldara
