#include "layout/full_preview.h"

#include "platform/text/rounding.h"

#include <algorithm>

namespace veldara {

std::optional<FullPreview> fullPreview(const std::vector<TileRect>& tiles, int boxWidth,
                                       int boxHeight) {
    if (tiles.empty() || boxWidth < 1 || boxHeight < 1) {
        return std::nullopt;
    }
    FullPreview shown;
    shown.left = tiles.front().left;
    shown.top = tiles.front().top;
    shown.width = tiles.back().right - shown.left;
    shown.height = tiles.back().bottom - shown.top;
    if (shown.width < 1 || shown.height < 1) {
        return std::nullopt;
    }
    const double width = shown.width;
    const double height = shown.height;
    // A very long crop would round to no pixels at all on its short side.
    if (static_cast<double>(boxWidth) / boxHeight < width / height) {
        shown.shownWidth = boxWidth;
        shown.shownHeight = std::max(roundHalfEven(height / width * boxWidth), 1);
    } else {
        shown.shownHeight = boxHeight;
        shown.shownWidth = std::max(roundHalfEven(width / height * boxHeight), 1);
    }
    return shown;
}

PreviewWindowLayout fitToNewSize(int windowWidth, int windowHeight, int buttonWidth,
                                 int buttonHeight, int titleBarHeight) {
    PreviewWindowLayout layout;
    layout.margin = buttonHeight / 4;
    const int strip = buttonHeight + 2 * layout.margin;
    layout.pictureWidth = std::max(windowWidth, 1);
    layout.pictureHeight = std::max(windowHeight - titleBarHeight - strip, previewMinimumHeight);
    layout.closeLeft = std::max((windowWidth - buttonWidth) / 2, 0);
    layout.closeTop = layout.pictureHeight + layout.margin;
    return layout;
}

PreviewWindowLayout fitToNewSizeForPic(int windowWidth, int windowHeight, int buttonWidth,
                                       int buttonHeight, double ratio, int titleBarHeight) {
    PreviewWindowLayout layout =
        fitToNewSize(windowWidth, windowHeight, buttonWidth, buttonHeight, titleBarHeight);
    const int freeWidth = layout.pictureWidth;
    if (static_cast<double>(freeWidth) / layout.pictureHeight < ratio) {
        layout.pictureHeight = std::max(roundHalfEven(freeWidth / ratio), previewMinimumHeight);
    } else {
        layout.pictureWidth = std::max(roundHalfEven(layout.pictureHeight * ratio), 1);
    }
    layout.pictureLeft = std::max((freeWidth - layout.pictureWidth) / 2, 0);
    layout.closeTop = layout.pictureTop + layout.pictureHeight + layout.margin;
    return layout;
}

} // namespace veldara
