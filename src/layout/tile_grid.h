// Which pixels of the photo end up on which sheet: the crop rectangle and the grid of tiles in it.
// The single source of tile rectangles for both previews and for the tile files.
#pragma once

#include <vector>

namespace veldara {

// The most tiles that a poster has in a row or a column.
constexpr int maximumTilesPerSide = 25;

// Everything the geometry depends on. The tile size is the effective one (less the trims when
// compensation is on), before width and height are exchanged for turned tiles.
struct PosterLayout {
    int photoWidth = 0; // pixels of the photo as turned
    int photoHeight = 0;
    int tilesWide = 2;
    int tilesHigh = 2;
    double tileWidthInches = 0;
    double tileHeightInches = 0;
    bool tilesTurned = false;
    int zoom = 0;      // 0 to 400: percent added to 100
    int horzPos = 100; // 0 crop at the left edge, 100 centred, 200 at the right edge
    int vertPos = 100; // 0 top, 100 centred, 200 bottom
};

// Pixels of the photo, all inclusive.
struct TileRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int width() const { return right - left + 1; }
    int height() const { return bottom - top + 1; }
    bool operator==(const TileRect&) const = default;
};

// The crop in pixels of the photo.
struct CropRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const CropRect&) const = default;
};

// Pixels of the photo, not rounded.
struct CropSize {
    double width = 0;
    double height = 0;
};

// Width to height of the whole poster. Throws Error when the trims leave nothing of a tile.
double posterRatio(const PosterLayout& layout);

// The largest crop of the poster's shape that fits in the photo, before zooming.
CropSize fullCropSize(const PosterLayout& layout);

// What a zoom value leaves of each side: 0 gives 1, 100 a half, 400 a fifth.
double zoomFactor(int zoom);

CropRect cropRect(const PosterLayout& layout);

// The tiles row by row from the top left. Right and bottom are derived from the rounded left and
// top plus the unrounded size, so neighbours may share one pixel column or row, or leave one out.
// Throws Error as posterRatio does.
std::vector<TileRect> calcTileCoord(const PosterLayout& layout);

// False when a side of the crop has too few pixels for its tiles, so that some of them are empty.
bool everyTileHasPixels(const std::vector<TileRect>& tiles);

} // namespace veldara
