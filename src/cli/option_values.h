// The values of options out of their texts. A decimal separator is always a point here: a script
// means the same on every desktop. All throw WrongOption, naming the option and what it may be.
#pragma once

#include <string>
#include <vector>

namespace veldara {

// A whole number from least to most.
int wholeOption(const std::string& option, const std::string& text, int least, int most);

// That many whole numbers, between commas.
std::vector<int> wholeListOption(const std::string& option, const std::string& text,
                                 std::size_t count, int least, int most);

// That many numbers, between commas; `meaning` says what they are.
std::vector<double> numberListOption(const std::string& option, const std::string& text,
                                     std::size_t count, const std::string& meaning);

// Which of the words it is.
std::size_t wordOption(const std::string& option, const std::string& text,
                       const std::vector<std::string>& words);

} // namespace veldara
