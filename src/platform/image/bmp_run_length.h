// The run-length code of 4-bit and 8-bit bitmaps.
#pragma once

#include "platform/image/bmp_header.h"
#include "platform/image/byte_source.h"

#include <cstdint>
#include <vector>

namespace veldara {

// The whole picture as palette indices, one byte a pixel, top row first. Pixels that the code jumps
// over have index 0. Throws Error with the bare reason when it paints outside of the picture or
// ends before the last row.
std::vector<std::uint8_t> decodeRunLength(ByteSource& source, const BmpHeader& header);

} // namespace veldara
