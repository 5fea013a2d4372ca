// The one exception type that crosses floors: a sentence that a user can read.
#pragma once

#include <stdexcept>
#include <string>

namespace veldara {

// Thrown by rules, codecs and adaptors when an operation cannot be done. what() is one sentence in
// UTF-8 that says what failed and why, ready to be shown in a message box or on standard error.
class Error : public std::runtime_error {
  public:
    explicit Error(const std::string& sentence) : std::runtime_error(sentence) {}
};

} // namespace veldara
