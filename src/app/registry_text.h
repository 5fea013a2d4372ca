// A registry value as text, whatever its type.
#pragma once

#include "platform/registry.h"

#include <string>

namespace veldara {

// A string as it is less one trailing NUL, a number as "&h" and the two hexadecimal digits of each
// of its bytes from the highest to the lowest, any other type as its raw text.
std::string registryValueText(const RegistryValue& value);

} // namespace veldara
