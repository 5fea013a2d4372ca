#include "sheets/sheet_marks.h"

#include "sheets/page_font.h"

#include <algorithm>
#include <cmath>

namespace veldara {
namespace {

constexpr double markDistance = 1.0 * pointsPerMillimetre;
constexpr double markLength = 5.0 * pointsPerMillimetre;
constexpr double hairline = 0.25;
constexpr double haloWidth = 0.75;
constexpr double leastLabelMargin = 4.0 * pointsPerMillimetre;
constexpr double largestLabelText = 8.0;
constexpr double mapGap = 5.0;
constexpr double cornerSpace = 2.0 * pointsPerMillimetre; // keeps the label off the corner marks

constexpr PageColour black{0, 0, 0};
constexpr PageColour white{255, 255, 255};
constexpr PageColour grey{112, 112, 112};

void addLine(std::vector<PageItem>& items, PagePoint from, PagePoint to, double dash) {
    items.emplace_back(PageLine{from, to, haloWidth, white, 0});
    items.emplace_back(PageLine{from, to, hairline, black, dash});
}

// The end of a mark that starts 1 mm from a corner and goes that way; the page's edge limits it.
double markEnd(double corner, double direction, double pageSize) {
    return std::clamp(corner + direction * (markDistance + markLength), 0.0, pageSize);
}

void addCornerMarks(std::vector<PageItem>& items, const SheetJob& job, const PageRect& own) {
    for (const double x : {own.left, own.right}) {
        for (const double y : {own.top, own.bottom}) {
            const double outX = x == own.left ? -1 : 1;
            const double outY = y == own.top ? -1 : 1;
            const double startX = x + outX * markDistance;
            const double startY = y + outY * markDistance;
            const double endX = markEnd(x, outX, job.paperWidth);
            const double endY = markEnd(y, outY, job.paperHeight);
            if ((endX - startX) * outX > 0) {
                addLine(items, {startX, y}, {endX, y}, 0);
            }
            if ((endY - startY) * outY > 0) {
                addLine(items, {x, startY}, {x, endY}, 0);
            }
        }
    }
}

// The line lies outside of the edge by half of its width, so that none of it is in the own area.
void addCutLine(std::vector<PageItem>& items, const SheetJob& job, const PageRect& own, Edge edge) {
    constexpr double dash = 4.0;
    const double out = haloWidth / 2;
    switch (edge) {
    case edgeTop:
        addLine(items, {0, own.top - out}, {job.paperWidth, own.top - out}, dash);
        break;
    case edgeRight:
        addLine(items, {own.right + out, 0}, {own.right + out, job.paperHeight}, dash);
        break;
    case edgeBottom:
        addLine(items, {0, own.bottom + out}, {job.paperWidth, own.bottom + out}, dash);
        break;
    case edgeLeft:
        addLine(items, {own.left - out, 0}, {own.left - out, job.paperHeight}, dash);
        break;
    }
}

// The white part of a margin, along the own area.
PageRect whiteBox(const SheetJob& job, const SheetPlace& place, Edge edge) {
    const PageRect& own = place.own;
    const PageRect& painted = place.painted;
    switch (edge) {
    case edgeTop:
        return {own.left, 0, own.right, painted.top};
    case edgeRight:
        return {painted.right, own.top, job.paperWidth, own.bottom};
    case edgeBottom:
        return {own.left, painted.bottom, own.right, job.paperHeight};
    case edgeLeft:
        break;
    }
    return {0, own.top, painted.left, own.bottom};
}

// The longest of the label's wordings that fits: the photo's name gives way first.
std::string labelText(const SheetJob& job, const SheetPlace& place, double size, double width) {
    const std::string number = "sheet " + std::to_string(place.number);
    const std::string position = "row " + std::to_string(place.row + 1) + " of " +
                                 std::to_string(job.layout.tilesHigh) + ", column " +
                                 std::to_string(place.column + 1) + " of " +
                                 std::to_string(job.layout.tilesWide);
    const std::string gap = "   ";
    const std::string rest = position + gap + number;
    const std::string name =
        shortenedText(job.photoName, size, width - pageTextWidth(gap + rest, size));
    const std::string whole = name.empty() ? rest : name + gap + rest;
    for (const std::string& text : {whole, rest, number}) {
        if (pageTextWidth(text, size) <= width) {
            return text;
        }
    }
    return {};
}

} // namespace

std::vector<PageItem> markItems(const SheetJob& job, const SheetPlace& place) {
    std::vector<PageItem> items;
    if (job.choices.marks == SheetMarks::corners) {
        addCornerMarks(items, job, place.own);
    } else if (job.choices.marks == SheetMarks::lines) {
        for (const Edge edge : {edgeTop, edgeRight, edgeBottom, edgeLeft}) {
            const Edge side = posterEdge(edge, place.turned);
            if ((side == edgeLeft || side == edgeTop) && place.neighbour[edge]) {
                addCutLine(items, job, place.own, edge);
            }
        }
    }
    return items;
}

double whiteMargin(const SheetJob& job, const SheetPlace& place, Edge edge) {
    const PageRect box = whiteBox(job, place, edge);
    return std::max(0.0, edge == edgeTop || edge == edgeBottom ? box.height() : box.width());
}

std::optional<Edge> labelEdge(const SheetJob& job, const SheetPlace& place) {
    // Of margins of one width a lying line of text is read more easily, and the next sheet covers
    // it when it is at the bottom.
    std::optional<Edge> widest;
    double most = leastLabelMargin - 1e-6;
    for (const Edge edge : {edgeBottom, edgeTop, edgeRight, edgeLeft}) {
        const double width = whiteMargin(job, place, edge);
        if (width > most + 1e-6) {
            most = width;
            widest = edge;
        }
    }
    return widest;
}

std::vector<PageItem> gridMap(const SheetJob& job, const PageRect& box, int filledSheet,
                              bool turned) {
    const int wide = job.layout.tilesWide;
    const int high = job.layout.tilesHigh;
    // Turned, the map stands as the picture on the page does: the poster's right edge at the top.
    const auto at = [&](double column, double row) -> PagePoint {
        if (turned) {
            return {box.left + box.width() * row / high, box.bottom - box.height() * column / wide};
        }
        return {box.left + box.width() * column / wide, box.top + box.height() * row / high};
    };
    std::vector<PageItem> items;
    const int column = (filledSheet - 1) % wide;
    const int row = (filledSheet - 1) / wide;
    items.emplace_back(PageShape{
        {at(column, row), at(column + 1, row), at(column + 1, row + 1), at(column, row + 1)},
        grey,
        0});
    constexpr double thin = 0.3;
    for (int i = 0; i <= wide; ++i) {
        items.emplace_back(PageLine{at(i, 0), at(i, high), thin, grey, 0});
    }
    for (int j = 0; j <= high; ++j) {
        items.emplace_back(PageLine{at(0, j), at(wide, j), thin, grey, 0});
    }
    return items;
}

std::vector<PageItem> labelItems(const SheetJob& job, const SheetPlace& place) {
    const std::optional<Edge> edge = labelEdge(job, place);
    if (!edge) {
        return {};
    }
    const bool lying = *edge == edgeTop || *edge == edgeBottom;
    const PageRect box = whiteBox(job, place, *edge);
    const double depth = lying ? box.height() : box.width();
    const double length = (lying ? box.width() : box.height()) - 2 * cornerSpace;
    const double size = std::min(largestLabelText, depth * 0.5);

    // The map keeps the poster's shape as it stands on the page, within the height of the margin.
    const PageRect& own = place.own;
    const double cellsAcross = place.turned ? job.layout.tilesHigh : job.layout.tilesWide;
    const double cellsDown = place.turned ? job.layout.tilesWide : job.layout.tilesHigh;
    const double shape = own.width() * cellsAcross / (own.height() * cellsDown);
    const double mapDepth = std::min(depth * 0.7, 6 * pointsPerMillimetre);
    const double mapMost = std::min(4 * mapDepth, length / 3);
    double mapLength = lying ? mapDepth * shape : mapDepth / shape;
    double mapAcross = mapDepth;
    if (mapLength > mapMost) {
        mapAcross *= mapMost / mapLength;
        mapLength = mapMost;
    }
    const std::string text = labelText(job, place, size, length - mapLength - mapGap);

    // Text at the beginning of the margin, the map behind it; a standing margin reads upward.
    std::vector<PageItem> items;
    const double textLength = pageTextWidth(text, size);
    const double baseline = size * 0.35; // from the middle of the margin to the base line
    const double mapStart = cornerSpace + (text.empty() ? 0 : textLength + mapGap);
    PageRect map;
    if (lying) {
        const double middle = (box.top + box.bottom) / 2;
        const double left = box.left;
        items.emplace_back(PageText{{left + cornerSpace, middle + baseline}, size, grey, text, {}});
        map = {left + mapStart, middle - mapAcross / 2, left + mapStart + mapLength,
               middle + mapAcross / 2};
    } else {
        const double middle = (box.left + box.right) / 2;
        items.emplace_back(PageText{
            {middle + baseline, box.bottom - cornerSpace}, size, grey, text, TextDirection::up});
        map = {middle - mapAcross / 2, box.bottom - mapStart - mapLength, middle + mapAcross / 2,
               box.bottom - mapStart};
    }
    const std::vector<PageItem> cells = gridMap(job, map, place.number, place.turned);
    items.insert(items.end(), cells.begin(), cells.end());
    return items;
}

SheetPage sheetPage(const SheetJob& job, int number) {
    const SheetPlace place = sheetPlace(job, number);
    SheetPage page{job.paperWidth, job.paperHeight, number, {}};
    for (const PagePhoto& photo : photoItems(job, place)) {
        page.items.emplace_back(photo);
    }
    const auto append = [&](const std::vector<PageItem>& items) {
        page.items.insert(page.items.end(), items.begin(), items.end());
    };
    append(markItems(job, place));
    if (job.choices.labels) {
        append(labelItems(job, place));
    }
    return page;
}

} // namespace veldara
