// The small drawings beside the guide's steps. Each is drawn in a square box.
#pragma once

#include "sheets/guide_page.h"

#include <vector>

namespace veldara {

// A printed sheet under a ruler.
std::vector<PageItem> measureDrawing(const PageRect& box);

// Scissors along the left and the top margin of a sheet; edge to edge there is nothing to cut, and
// two sheets lie side by side instead.
std::vector<PageItem> cutDrawing(const PageRect& box, Joining joining);

// A sheet that is laid over the strip or the margin of its neighbour, or against its edge.
std::vector<PageItem> glueDrawing(const PageRect& box, Joining joining);

// The whole poster with its grid, and the order of the sheets as an arrow.
std::vector<PageItem> rowsDrawing(const PageRect& box);

} // namespace veldara
