// What every picture format's fuzz target does with its bytes.
#pragma once

#include "platform/image/codec.h"

#include <cstdint>
#include <span>

namespace veldara::fuzz {

// Reads the header, loads the picture, and reads it again in bands with jumps. Any of it may be
// refused with an Error; what is not refused must agree. Aborts when it does not.
void readEveryWay(std::span<const std::uint8_t> bytes, FileType expected);

} // namespace veldara::fuzz
