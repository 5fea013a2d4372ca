#include "layout/preview_geometry.h"

#include "platform/text/rounding.h"

#include <algorithm>
#include <cmath>

namespace veldara {
namespace {

std::string placementText(int pos, const char* before, const char* after) {
    if (pos == 100) {
        return "(center)";
    }
    return pos < 100 ? "(" + std::string(before) + " " + std::to_string(100 - pos) + "%)"
                     : "(" + std::string(after) + " " + std::to_string(pos - 100) + "%)";
}

int dragAxis(int photoSide, double scale, int cropSide, int moved, int startPos) {
    const int slack = roundHalfEven(photoSide * scale - cropSide);
    if (slack == 0) {
        return 100;
    }
    const double pos = static_cast<double>(moved) / slack * 200 + startPos;
    return roundHalfEven(std::clamp(pos, 0.0, 200.0));
}

} // namespace

PreviewSize previewSize(int photoWidth, int photoHeight, int boxWidth, int boxHeight) {
    const double photoRatio = static_cast<double>(photoWidth) / photoHeight;
    const double boxRatio = static_cast<double>(boxWidth) / boxHeight;
    PreviewSize size;
    // A very long photo would round to no pixels at all on its short side.
    if (photoRatio <= boxRatio) {
        size.width = std::max(roundHalfEven(photoRatio * boxHeight), 1);
        size.height = boxHeight;
    } else {
        size.width = boxWidth;
        size.height =
            std::max(roundHalfEven(static_cast<double>(photoHeight) / photoWidth * boxWidth), 1);
    }
    size.scale = static_cast<double>(size.width) / photoWidth;
    return size;
}

PreviewGrid previewGrid(const std::vector<TileRect>& tiles, int tilesWide, int tilesHigh,
                        double scale, int previewWidth, int previewHeight) {
    PreviewGrid grid;
    grid.crop.top = roundHalfEven(tiles.front().top * scale);
    grid.crop.bottom = std::min(roundHalfEven(tiles.back().bottom * scale), previewHeight - 1);
    grid.crop.left = roundHalfEven(tiles.front().left * scale);
    grid.crop.right = std::min(roundHalfEven(tiles.back().right * scale), previewWidth - 1);

    for (int i = 0; i < tilesWide; ++i) {
        grid.columns.push_back(roundHalfEven(tiles[static_cast<std::size_t>(i)].left * scale));
    }
    grid.columns.push_back(grid.crop.right);
    for (int j = 0; j < tilesHigh; ++j) {
        const auto first = static_cast<std::size_t>(tilesWide) * static_cast<std::size_t>(j);
        grid.rows.push_back(roundHalfEven(tiles[first].top * scale));
    }
    grid.rows.push_back(grid.crop.bottom);
    return grid;
}

Placement placement(int photoWidth, int photoHeight, double scale, const PreviewCrop& crop,
                    Pan pan) {
    Placement result;
    result.pan = pan;
    if (roundHalfEven(photoWidth * scale) > crop.right - crop.left + 1) {
        result.horizontal = placementText(pan.horzPos, "left", "right");
    } else {
        result.horizontal = "(full width)";
        result.pan.horzPos = 100;
    }
    if (roundHalfEven(photoHeight * scale) > crop.bottom - crop.top + 1) {
        result.vertical = placementText(pan.vertPos, "up", "down");
    } else {
        result.vertical = "(full height)";
        result.pan.vertPos = 100;
    }
    return result;
}

std::string zoomAmountText(int zoom) {
    return "(" + std::to_string(zoom) + "%)";
}

Pan dragPan(int photoWidth, int photoHeight, double scale, const PreviewCrop& crop,
            const DragStart& start, int x, int y) {
    return {
        dragAxis(photoWidth, scale, crop.right - crop.left + 1, x - start.x, start.pan.horzPos),
        dragAxis(photoHeight, scale, crop.bottom - crop.top + 1, y - start.y, start.pan.vertPos)};
}

} // namespace veldara
