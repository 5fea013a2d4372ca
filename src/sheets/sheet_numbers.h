// Which sheets are wanted, as a person writes it: "1-3,7".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldara {

// The numbers ascending, each once; blanks are allowed around numbers. Empty text means all, and
// gives none. Throws Error when it is no such list, or a number is not among 1 .. count.
std::vector<int> readSheetNumbers(std::string_view text, int count);

} // namespace veldara
