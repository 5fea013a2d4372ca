// Memory for large pictures, in pixels or encoded, taken from the system in large pages where there
// are any: to be given a photo's memory in small ones costs about as much as decoding it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veldara {

struct FreePixelMemory {
    void operator()(std::uint8_t* bytes) const noexcept;
};
using PixelMemory = std::unique_ptr<std::uint8_t[], FreePixelMemory>;

// Undefined bytes; the system provides them when they are first touched. Throws std::bad_alloc,
// also where the machine has too little memory for so many (see memory_limits.h).
PixelMemory takePixelMemory(std::size_t bytes);

// Reserves room for that many bytes in the same manner; a vector that stays smaller touches, and so
// takes, only what it fills. Throws std::bad_alloc.
void reserveLargePages(std::vector<std::uint8_t>& bytes, std::size_t count);

} // namespace veldara
