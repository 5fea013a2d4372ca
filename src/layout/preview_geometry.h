// The arithmetic of the main preview: its size, the grid in its pixels, the placement texts, and
// how a drag moves the crop.
#pragma once

#include "layout/tile_grid.h"

#include <string>
#include <vector>

namespace veldara {

// The photo fitted into the picture box, and preview pixels per photo pixel.
struct PreviewSize {
    int width = 0;
    int height = 0;
    double scale = 0;
};

PreviewSize previewSize(int photoWidth, int photoHeight, int boxWidth, int boxHeight);

// The crop in preview pixels, inclusive.
struct PreviewCrop {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool contains(int x, int y) const { return left <= x && x <= right && top <= y && y <= bottom; }
    bool operator==(const PreviewCrop&) const = default;
};

// The crop and the columns and rows of its grid lines, all in preview pixels.
struct PreviewGrid {
    PreviewCrop crop;
    std::vector<int> columns; // one more than tiles wide
    std::vector<int> rows;    // one more than tiles high
};

// tiles: as calcTileCoord gave them. Right and bottom are lowered to the preview's last column and
// row; left and top are not touched.
PreviewGrid previewGrid(const std::vector<TileRect>& tiles, int tilesWide, int tilesHigh,
                        double scale, int previewWidth, int previewHeight);

// The two pan positions, 0 to 200 each.
struct Pan {
    int horzPos = 100;
    int vertPos = 100;
    bool operator==(const Pan&) const = default;
};

// The placement texts, and the pan as it is to be kept: centred where the crop spans the photo.
struct Placement {
    std::string horizontal;
    std::string vertical;
    Pan pan;
};

Placement placement(int photoWidth, int photoHeight, double scale, const PreviewCrop& crop,
                    Pan pan);

// What both labels read while there is no photo.
constexpr const char* noPlacement = "---";

// "(25%)"
std::string zoomAmountText(int zoom);

// Where a drag of the crop began: the pointer in preview pixels and the pan at that moment.
struct DragStart {
    int x = 0;
    int y = 0;
    Pan pan;
};

// The pan for the pointer at (x, y): the crop follows it pixel by pixel. An axis without slack is
// centred.
Pan dragPan(int photoWidth, int photoHeight, double scale, const PreviewCrop& crop,
            const DragStart& start, int x, int y);

} // namespace veldara
