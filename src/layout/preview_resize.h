// What becomes of the crop's place in the preview when the preview gets another size.
#pragma once

#include "layout/preview_geometry.h"

namespace veldara {

// The same rectangle in pixels of a preview with another scale (preview pixels per photo pixel).
// Unchanged when the old scale is not above 0.
PreviewCrop rescaledCrop(const PreviewCrop& crop, double oldScale, double newScale);

} // namespace veldara
