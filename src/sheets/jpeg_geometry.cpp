#include "sheets/jpeg_geometry.h"

#include <algorithm>

namespace veldara {

namespace {

struct Stretch {
    int first = 0;
    int length = 0;
};

Stretch widened(int first, int length, int step, int most) {
    const int begin = std::max(first / step - 1, 0) * step;
    // At most 2^16 pixels and a step of at most 32, so the sums stay small.
    const int end = std::min(((first + length - 1) / step + 2) * step, most);
    return {begin, end - begin};
}

bool lies(int first, int length, int most) {
    return first >= 0 && length > 0 && first < most && length <= most - first;
}

} // namespace

bool liesInPhoto(const McuGrid& grid, const PixelRectangle& rectangle) {
    return lies(rectangle.left, rectangle.width, grid.width) &&
           lies(rectangle.top, rectangle.height, grid.height);
}

PixelRectangle withContext(const McuGrid& grid, const PixelRectangle& rectangle) {
    const Stretch across = widened(rectangle.left, rectangle.width, grid.mcuWidth, grid.width);
    const Stretch down = widened(rectangle.top, rectangle.height, grid.mcuHeight, grid.height);
    return {across.first, down.first, across.length, down.length};
}

McuRows mcuRowsOf(const McuGrid& grid, const PixelRectangle& piece) {
    return {piece.top / grid.mcuHeight, (piece.bottom() - 1) / grid.mcuHeight + 1};
}

} // namespace veldara
