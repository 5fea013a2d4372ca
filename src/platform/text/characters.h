// Text taken apart by characters (not bytes) and by lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veldara {

// How many characters (code points) the UTF-8 text has. A byte that is no valid UTF-8 counts as
// one.
std::size_t characterCount(std::string_view utf8);

// The first n characters of the text, or all of it when it has fewer.
std::string sleft(std::string_view utf8, std::size_t n);

// The last n characters of the text. Throws Error when it has fewer.
std::string sRight(std::string_view utf8, std::size_t n);

// The code point that starts at `at`, which moves behind it; the replacement character where no
// valid sequence starts, for one byte.
char32_t takeCodePoint(std::string_view utf8, std::size_t& at);

// The code points of the text; each byte that is no valid UTF-8 becomes the replacement character.
std::u32string codePoints(std::string_view utf8);

// ASCII capitals turned into small letters; everything else as it is.
std::string lowerCase(std::string_view text);

// The lines of a text file, ended by a line feed or by carriage return and line feed. A line end at
// the very end starts no further line.
std::vector<std::string> splitLines(std::string_view text);

} // namespace veldara
