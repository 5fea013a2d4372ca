// The full-screen preview: which part of the photo it shows, how large, and how its window is laid
// out.
#pragma once

#include "layout/tile_grid.h"

#include <optional>
#include <vector>

namespace veldara {

// The part of the photo that is shown and the size that it is resampled to.
struct FullPreview {
    int left = 0; // pixels of the photo
    int top = 0;
    int width = 0;
    int height = 0;
    int shownWidth = 0; // pixels of the screen
    int shownHeight = 0;
};

// The crop, less its last column and row, as large as the box allows. Nothing when the crop or the
// box has no room for a pixel.
std::optional<FullPreview> fullPreview(const std::vector<TileRect>& tiles, int boxWidth,
                                       int boxHeight);

// The layout of the picture and the close button in a preview window, in the window's units.
struct PreviewWindowLayout {
    int pictureLeft = 0;
    int pictureTop = 0;
    int pictureWidth = 0;
    int pictureHeight = 0;
    int closeLeft = 0;
    int closeTop = 0;
    int margin = 0; // around the button
};

// Height that the window's title bar and borders take.
constexpr int previewTitleBarHeight = 405;
constexpr int previewMinimumHeight = 50;

// The picture in the top-left corner, the button centred one margin below it. titleBarHeight is 0
// where the window's size is that of its inner area.
PreviewWindowLayout fitToNewSize(int windowWidth, int windowHeight, int buttonWidth,
                                 int buttonHeight, int titleBarHeight = previewTitleBarHeight);

// The same, the picture given the poster's width-to-height ratio (above 0) inside the space that
// there is, centred in the window's width.
PreviewWindowLayout fitToNewSizeForPic(int windowWidth, int windowHeight, int buttonWidth,
                                       int buttonHeight, double ratio,
                                       int titleBarHeight = previewTitleBarHeight);

} // namespace veldara
