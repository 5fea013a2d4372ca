// One encoder a format: rows of pixels, from the top down, into the bytes of a file.
#pragma once

#include "platform/image/image.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace veldara {

// The caller makes sure that all rows come, as wide as the picture, and no more. Errors carry the
// bare reason.
class PictureEncoder {
  public:
    PictureEncoder() = default;
    PictureEncoder(const PictureEncoder&) = delete;
    PictureEncoder& operator=(const PictureEncoder&) = delete;
    virtual ~PictureEncoder() = default;

    virtual void writeRows(const PixelView& rows) = 0;
    virtual std::vector<std::uint8_t> finish() = 0;
};

// What every encoder knows before the first row. dotsPerInch 0: no resolution in the file. The
// profile, when there is one, is an RGB profile.
struct PictureToEncode {
    int width = 0;
    int height = 0;
    int dotsPerInch = 0;
    ColourProfile profile;
};

} // namespace veldara
