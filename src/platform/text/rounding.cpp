#include "platform/text/rounding.h"

#include "platform/error.h"

#include <cmath>
#include <limits>

namespace veldara {

std::int32_t roundHalfEven(double value) {
    const double rounded = std::nearbyint(value);
    // Written so that a value that is not a number fails the test too.
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        throw Error("A number is too large for the program to work with.");
    }
    return static_cast<std::int32_t>(rounded);
}

} // namespace veldara
