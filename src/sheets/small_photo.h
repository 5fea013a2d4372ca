// A small picture of a part of a photo, for the guide page, without ever holding the photo whole.
#pragma once

#include "platform/image/image.h"
#include "sheets/jpeg_geometry.h"

#include <filesystem>
#include <functional>

namespace veldara {

// The size of the small picture of an area: the longer side is at most `longest`.
struct SmallSize {
    int width = 0;
    int height = 0;
};
SmallSize smallSize(const PixelRectangle& area, int longest);

// The area of the photo (upright, before the user's turn), each pixel the mean of those that it
// stands for. `stopped` is asked now and then and throws when the run is to end. Throws Error.
Image smallPhoto(const std::filesystem::path& photo, const PixelRectangle& area, int longest,
                 const std::function<void()>& stopped);

} // namespace veldara
