// What is drawn around a sheet's own area for the person with the scissors: marks at its corners or
// lines along the edges to cut, and the label in the widest margin. Nothing is drawn inside it.
#pragma once

#include "sheets/sheet_layout.h"

#include <optional>
#include <vector>

namespace veldara {

// Hairlines in line with the own area's edges, 1 mm away from its corners and up to 5 mm long where
// the page has room; or dashed lines along the poster's left and top edge where there is a
// neighbour. Each is drawn dark on a wider light line, so that it is seen on paper and on picture.
std::vector<PageItem> markItems(const SheetJob& job, const SheetPlace& place);

// The margin's part that stays white: of an edge of the page, without strip and border, in points.
double whiteMargin(const SheetJob& job, const SheetPlace& place, Edge edge);

// The edge of the page whose white margin is the widest and at least 4 mm: the label goes there.
std::optional<Edge> labelEdge(const SheetJob& job, const SheetPlace& place);

// Photo's name, row and column, number, and a small map of the grid with this sheet filled. Empty
// when no margin has room for it.
std::vector<PageItem> labelItems(const SheetJob& job, const SheetPlace& place);

// A map of the grid in that box, row by row, one cell filled.
std::vector<PageItem> gridMap(const SheetJob& job, const PageRect& box, int filledSheet,
                              bool turned);

// The whole page of a sheet.
SheetPage sheetPage(const SheetJob& job, int number);

} // namespace veldara
