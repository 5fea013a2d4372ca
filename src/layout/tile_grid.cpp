#include "layout/tile_grid.h"

#include "platform/error.h"
#include "platform/text/rounding.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veldara {

double posterRatio(const PosterLayout& layout) {
    double tileWidth = layout.tileWidthInches;
    double tileHeight = layout.tileHeightInches;
    if (layout.tilesTurned) {
        std::swap(tileWidth, tileHeight);
    }
    const double ratio = (layout.tilesWide * tileWidth) / (layout.tilesHigh * tileHeight);
    if (tileWidth <= 0 || tileHeight <= 0 || !std::isfinite(ratio)) {
        throw Error("Nothing is left of a tile: its edges are trimmed by more than its size.");
    }
    return ratio;
}

CropSize fullCropSize(const PosterLayout& layout) {
    if (layout.photoWidth <= 0 || layout.photoHeight <= 0) {
        throw Error("The photo has no pixels.");
    }
    const double poster = posterRatio(layout);
    const double photo = static_cast<double>(layout.photoWidth) / layout.photoHeight;
    if (photo < poster) {
        return {static_cast<double>(layout.photoWidth), layout.photoWidth / poster};
    }
    return {poster * layout.photoHeight, static_cast<double>(layout.photoHeight)};
}

double zoomFactor(int zoom) {
    return 1 / (zoom / 100.0 + 1);
}

CropRect cropRect(const PosterLayout& layout) {
    const CropSize full = fullCropSize(layout);
    const double factor = zoomFactor(layout.zoom);
    const double down = layout.vertPos / 200.0;
    const double across = layout.horzPos / 200.0;

    CropRect crop;
    crop.width = roundHalfEven(full.width * factor);
    crop.left = roundHalfEven((layout.photoWidth - crop.width) * across);
    crop.height = roundHalfEven(full.height * factor);
    crop.top = roundHalfEven((layout.photoHeight - crop.height) * down);
    return crop;
}

std::vector<TileRect> calcTileCoord(const PosterLayout& layout) {
    const CropRect crop = cropRect(layout);
    const double wide = layout.tilesWide;
    const double high = layout.tilesHigh;

    std::vector<TileRect> tiles;
    tiles.reserve(static_cast<std::size_t>(layout.tilesWide) *
                  static_cast<std::size_t>(layout.tilesHigh));
    for (int j = 0; j < layout.tilesHigh; ++j) {
        for (int i = 0; i < layout.tilesWide; ++i) {
            TileRect tile;
            tile.left = roundHalfEven(i / wide * crop.width) + crop.left;
            tile.top = roundHalfEven(j / high * crop.height) + crop.top;
            // Two halves that both round up would put the last column of a crop that ends at the
            // photo's edge one pixel outside it, where there is nothing to cut.
            tile.right =
                std::min(roundHalfEven(crop.width / wide + tile.left - 1), layout.photoWidth - 1);
            tile.bottom =
                std::min(roundHalfEven(crop.height / high + tile.top - 1), layout.photoHeight - 1);
            tiles.push_back(tile);
        }
    }
    return tiles;
}

bool everyTileHasPixels(const std::vector<TileRect>& tiles) {
    return std::all_of(tiles.begin(), tiles.end(),
                       [](const TileRect& tile) { return tile.width() > 0 && tile.height() > 0; });
}

} // namespace veldara
