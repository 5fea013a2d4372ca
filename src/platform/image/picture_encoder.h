// One encoder a format: rows of pixels, from the top down, into the bytes of a file.
#pragma once

#include "platform/image/image.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace veldara {

// The caller sees to it that all rows come, as wide as the picture, and no more. Errors carry the
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

// What every encoder is told before the first row. dotsPerInch 0: no resolution in the file. The
// profile, when there is one, is an RGB profile.
struct PictureToEncode {
    int width = 0;
    int height = 0;
    int dotsPerInch = 0;
    ColourProfile profile;
};

// Throw Error with the bare reason when the format cannot hold the picture.
std::unique_ptr<PictureEncoder> openJpegEncoder(const PictureToEncode& picture);
std::unique_ptr<PictureEncoder> openTiffEncoder(const PictureToEncode& picture);
std::unique_ptr<PictureEncoder> openBmpEncoder(const PictureToEncode& picture);

} // namespace veldara
