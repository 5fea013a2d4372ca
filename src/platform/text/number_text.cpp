#include "platform/text/number_text.h"

#include "platform/error.h"
#include "platform/text/rounding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace veldara {
namespace {

// The shortest decimal text of a double, taken apart: 0.DIGITS times ten to the power `point`.
struct Decimal {
    std::string digits;
    int point = 0;
    bool negative = false;
};

Decimal shortestDecimal(double value) {
    if (!std::isfinite(value)) {
        throw Error("A result is not a number that can be shown.");
    }
    std::array<char, 40> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                       std::chars_format::scientific);
    const std::string_view all(text.data(), static_cast<std::size_t>(written.ptr - text.data()));
    const std::size_t mark = all.find('e');

    Decimal decimal;
    decimal.negative = std::signbit(value);
    for (const char c : all.substr(0, mark)) {
        if (c != '.') {
            decimal.digits += c;
        }
    }
    const char* exponent = all.data() + mark + 1;
    if (*exponent == '+') {
        ++exponent;
    }
    std::from_chars(exponent, written.ptr, decimal.point);
    decimal.point += 1;
    return decimal;
}

// Cuts the digits to `decimals` places behind the point, a half going away from zero.
void roundToPlaces(Decimal& decimal, int decimals) {
    const int keep = decimal.point + decimals;
    if (keep >= static_cast<int>(decimal.digits.size())) {
        return;
    }
    if (keep < 0) {
        decimal.digits = "0";
        decimal.point = 1;
        return;
    }
    const auto kept = static_cast<std::size_t>(keep);
    const bool up = decimal.digits[kept] >= '5';
    decimal.digits.resize(kept);
    if (!up) {
        return;
    }
    for (std::size_t i = kept; i-- > 0;) {
        if (decimal.digits[i] != '9') {
            ++decimal.digits[i];
            return;
        }
        decimal.digits[i] = '0';
    }
    decimal.digits.insert(0, "1");
    decimal.point += 1;
}

bool isZero(const std::string& digits) {
    return std::all_of(digits.begin(), digits.end(), [](char c) { return c == '0'; });
}

int countZeros(std::string_view text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '0'));
}

// The digit that stands `place` places before (from 1) or behind (0, -1 ...) the point.
char digitAt(const Decimal& decimal, int place) {
    const int index = decimal.point - place;
    return index >= 0 && index < static_cast<int>(decimal.digits.size())
               ? decimal.digits[static_cast<std::size_t>(index)]
               : '0';
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

std::string formatNumber(double value, std::string_view pattern, NumberStyle style) {
    const std::size_t dot = pattern.find('.');
    const int wholeDigits = countZeros(pattern.substr(0, dot));
    const int decimals =
        dot == std::string_view::npos ? 0 : static_cast<int>(pattern.size() - dot - 1);

    Decimal decimal = shortestDecimal(value);
    roundToPlaces(decimal, decimals);

    std::string text;
    if (decimal.negative && !isZero(decimal.digits)) {
        text += '-';
    }
    const int significant = isZero(decimal.digits) ? 0 : decimal.point;
    for (int place = std::max(significant, wholeDigits); place >= 1; --place) {
        text += digitAt(decimal, place);
    }
    if (decimals > 0) {
        text += style.decimalSeparator;
        for (int place = 0; place > -decimals; --place) {
            text += digitAt(decimal, place);
        }
    }
    return text;
}

std::string plainNumber(double value, NumberStyle style) {
    if (!std::isfinite(value)) {
        throw Error("A result is not a number that can be shown.");
    }
    if (value == 0) {
        return "0";
    }
    // Beyond these limits the zeros alone would fill a line.
    const double size = std::fabs(value);
    const auto form =
        size >= 1e15 || size < 1e-15 ? std::chars_format::scientific : std::chars_format::fixed;
    std::array<char, 64> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, form);
    std::string text(buffer.data(), written.ptr);
    std::replace(text.begin(), text.end(), '.', style.decimalSeparator);
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

std::optional<double> readNumber(std::string_view text, NumberStyle style) {
    std::string plain = trimmed(text);
    if (!plain.empty() && plain.front() == '+') {
        plain.erase(0, 1);
        if (!plain.empty() && plain.front() == '-') {
            return std::nullopt;
        }
    }
    for (char& c : plain) {
        if (c == style.decimalSeparator) {
            c = '.';
        } else if (!((c >= '0' && c <= '9') || c == '-' || c == '+' || c == 'e' || c == 'E')) {
            return std::nullopt;
        }
    }
    double value = 0;
    const char* end = plain.data() + plain.size();
    const auto read = std::from_chars(plain.data(), end, value);
    if (plain.empty() || read.ec != std::errc() || read.ptr != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<int> readInteger(std::string_view text, NumberStyle style) {
    const std::optional<double> value = readNumber(text, style);
    if (!value) {
        return std::nullopt;
    }
    try {
        return roundHalfEven(*value);
    } catch (const Error&) {
        return std::nullopt;
    }
}

std::string trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return std::string(text);
}

} // namespace veldara
