// libtiff over our own bytes: its messages are kept instead of printed, and its handle is given
// back in every outcome.
#pragma once

#include "platform/image/byte_source.h"

#include <array>
#include <cstdint>
#include <memory>

#include <tiffio.h>

namespace veldara {

// The first error and the first warning since the last clear().
struct TiffMessages {
    std::array<char, 200> error{};
    std::array<char, 200> warning{};

    void clear() { error[0] = warning[0] = '\0'; }
    bool hasWarning() const { return warning[0] != '\0'; }
    bool hasError() const { return error[0] != '\0'; }
};

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffHandle = std::unique_ptr<TIFF, CloseTiff>;

// What the library reads from. It keeps pointers to this, so it stays where it is.
struct TiffInput {
    explicit TiffInput(ByteSource& bytes);
    TiffInput(const TiffInput&) = delete;
    TiffInput& operator=(const TiffInput&) = delete;

    ByteSource& source;
    std::uint64_t position = 0;
    TiffMessages messages;
    TiffHandle handle; // last, so that it goes first
};

} // namespace veldara
