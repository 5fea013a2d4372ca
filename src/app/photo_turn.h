// The whole photo turned by quarter turns.
#pragma once

#include "platform/image/image.h"

namespace veldara {

// The photo turned clockwise by 0, 90, 180 or 270 degrees, exactly, with its resolution and its
// colour profile. Throws Error or std::bad_alloc when the memory cannot be had.
Image turnedBy(const Image& photo, int degrees);

} // namespace veldara
