#include "cli/option_values.h"

#include "cli/options.h"
#include "platform/text/number_text.h"

#include <algorithm>
#include <optional>

namespace veldara {
namespace {

std::string said(const std::string& option, const std::string& text) {
    return option + " \"" + text + "\": ";
}

std::vector<std::string> splitAtCommas(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == ',') {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

std::optional<int> readWhole(const std::string& text, int least, int most) {
    const std::optional<double> value = readNumber(text);
    if (!value || *value < least || *value > most) {
        return std::nullopt;
    }
    const int whole = static_cast<int>(*value);
    return whole == *value ? std::optional(whole) : std::nullopt;
}

std::string rangeText(int least, int most) {
    return std::to_string(least) + " to " + std::to_string(most);
}

} // namespace

int wholeOption(const std::string& option, const std::string& text, int least, int most) {
    const std::optional<int> value = readWhole(text, least, most);
    if (!value) {
        throw WrongOption(said(option, text) + "give a whole number from " +
                          rangeText(least, most) + ".");
    }
    return *value;
}

std::vector<int> wholeListOption(const std::string& option, const std::string& text,
                                 std::size_t count, int least, int most) {
    std::vector<int> values;
    for (const std::string& part : splitAtCommas(text)) {
        if (const std::optional<int> value = readWhole(part, least, most)) {
            values.push_back(*value);
        }
    }
    if (values.size() != count || splitAtCommas(text).size() != count) {
        throw WrongOption(said(option, text) + "give " + std::to_string(count) +
                          " whole numbers from " + rangeText(least, most) +
                          ", separated by commas.");
    }
    return values;
}

std::vector<double> numberListOption(const std::string& option, const std::string& text,
                                     std::size_t count, const std::string& meaning) {
    std::vector<double> values;
    for (const std::string& part : splitAtCommas(text)) {
        if (const std::optional<double> value = readNumber(part)) {
            values.push_back(*value);
        }
    }
    if (values.size() != count || splitAtCommas(text).size() != count) {
        throw WrongOption(said(option, text) + "give " + std::to_string(count) +
                          " numbers separated by commas: " + meaning + ".");
    }
    return values;
}

double lengthOption(const std::string& option, const std::string& text) {
    const std::optional<double> value = readNumber(text);
    if (!value || *value < 0) {
        throw WrongOption(said(option, text) + "give a length in the units, 0 or more.");
    }
    return *value;
}

std::string unitsWord(Units units) {
    return units == Units::inches ? "in" : "mm";
}

std::size_t wordOption(const std::string& option, const std::string& text,
                       const std::vector<std::string>& words) {
    const auto found = std::find(words.begin(), words.end(), text);
    if (found == words.end()) {
        std::string choice;
        for (const std::string& word : words) {
            choice += (choice.empty() ? "" : word == words.back() ? " or " : ", ") + word;
        }
        throw WrongOption(said(option, text) + "give " + choice + ".");
    }
    return static_cast<std::size_t>(found - words.begin());
}

} // namespace veldara
