// Where pieces of a JPEG photo can be cut: along the borders of its MCUs, the groups of blocks that
// the file codes together.
#pragma once

namespace veldara {

// Pixels of a photo; right and bottom are left + width and top + height.
struct PixelRectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int right() const { return left + width; }
    int bottom() const { return top + height; }
    bool operator==(const PixelRectangle&) const = default;
};

// The photo's size and that of a whole MCU (8 pixels times the largest sampling factor), in pixels.
struct McuGrid {
    int width = 0;
    int height = 0;
    int mcuWidth = 8;
    int mcuHeight = 8;
    int rows() const { return (height + mcuHeight - 1) / mcuHeight; }
};

// Whether the rectangle has sides and lies in the photo.
bool liesInPhoto(const McuGrid& grid, const PixelRectangle& rectangle);

// The rectangle widened to MCU borders and by one MCU more on each side, as far as the photo goes.
PixelRectangle withContext(const McuGrid& grid, const PixelRectangle& rectangle);

// Rows of MCUs that a piece takes: first, and the one behind the last. The piece begins on a
// border.
struct McuRows {
    int first = 0;
    int end = 0;
    bool operator==(const McuRows&) const = default;
};
McuRows mcuRowsOf(const McuGrid& grid, const PixelRectangle& piece);

} // namespace veldara
