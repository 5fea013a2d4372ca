// Long paths broken into lines for a label.
#pragma once

#include "platform/text/path_text.h"

#include <string>
#include <string_view>

namespace veldara {

// Breaks (with carriage return and line feed) just behind a separator once the line has more than
// insertWinStart characters, and at insertWinEnd characters in any case. A space starts a new
// count, because the label wraps at spaces by itself.
std::string SplitPathLabel(std::string_view path, int insertWinStart, int insertWinEnd,
                           char separator = platformSeparator);

// The line lengths of the save dialog's label and of the result window.
constexpr int saveLabelStart = 78;
constexpr int resultLabelStart = 35;
constexpr int pathLabelEnd = 55;

} // namespace veldara
