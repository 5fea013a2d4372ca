#include "agreement.h"
#include "calibration/edge_profile.h"
#include "platform/error.h"

namespace veldara::fuzz {
namespace {

void checkTexts(const EdgeProfile& profile) {
    for (const int count : profile.clipCounts) {
        require(count >= -9 && count <= 99, "a count has two characters");
        for (const Units units : {Units::inches, Units::millimetres}) {
            require(!edgeDescription(count, units).empty(), "every count has its words");
        }
    }
    const EdgeProfile again = ParseProfileLine(formatProfileLine(profile));
    require(again == profile, "a line that the program writes is the same profile");
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        veldara::fuzz::checkTexts(veldara::ParseProfileLine(veldara::fuzz::asText(data, size)));
    } catch (const veldara::Error&) {
        return 0; // a refusal
    }
    return 0;
}
