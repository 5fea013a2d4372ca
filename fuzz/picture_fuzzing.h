// What every picture format's fuzz target does with its bytes.
#pragma once

#include "platform/image/codec.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace veldara::fuzz {

// Reads a file of that kind (an InputFormat's name): its header, then loads the picture, and reads
// it again in bands with jumps. Any of it may be refused with an Error; what is not refused must
// agree, unless the kind's codec makes up pixels (HEIC). Aborts when it does not.
void readEveryWay(std::span<const std::uint8_t> bytes, std::string_view kind);

} // namespace veldara::fuzz
