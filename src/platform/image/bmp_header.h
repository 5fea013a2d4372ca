// The headers of a Windows or OS/2 bitmap, read and found consistent.
#pragma once

#include "platform/image/byte_source.h"
#include "platform/image/image.h"
#include "platform/image/indexed_pixels.h"

#include <array>
#include <cstdint>

namespace veldara {

struct BmpHeader {
    int width = 0;
    int height = 0;
    bool topDown = false;
    unsigned bitsPerPixel = 0;
    std::uint32_t compression = 0;
    int dotsPerInch = 0;
    std::uint64_t pixelsAt = 0;           // position of the first stored row in the file
    std::uint64_t storedRowSize = 0;      // bytes, with the padding; of the uncompressed kinds
    std::array<std::uint32_t, 4> masks{}; // red, green, blue, alpha; of 16 and 32 bits
    Palette palette{};                    // black where the file has no colour
    std::uint64_t profileAt = 0;
    std::uint32_t profileSize = 0; // 0: no profile in the file

    bool runLengthCoded() const { return compression == 1 || compression == 2; }
};

// Throws Error with the bare reason when it is damaged, of an unsupported kind, or promises more
// pixels than the file can hold.
BmpHeader readBmpHeader(ByteSource& source);

} // namespace veldara
