#include "calibration/edge_profile.h"

#include "platform/error.h"
#include "platform/text/characters.h"
#include "platform/text/rounding.h"

#include <algorithm>
#include <cmath>

namespace veldara {
namespace {

constexpr int quarterStripesPerInch = 64;

int parseCount(std::string_view text) {
    const std::optional<double> value = readNumber(text);
    if (!value) {
        throw Error(
            "A line of the edge calibration profiles has a clip count that is not a number.");
    }
    return roundHalfEven(std::floor(*value));
}

} // namespace

std::vector<EdgeProfile> builtInProfiles() {
    return {{"default", {0, 0, 0, 0}},
            {"Kodak photo lab default", {3, 4, 3, 2}},
            {"Fuji photo lab default", {2, 6, 3, 6}}};
}

double edgeTrimInches(int clipCount) {
    return clipCount / static_cast<double>(quarterStripesPerInch);
}

EdgeTrims edgeTrims(const ClipCounts& clipCounts) {
    EdgeTrims trims{};
    std::transform(clipCounts.begin(), clipCounts.end(), trims.begin(), edgeTrimInches);
    return trims;
}

const std::vector<std::string>& stripeChoices() {
    static const std::vector<std::string> choices = [] {
        std::vector<std::string> all{"see all 4 lines"};
        for (int clipped = 1; clipped < largestClipCount; ++clipped) {
            // Always with a point: these are fixed texts, not localised numbers.
            const double seen = (largestClipCount - clipped) / 4.0;
            all.push_back("see " + formatNumber(seen, "0.00") + " lines");
        }
        all.emplace_back("see no lines!");
        return all;
    }();
    return choices;
}

std::string trimDescription(int clipCount, Units units, NumberStyle style) {
    if (units == Units::millimetres) {
        const double trim = clipCount * millimetresPerInch / quarterStripesPerInch;
        return " " + formatNumber(trim, "##0.0", style) + " mm ";
    }
    int numerator = clipCount;
    int denominator = quarterStripesPerInch;
    while (numerator % 2 == 0 && denominator % 2 == 0) {
        numerator /= 2;
        denominator /= 2;
    }
    return " " + std::to_string(numerator) + "/" + std::to_string(denominator) + " inches ";
}

std::string edgeDescription(int clipCount, Units units, NumberStyle style) {
    if (clipCount == 0) {
        return "None of the image is clipped";
    }
    return "Printer cuts off " + trimDescription(clipCount, units, style) + "of image";
}

std::string stripeWidthText(Units units) {
    return units == Units::inches ? "1/16 inch" : "1.59 mm";
}

bool isInitialProfile(const std::vector<EdgeProfile>& profiles, std::size_t selected) {
    return profiles.size() <= 3 && selected < profiles.size() &&
           profiles[selected].clipCounts == ClipCounts{};
}

std::string formatProfileLine(const EdgeProfile& profile) {
    std::string line = profile.name + "\t";
    for (const int count : profile.clipCounts) {
        const std::string digits = std::to_string(count);
        line += (digits.size() == 1 ? "0" : "") + digits + ",";
    }
    return line;
}

EdgeProfile ParseProfileLine(std::string_view line) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) {
        throw Error("A line of the edge calibration profiles has no tab after the name.");
    }
    EdgeProfile profile;
    profile.name = line.substr(0, tab);
    std::string_view counts = line.substr(tab + 1);
    for (int& count : profile.clipCounts) {
        count = parseCount(sleft(counts, 2));
        counts.remove_prefix(sleft(counts, 3).size()); // whatever the third character is
    }
    return profile;
}

} // namespace veldara
