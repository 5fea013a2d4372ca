#include "platform/text/natural_order.h"

#include "platform/text/characters.h"

#include <cstddef>

namespace veldara {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Small letter of a capital one, in the blocks where the two lie a fixed distance apart or side by
// side.
char32_t withoutCase(char32_t character) {
    const auto between = [character](char32_t first, char32_t last) {
        return character >= first && character <= last;
    };
    if (between('A', 'Z') || (between(0xC0, 0xDE) && character != 0xD7)) {
        return character + 0x20U;
    }
    if (between(0x100, 0x137) || between(0x14A, 0x177)) {
        return character | 1U; // even capital, odd small
    }
    if (between(0x139, 0x148) || between(0x179, 0x17E)) {
        return character + (character & 1U); // odd capital, even small
    }
    if (between(0x391, 0x3A9) || between(0x410, 0x42F)) {
        return character + 0x20U;
    }
    if (between(0x400, 0x40F)) {
        return character + 0x50U;
    }
    return character;
}

// The digits from place on without leading zeros; place moves behind them.
std::string_view takeNumber(std::string_view text, std::size_t& place) {
    while (place < text.size() && text[place] == '0') {
        ++place;
    }
    const std::size_t first = place;
    while (place < text.size() && isDigit(text[place])) {
        ++place;
    }
    return text.substr(first, place - first);
}

// Negative, zero, positive: a before, like, behind b, without regard to case and leading zeros.
int compareLoosely(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const std::string_view left = takeNumber(a, i);
            const std::string_view right = takeNumber(b, j);
            if (left.size() != right.size()) {
                return left.size() < right.size() ? -1 : 1;
            }
            if (const int order = left.compare(right); order != 0) {
                return order;
            }
            continue;
        }
        const char32_t left = withoutCase(takeCodePoint(a, i));
        const char32_t right = withoutCase(takeCodePoint(b, j));
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    return static_cast<int>(i < a.size()) - static_cast<int>(j < b.size());
}

} // namespace

bool naturalLess(std::string_view a, std::string_view b) {
    const int order = compareLoosely(a, b);
    return order != 0 ? order < 0 : a < b;
}

} // namespace veldara
