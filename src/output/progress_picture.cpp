#include "output/progress_picture.h"

#include "platform/text/rounding.h"

#include <algorithm>
#include <cstddef>

namespace veldara {

Image progressPicture(int width, int height, double fraction) {
    Image bar = Image::filled(width, height, 255, 255, 255);
    const int filled = roundHalfEven(width * std::clamp(fraction, 0.0, 1.0));
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = bar.row(y);
        for (std::size_t x = 0; x < static_cast<std::size_t>(filled); ++x) {
            row[3 * x] = 0;
            row[3 * x + 1] = 0;
        }
    }
    return bar;
}

} // namespace veldara
