#include "sheets/assembled_poster.h"

#include <algorithm>

namespace veldara {
namespace {

constexpr PageColour white{255, 255, 255};
constexpr PageColour dark{40, 40, 40};
constexpr PageColour accent{196, 64, 40};

} // namespace

SheetPage assembledPoster(const SheetJob& job, int shownSheet) {
    const int wide = job.layout.tilesWide;
    const int high = job.layout.tilesHigh;
    const SheetPlace first = sheetPlace(job, 1);
    const bool turned = job.layout.tilesTurned;
    const double cellWidth = turned ? first.own.height() : first.own.width();
    const double cellHeight = turned ? first.own.width() : first.own.height();

    SheetPage page{cellWidth * wide, cellHeight * high, 0, {}};
    const CropRect crop = cropRect(job.layout);
    const double left = crop.left;
    const double top = crop.top;
    page.items.emplace_back(PagePhoto{
        {left, top, left + crop.width, top + crop.height}, {0, 0, page.width, page.height}, false});

    // Lines are as wide on every screen, whatever the poster's size.
    const double unit = std::max(page.width, page.height) / 400;
    const auto line = [&](PagePoint from, PagePoint to, PageColour colour, double dash) {
        page.items.emplace_back(PageLine{from, to, 2.5 * unit, white, 0});
        page.items.emplace_back(PageLine{from, to, unit, colour, dash});
    };
    const int rightEdge = turned ? edgeTop : edgeRight; // of the page, at the poster's right
    const int bottomEdge = turned ? edgeRight : edgeBottom;
    const double stripRight = first.strips.at(static_cast<std::size_t>(rightEdge));
    const double stripBottom = first.strips.at(static_cast<std::size_t>(bottomEdge));
    for (int i = 1; i < wide; ++i) {
        const double x = cellWidth * i;
        if (stripRight > 0) {
            line({x + stripRight, 0}, {x + stripRight, page.height}, accent, 4 * unit);
        }
        line({x, 0}, {x, page.height}, dark, 0);
    }
    for (int j = 1; j < high; ++j) {
        const double y = cellHeight * j;
        if (stripBottom > 0) {
            line({0, y + stripBottom}, {page.width, y + stripBottom}, accent, 4 * unit);
        }
        line({0, y}, {page.width, y}, dark, 0);
    }
    const auto cell = [&](int number) -> PageRect {
        const SheetCell place = sheetCell(number, wide);
        const double x = cellWidth * place.column;
        const double y = cellHeight * place.row;
        return {x, y, x + cellWidth, y + cellHeight};
    };
    const std::vector<int> chosen = chosenSheets(job);
    for (int number = 1; number <= wide * high; ++number) {
        if (!std::binary_search(chosen.begin(), chosen.end(), number)) {
            const PageRect box = cell(number);
            line({box.left, box.top}, {box.right, box.bottom}, dark, 0);
            line({box.left, box.bottom}, {box.right, box.top}, dark, 0);
        }
    }
    if (shownSheet > 0) {
        const PageRect box = cell(shownSheet);
        const double in = 1.5 * unit;
        page.items.emplace_back(PageShape{{{box.left + in, box.top + in},
                                           {box.right - in, box.top + in},
                                           {box.right - in, box.bottom - in},
                                           {box.left + in, box.bottom - in}},
                                          accent,
                                          3 * unit});
    }
    return page;
}

} // namespace veldara
