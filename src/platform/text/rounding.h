// The one place where a double becomes a whole number.
#pragma once

#include <cstdint>

namespace veldara {

// Rounds half to even, as the processor's default mode does: 0.5 -> 0, 1.5 -> 2, 2.5 -> 2.
// Throws Error when the value is not finite or does not fit.
std::int32_t roundHalfEven(double value);

} // namespace veldara
