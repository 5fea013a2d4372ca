#include "agreement.h"
#include "platform/error.h"
#include "platform/text/rounding.h"

#include <cmath>
#include <cstring>

namespace veldara::fuzz {
namespace {

void checkWriting(double value, NumberStyle style) {
    const std::string plain = plainNumber(value, style);
    const std::optional<double> again = readNumber(plain, style);
    require(again && *again == value, "a number written plainly reads as the same number");
    for (const char* pattern : {"##0.00", "####0.0", "0", "##0", "00"}) {
        const std::string text = formatNumber(value, pattern, style);
        const std::optional<double> read = readNumber(text, style);
        require(read.has_value(), "a number written by a pattern can be read");
        require(std::fabs(*read - value) <= 0.5 + std::fabs(value) * 1e-15,
                "a number written by a pattern is near the number");
        require(formatNumber(*read, pattern, style) == text, "writing it again changes nothing");
    }
}

void checkAnyDouble(const std::uint8_t* data, NumberStyle style) {
    double value = 0;
    std::memcpy(&value, data, sizeof value);
    try {
        checkWriting(value, style);
        require(std::isfinite(value), "what is no number has no text");
    } catch (const Error&) {
        require(!std::isfinite(value), "every number has a text");
    }
}

void checkReading(const StyledText& input) {
    const std::string inner = trimmed(input.text);
    require(trimmed(inner) == inner, "trimming twice changes nothing");
    const std::optional<double> value = readNumber(input.text, input.style);
    const std::optional<int> whole = readInteger(input.text, input.style);
    require(value == readNumber(inner, input.style), "blanks around a number mean nothing");
    if (value) {
        require(std::isfinite(*value), "what was read is finite");
        checkWriting(*value, input.style);
    }
    if (whole) {
        require(value && std::fabs(*whole - *value) <= 0.5, "a whole number is the nearest one");
    } else if (value) {
        require(*value >= 2147483647.5 || *value < -2147483648.5,
                "only what does not fit is no whole number");
    }
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = veldara::fuzz::styledText(data, size);
    veldara::fuzz::checkReading(input);
    if (size > sizeof(double)) {
        veldara::fuzz::checkAnyDouble(data + 1, input.style);
    }
    return 0;
}
