#include "platform/image/whole_picture_decoder.h"

#include <algorithm>
#include <cstring>

namespace veldara {

void rgbOnWhite(const std::uint8_t* pixels, unsigned channels, bool premultiplied,
                std::size_t count, std::uint8_t* rgb) {
    if (channels == 3) {
        std::memcpy(rgb, pixels, 3 * count);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned opacity = pixels[4 * i + 3];
        for (std::size_t c = 0; c < 3; ++c) {
            const unsigned colour = pixels[4 * i + c];
            const unsigned lit = premultiplied
                                     ? std::min(255U, colour + 255 - opacity)
                                     : (colour * opacity + 255 * (255 - opacity) + 127) / 255;
            rgb[3 * i + c] = static_cast<std::uint8_t>(lit);
        }
    }
}

void WholePictureDecoder::wantColumns(int left, int width) {
    left_ = left;
    width_ = width;
}

void WholePictureDecoder::readRows(const MutablePixelView& rows) {
    if (pixels_.first == nullptr) {
        pixels_ = decode();
    }
    const auto width = static_cast<std::size_t>(width_ > 0 ? width_ : facts_.width);
    for (int y = 0; y < rows.height(); ++y) {
        const std::uint8_t* row =
            pixels_.first + pixels_.stride * static_cast<std::size_t>(nextRow_ + y);
        rgbOnWhite(row + pixels_.channels * static_cast<std::size_t>(left_), pixels_.channels,
                   pixels_.premultiplied, width, rows.row(y));
    }
    nextRow_ += rows.height();
}

} // namespace veldara
