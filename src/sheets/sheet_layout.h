// Where the photo goes on each sheet of paper: the sheet's own area, the part of the photo in it,
// the border that the printer cuts off, and the strip that the neighbour is glued on. Positions in
// the photo are real numbers, so neighbours meet at the same point of the photo.
#pragma once

#include "layout/tile_grid.h"
#include "platform/measures.h"
#include "platform/text/number_text.h"
#include "sheets/sheet_page.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

enum class SheetMarks { none, corners, lines };

// Points: top, right, bottom, left of the page as it comes out of the printer.
using EdgeLengths = std::array<double, 4>;

// What the person decides about the sheets beyond the tiles themselves.
struct SheetChoices {
    double overlap = 0; // points
    SheetMarks marks = SheetMarks::corners;
    bool labels = true;
    bool guide = true;
    std::vector<int> sheets; // counted from 1, ascending; empty: all
};

struct SheetJob {
    double paperWidth = 0; // points; the page, in the orientation of the tile files
    double paperHeight = 0;
    EdgeLengths margins{};
    EdgeLengths trims{}; // zeros when edges are not compensated
    PosterLayout layout;
    SheetChoices choices;
    std::string photoName; // UTF-8, for labels and title
    std::string paperName;
    std::string posterSize; // as the output figures say it
    Units units = Units::inches;
};

// One sheet. Edges of the page and of the poster differ when tiles are turned: then the poster's
// right edge is the page's top edge.
struct SheetPlace {
    int number = 0; // counted from 1
    int column = 0; // counted from 0
    int row = 0;
    PageRect own;                    // the effective tile: paper less margins less trims
    PhotoRect ownPhoto;              // the part of the photo that fills it
    PageRect painted;                // own and the border and strips around it
    PhotoRect paintedPhoto;          // what fills that; may reach beyond the photo
    EdgeLengths strips{};            // overlap at each edge of the page
    std::array<bool, 4> neighbour{}; // across each edge of the page
    bool turned = false;
};

// A length of the page in points for a length in the units.
double pointsOf(double length, Units units);

// The poster's edge that lies along that edge of the page.
Edge posterEdge(Edge pageEdge, bool turned);

// The numbers of the sheets that are wanted, ascending.
std::vector<int> chosenSheets(const SheetJob& job);

// Where a sheet lies in a grid that is so many sheets wide. They are numbered from 1, by rows.
struct SheetCell {
    int column = 0; // of the grid, from 0
    int row = 0;
};
SheetCell sheetCell(int number, int sheetsWide);

// Throws Error when margins and trims leave nothing of the paper, or the number is out of range.
SheetPlace sheetPlace(const SheetJob& job, int number);

// The sheet's photo as items to draw: the photo itself, and beyond its end its outermost pixels
// stretched over the border.
std::vector<PagePhoto> photoItems(const SheetJob& job, const SheetPlace& place);

// The pixels that a sheet's items show, whole pixels within the photo.
TileRect shownPixels(const SheetJob& job, const SheetPlace& place);

// What is to be said when more overlap is asked for than a margin has room for; nothing when it
// fits. Names the margin that it would take.
std::optional<std::string> overlapProblem(const SheetJob& job, NumberStyle style = {});

} // namespace veldara
