// Parses the values of options. The decimal separator is always a point, so that a script does the
// same on every desktop. All throw WrongOption, naming the option and what it may be.
#pragma once

#include "platform/measures.h"

#include <string>
#include <vector>

namespace veldara {

// A whole number in the range.
int wholeOption(const std::string& option, const std::string& text, int least, int most);

// `count` whole numbers, separated by commas.
std::vector<int> wholeListOption(const std::string& option, const std::string& text,
                                 std::size_t count, int least, int most);

// `count` numbers, separated by commas; `meaning` describes them.
std::vector<double> numberListOption(const std::string& option, const std::string& text,
                                     std::size_t count, const std::string& meaning);

// A number, 0 or more.
double lengthOption(const std::string& option, const std::string& text);

// The value of --units for these units: "in" or "mm".
std::string unitsWord(Units units);

// The index of the word.
std::size_t wordOption(const std::string& option, const std::string& text,
                       const std::vector<std::string>& words);

} // namespace veldara
