#include "agreement.h"
#include "cli/options.h"

#include <algorithm>

namespace veldara::fuzz {
namespace {

// A line feed ends an argument.
std::vector<std::string> argumentsOf(const std::string& text) {
    std::vector<std::string> arguments(1);
    for (const char c : text) {
        if (c == '\n') {
            arguments.emplace_back();
        } else if (c != '\0') { // no argument can hold one
            arguments.back() += c;
        }
    }
    return arguments;
}

void checkOptions(const Options& options) {
    const auto within = [](int value, int least, int most) {
        return value >= least && value <= most;
    };
    require(within(options.wide, 1, 25) && within(options.high, 1, 25), "1 to 25 tiles a side");
    require(within(options.zoom, 0, 400), "a zoom of 0 to 400");
    require(within(options.horzPos, 0, 200) && within(options.vertPos, 0, 200),
            "a pan of 0 to 200");
    if (options.clip) {
        require(std::all_of(options.clip->begin(), options.clip->end(),
                            [&](int count) { return within(count, 0, largestClipCount); }),
                "0 to 16 quarter stripes");
        require(options.profile.empty(), "clips or a profile");
    }
    require(!options.base || options.base->find_first_of("/\\") == std::string::npos,
            "a base name is no path");
    require(options.listPapers || options.listProfiles || !options.photo.empty() ||
                !options.testTarget.empty(),
            "there is something to do");
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldara;
    const std::string text = fuzz::asText(data, size);
    try {
        const CommandLine line = readCommandLine(fuzz::argumentsOf(text));
        if (line.text.empty()) {
            fuzz::checkOptions(line.options);
        }
    } catch (const WrongOption& wrong) {
        fuzz::require(!std::string(wrong.what()).empty(), "a refusal says why");
    }
    return 0;
}
