// Numbers as they are written where the decimal separator is a comma.
#pragma once

#include "platform/text/number_text.h"

namespace veldara::test {

inline constexpr NumberStyle comma{','};

} // namespace veldara::test
