#include "layout/preview_resize.h"

#include "platform/text/rounding.h"

namespace veldara {

PreviewCrop rescaledCrop(const PreviewCrop& crop, double oldScale, double newScale) {
    if (oldScale <= 0.0) {
        return crop;
    }
    const double factor = newScale / oldScale;
    return {roundHalfEven(crop.left * factor), roundHalfEven(crop.top * factor),
            roundHalfEven(crop.right * factor), roundHalfEven(crop.bottom * factor)};
}

} // namespace veldara
