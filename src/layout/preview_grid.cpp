#include "layout/preview_grid.h"

#include "platform/text/rounding.h"

#include <algorithm>

namespace veldara {
namespace {

void colour(std::uint8_t* pixel) {
    pixel[0] = 255;
    pixel[1] = 0;
    pixel[2] = 0;
}

int evenPlace(int number, int count, int side) {
    return roundHalfEven(static_cast<double>(number) / count * (side - 1));
}

} // namespace

void drawColumn(const MutablePixelView& pixels, int x, int top, int bottom) {
    if (x < 0 || x >= pixels.width()) {
        return;
    }
    const int last = std::min(bottom, pixels.height() - 1);
    for (int y = std::max(top, 0); y <= last; ++y) {
        colour(pixels.row(y) + std::size_t{3} * static_cast<std::size_t>(x));
    }
}

void drawRow(const MutablePixelView& pixels, int y, int left, int right) {
    if (y < 0 || y >= pixels.height()) {
        return;
    }
    const int last = std::min(right, pixels.width() - 1);
    for (int x = std::max(left, 0); x <= last; ++x) {
        colour(pixels.row(y) + std::size_t{3} * static_cast<std::size_t>(x));
    }
}

void drawPreviewGrid(const MutablePixelView& pixels, const PreviewGrid& grid) {
    for (const int x : grid.columns) {
        drawColumn(pixels, x, grid.crop.top, grid.crop.bottom);
    }
    for (const int y : grid.rows) {
        drawRow(pixels, y, grid.crop.left, grid.crop.right);
    }
}

void drawEvenGrid(const MutablePixelView& pixels, int tilesWide, int tilesHigh) {
    for (int i = 0; i <= tilesWide; ++i) {
        drawColumn(pixels, evenPlace(i, tilesWide, pixels.width()), 0, pixels.height() - 1);
    }
    for (int j = 0; j <= tilesHigh; ++j) {
        drawRow(pixels, evenPlace(j, tilesHigh, pixels.height()), 0, pixels.width() - 1);
    }
}

} // namespace veldara
