#include "sheets/sheet_numbers.h"

#include "platform/error.h"
#include "platform/text/number_text.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace veldara {
namespace {

int readNumber(std::string_view part, std::string_view whole, int count) {
    const std::string text = trimmed(part);
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || rest != end || error != std::errc()) {
        throw Error("\"" + std::string(whole) +
                    "\" does not say which sheets: write numbers and ranges such as 1-3,7.");
    }
    if (number < 1 || number > count) {
        throw Error("There is no sheet " + text + ": the poster has " +
                    (count == 1 ? "one sheet." : "the sheets 1 to " + std::to_string(count) + "."));
    }
    return number;
}

} // namespace

std::vector<int> readSheetNumbers(std::string_view text, int count) {
    std::set<int> numbers;
    std::string_view rest = text;
    if (trimmed(text).empty()) {
        return {};
    }
    for (bool more = true; more;) {
        const std::size_t comma = rest.find(',');
        more = comma != std::string_view::npos;
        const std::string_view part = rest.substr(0, comma);
        rest.remove_prefix(more ? comma + 1 : rest.size());
        const std::size_t dash = part.find('-', 1);
        int first = readNumber(part.substr(0, dash), text, count);
        int last =
            dash == std::string_view::npos ? first : readNumber(part.substr(dash + 1), text, count);
        if (last < first) {
            std::swap(first, last);
        }
        for (int number = first; number <= last; ++number) {
            numbers.insert(number);
        }
    }
    return {numbers.begin(), numbers.end()};
}

} // namespace veldara
