// Pictures of another size.
#pragma once

#include "platform/image/image.h"

namespace veldara {

// The picture resampled to another size with an area/cubic filter, spread over the cores.
Image resampled(const PixelView& pixels, int width, int height);

} // namespace veldara
