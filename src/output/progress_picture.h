// The progress bar as a picture.
#pragma once

#include "platform/image/image.h"

namespace veldara {

// A picture of that size in pixels, white, with a filled rectangle in pure blue from its top-left
// corner over `fraction` (0 to 1; nothing below 0) of its width. Throws Error when a side is not
// positive.
Image progressPicture(int width, int height, double fraction);

} // namespace veldara
