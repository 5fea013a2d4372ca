// What the fuzz targets of texts share: the check that ends the run, and bytes taken as text.
#pragma once

#include "platform/text/number_text.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace veldara::fuzz {

// Ends the run, so that the input that led here is kept.
inline void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

inline std::string asText(const std::uint8_t* data, std::size_t size) {
    return {data, data + size};
}

// The first byte chooses how the user writes numbers; the rest is the text.
struct StyledText {
    NumberStyle style;
    std::string text;
};

inline StyledText styledText(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return {};
    }
    return {NumberStyle{data[0] % 2 == 0 ? '.' : ','}, asText(data + 1, size - 1)};
}

} // namespace veldara::fuzz
