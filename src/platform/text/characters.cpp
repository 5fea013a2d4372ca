#include "platform/text/characters.h"

#include "platform/error.h"

#include <algorithm>

namespace veldara {
namespace {

unsigned byteAt(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

// The lowest and the highest second byte that may follow the lead, so that no character has two
// spellings, none is half of a surrogate pair, and none lies beyond the last one (RFC 3629).
bool mayFollow(unsigned lead, unsigned second) {
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

// Length in bytes of the character that starts at `at`; 1 where no valid sequence starts.
std::size_t characterLength(std::string_view text, std::size_t at) {
    const unsigned lead = byteAt(text, at);
    std::size_t length = 1;
    if (lead >= 0xC2 && lead < 0xE0) {
        length = 2;
    } else if (lead >= 0xE0 && lead < 0xF0) {
        length = 3;
    } else if (lead >= 0xF0 && lead < 0xF5) {
        length = 4;
    }
    if (length == 1 || at + length > text.size() || !mayFollow(lead, byteAt(text, at + 1))) {
        return 1;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if ((byteAt(text, at + i) & 0xC0U) != 0x80U) {
            return 1;
        }
    }
    return length;
}

// Where the character with that number (from 0) begins; the text's length when there is none.
std::size_t characterStart(std::string_view text, std::size_t number) {
    std::size_t at = 0;
    while (number > 0 && at < text.size()) {
        at += characterLength(text, at);
        --number;
    }
    return at;
}

} // namespace

std::size_t characterCount(std::string_view utf8) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < utf8.size(); at += characterLength(utf8, at)) {
        ++count;
    }
    return count;
}

std::string sleft(std::string_view utf8, std::size_t n) {
    return std::string(utf8.substr(0, characterStart(utf8, n)));
}

std::string sRight(std::string_view utf8, std::size_t n) {
    const std::size_t count = characterCount(utf8);
    if (n > count) {
        throw Error("A text is shorter than the part that was asked of it.");
    }
    return std::string(utf8.substr(characterStart(utf8, count - n)));
}

char32_t takeCodePoint(std::string_view utf8, std::size_t& at) {
    constexpr char32_t replacement = 0xFFFD;
    const std::size_t length = characterLength(utf8, at);
    const unsigned lead = byteAt(utf8, at++);
    if (length == 1) {
        return lead < 0x80 ? static_cast<char32_t>(lead) : replacement;
    }
    char32_t character = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        character = character << 6U | (byteAt(utf8, at++) & 0x3FU);
    }
    return character;
}

std::u32string codePoints(std::string_view utf8) {
    std::u32string result;
    for (std::size_t at = 0; at < utf8.size();) {
        result += takeCodePoint(utf8, at);
    }
    return result;
}

std::string lowerCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return result;
}

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (end != std::string_view::npos && !line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        lines.emplace_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

} // namespace veldara
