// Numbers into text and back. Nobody else in the program formats or reads a number for a person.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veldara {

// The user's decimal separator. Passed on explicitly so that both "." and "," are tested anywhere.
struct NumberStyle {
    char decimalSeparator = '.';

    // What the desktop's settings say; read once by the programs' main functions.
    static NumberStyle ofUser();
};

// Formats by a pattern such as "##0.00" or "####0.0": at least as many integer digits as the
// pattern has zeros before the point, exactly as many decimals as it has after it, rounded half
// away from zero on the decimal value (the shortest decimal text of the double). No thousands
// separator.
std::string formatNumber(double value, std::string_view pattern, NumberStyle style = {});

// The plain conversion: shortest text that reads back as the same double, whole numbers without a
// separator, no trailing zeros, no exponent for ordinary lengths (up to 15 significant digits).
std::string plainNumber(double value, NumberStyle style = {});

// Reads a whole text as a number in the user's style, blanks around it allowed. Nothing when the
// text is empty, has anything else in it, or is not finite.
std::optional<double> readNumber(std::string_view text, NumberStyle style = {});

// Reads a whole text as a whole number that fits in 32 bits, blanks around it allowed; a decimal
// part is rounded half to even, as the platform's integer conversion does.
std::optional<int> readInteger(std::string_view text, NumberStyle style = {});

// The text without blanks at both ends.
std::string trimmed(std::string_view text);

} // namespace veldara
