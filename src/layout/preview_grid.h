// The grid drawn on pixels. Only the pixels of the lines are touched.
#pragma once

#include "layout/preview_geometry.h"
#include "platform/image/image.h"

namespace veldara {

// Column x from row top to row bottom, or row y from column left to right, inclusive and clipped to
// the picture, in the lines' colour: channel 0 full, the others empty.
void drawColumn(const MutablePixelView& pixels, int x, int top, int bottom);
void drawRow(const MutablePixelView& pixels, int y, int left, int right);

// The grid of the main preview: lines at the tiles' own places, within the crop.
void drawPreviewGrid(const MutablePixelView& pixels, const PreviewGrid& grid);

// The grid of the full-screen preview: evenly spaced over the whole picture, its edges included.
void drawEvenGrid(const MutablePixelView& pixels, int tilesWide, int tilesHigh);

} // namespace veldara
