// The first page of a poster's document: what the poster will be, how to print it, a ruler that
// shows whether it was printed at its size, and how to cut and glue the sheets.
#pragma once

#include "sheets/sheet_layout.h"

#include <string>
#include <vector>

namespace veldara {

// How the sheets come together.
enum class Joining {
    onStrips,   // on the overlap, which shows the neighbour's picture
    onMargins,  // on the white margin at the right and the bottom
    edgeToEdge, // there is no margin to glue on
};

Joining joiningOf(const SheetJob& job);

// The four steps, in the order in which they are done; at most three short sentences each.
std::vector<std::string> assemblySteps(const SheetJob& job);

// The length of the ruler in the units: 100 mm or 4 inches, less where the page has no room for it.
struct Ruler {
    double length = 0; // points
    int divisions = 0; // centimetres, or quarters of an inch
    std::string words; // "100 mm"
};
Ruler guideRuler(double room, Units units);

SheetPage guidePage(const SheetJob& job);

} // namespace veldara
