// The order in which a person expects names in a list: upper and lower case alike, and numbers by
// their value, so that "Photo 9" comes before "photo 10".
#pragma once

#include <string_view>

namespace veldara {

// True when a comes before b. Total: two names that differ in any byte are never equal, so a
// sorted list is the same whatever order it came in. Takes any bytes; those that are no UTF-8 count
// as they are. Letters of the Latin, Greek and Cyrillic alphabets are compared without their case.
bool naturalLess(std::string_view a, std::string_view b);

} // namespace veldara
