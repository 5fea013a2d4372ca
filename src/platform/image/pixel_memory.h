// Memory for the pixels of large pictures, taken from the system in large pages where there are
// any: to be given a photo's memory in small ones costs about as much as decoding it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace veldara {

struct FreePixelMemory {
    void operator()(std::uint8_t* bytes) const noexcept;
};
using PixelMemory = std::unique_ptr<std::uint8_t[], FreePixelMemory>;

// Undefined bytes; the system provides them when they are first touched. Throws std::bad_alloc.
PixelMemory takePixelMemory(std::size_t bytes);

} // namespace veldara
