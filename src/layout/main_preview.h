// The preview in the main window: the photo in the size of its picture box, and the position of the
// crop in it.
#pragma once

#include "layout/preview_geometry.h"
#include "platform/image/image.h"

#include <memory>
#include <optional>

namespace veldara {

struct MainPreview {
    std::shared_ptr<const Image> image; // null without a photo
    double scale = 0.0;                 // preview pixels per photo pixel
    PreviewCrop crop;                   // as last drawn
    Pan pan;
    std::optional<DragStart> drag; // while the crop is dragged
};

} // namespace veldara
