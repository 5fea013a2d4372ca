// Edge calibration profiles: how much of each edge a printer clips, counted in quarters of the
// stripes of the printed test target, and the texts that describe it.
#pragma once

#include "platform/measures.h"
#include "platform/text/number_text.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace veldara {

// Quarter stripes cut off, 0 to 16 (more only when a file was edited by hand): top, right, bottom,
// left.
using ClipCounts = std::array<int, 4>;

constexpr int largestClipCount = 16;

struct EdgeProfile {
    std::string name;
    ClipCounts clipCounts{};
    bool operator==(const EdgeProfile&) const = default;
};

// The profiles before any calibration.
std::vector<EdgeProfile> builtInProfiles();

// A stripe is 1/16 inch, so a quarter stripe is 1/64 inch.
double edgeTrimInches(int clipCount);
EdgeTrims edgeTrims(const ClipCounts& clipCounts);

// The seventeen choices of an edge list, "see all 4 lines" to "see no lines!"; the position is the
// clip count.
const std::vector<std::string>& stripeChoices();

// The trim in words, with its blanks: " 3/64 inches " or " 1.2 mm ".
std::string trimDescription(int clipCount, Units units, NumberStyle style = {});

// The text beside an edge list: "None of the image is clipped", or what the printer cuts off.
std::string edgeDescription(int clipCount, Units units, NumberStyle style = {});

// The width of one stripe as the dialog's first step names it: "1/16 inch" or "1.59 mm".
std::string stripeWidthText(Units units);

// The user has never calibrated: at most three profiles, and the selected one clips nothing.
bool isInitialProfile(const std::vector<EdgeProfile>& profiles, std::size_t selected);

// One line of the profile file, without its line end: the name, a tab, and four counts of two
// digits followed by a comma each.
std::string formatProfileLine(const EdgeProfile& profile);

// Parses such a line: after the first tab, two characters for each count and one between. Throws
// Error when there is no tab or a count is not a number.
EdgeProfile ParseProfileLine(std::string_view line);

} // namespace veldara
