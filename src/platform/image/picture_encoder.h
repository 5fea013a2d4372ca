// One encoder a format: a view of pixels into the bytes of a file.
#pragma once

#include "platform/image/image.h"

#include <cstdint>
#include <vector>

namespace veldara {

// dotsPerInch 0: no resolution in the file. The profile, when there is one, is an RGB profile.
// Throw Error with the bare reason when the format cannot hold the picture.
std::vector<std::uint8_t> encodeJpeg(const PixelView& pixels, int dotsPerInch,
                                     const ColourProfile& profile);
std::vector<std::uint8_t> encodeTiff(const PixelView& pixels, int dotsPerInch,
                                     const ColourProfile& profile);
std::vector<std::uint8_t> encodeBmp(const PixelView& pixels, int dotsPerInch,
                                    const ColourProfile& profile);

} // namespace veldara
