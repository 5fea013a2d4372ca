// Text between the program (UTF-8) and the calls of the system that take UTF-16, and the system's
// own sentence for one of its codes.
#pragma once

#include <string>
#include <string_view>

namespace veldara {

// Bytes that are no valid UTF-8 become the replacement character.
std::wstring wideText(std::string_view utf8);
std::string narrowText(std::wstring_view wide);

// What the system says about a code of GetLastError or an HRESULT, without a line end or a full
// stop; the number in hexadecimal when it says nothing.
std::string systemMessage(unsigned long code);

} // namespace veldara
