// Lengths as the whole program speaks of them: the two units, and the four edges of a sheet in
// their fixed order.
#pragma once

#include <array>

namespace veldara {

enum class Units { inches = 0, millimetres = 1 };

// The units that a stored units flag stands for: 0 is inches, anything else millimetres.
constexpr Units unitsOf(int flag) {
    return flag == 0 ? Units::inches : Units::millimetres;
}

constexpr double millimetresPerInch = 25.4; // exactly, by the international yard of 1959
constexpr double centimetresPerInch = 2.54;

// Positions in every table of edges: margins, clip counts, trims.
enum Edge { edgeTop = 0, edgeRight = 1, edgeBottom = 2, edgeLeft = 3 };

// What the printer cuts off each edge, in inches: top, right, bottom, left.
using EdgeTrims = std::array<double, 4>;

} // namespace veldara
