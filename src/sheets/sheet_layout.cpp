#include "sheets/sheet_layout.h"

#include "platform/error.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace veldara {
namespace {

constexpr std::array<Edge, 4> allEdges{edgeTop, edgeRight, edgeBottom, edgeLeft};

// How far a stretched border reaches under the photo that is drawn over it, so that no renderer
// leaves a light seam between the two.
constexpr double underlap = 1.0;

PageRect ownArea(const SheetJob& job) {
    const auto inset = [&](Edge edge) { return job.margins[edge] + job.trims[edge]; };
    const PageRect own{inset(edgeLeft), inset(edgeTop), job.paperWidth - inset(edgeRight),
                       job.paperHeight - inset(edgeBottom)};
    if (!(own.width() > 0) || !(own.height() > 0)) {
        throw Error("The margins and the printer's edges leave nothing of the sheet.");
    }
    return own;
}

// The size of the own area across an edge of the page.
double ownDepth(const PageRect& own, Edge edge) {
    return edge == edgeTop || edge == edgeBottom ? own.height() : own.width();
}

// Strips are at the right and at the bottom of the poster's sheets; the next sheet is glued there.
bool carriesStrip(const SheetPlace& place, Edge pageEdge) {
    const Edge edge = posterEdge(pageEdge, place.turned);
    return (edge == edgeRight || edge == edgeBottom) && place.neighbour[pageEdge];
}

// A point of the page into the photo, whole page and photo lengths in proportion to the own area.
PhotoRect photoOf(const SheetPlace& place, const PageRect& page) {
    const PageRect& own = place.own;
    const PhotoRect& photo = place.ownPhoto;
    if (place.turned) {
        const double across = photo.width() / own.height();
        const double down = photo.height() / own.width();
        return {photo.left + (own.bottom - page.bottom) * across,
                photo.top + (page.left - own.left) * down,
                photo.left + (own.bottom - page.top) * across,
                photo.top + (page.right - own.left) * down};
    }
    const double across = photo.width() / own.width();
    const double down = photo.height() / own.height();
    return {photo.left + (page.left - own.left) * across, photo.top + (page.top - own.top) * down,
            photo.left + (page.right - own.left) * across,
            photo.top + (page.bottom - own.top) * down};
}

PageRect pageOf(const SheetPlace& place, const PhotoRect& photo) {
    const PageRect& own = place.own;
    const PhotoRect& from = place.ownPhoto;
    if (place.turned) {
        const double up = own.height() / from.width();
        const double across = own.width() / from.height();
        return {own.left + (photo.top - from.top) * across,
                own.bottom - (photo.right - from.left) * up,
                own.left + (photo.bottom - from.top) * across,
                own.bottom - (photo.left - from.left) * up};
    }
    const double across = own.width() / from.width();
    const double down = own.height() / from.height();
    return {own.left + (photo.left - from.left) * across, own.top + (photo.top - from.top) * down,
            own.left + (photo.right - from.left) * across,
            own.top + (photo.bottom - from.top) * down};
}

// One direction of the photo cut into what lies before its first pixel, in it, and after its last.
struct Span {
    double sourceFrom;
    double sourceTo;
    double from; // where it is to appear, in pixels that may lie beyond the photo
    double to;
    bool stretched;
};

std::vector<Span> spans(double from, double to, int size, double reach) {
    // The last bits of a double are no pixels.
    constexpr double nothing = 1e-6;
    const double end = size;
    std::vector<Span> result;
    if (from < -nothing) {
        result.push_back({0, 1, from, reach, true});
    }
    if (to > end + nothing) {
        result.push_back({end - 1, end, end - reach, to, true});
    }
    const double first = std::max(from, 0.0);
    const double last = std::min(to, end);
    result.push_back({first, last, first, last, false});
    return result;
}

} // namespace

double pointsOf(double length, Units units) {
    return units == Units::inches ? length * pointsPerInch
                                  : length / millimetresPerInch * pointsPerInch;
}

Edge posterEdge(Edge pageEdge, bool turned) {
    // A quarter turn counter-clockwise brings the right edge to the top.
    return turned ? static_cast<Edge>((pageEdge + 1) % 4) : pageEdge;
}

std::vector<int> chosenSheets(const SheetJob& job) {
    if (!job.choices.sheets.empty()) {
        return job.choices.sheets;
    }
    std::vector<int> all(static_cast<std::size_t>(job.layout.tilesWide * job.layout.tilesHigh));
    std::iota(all.begin(), all.end(), 1);
    return all;
}

SheetCell sheetCell(int number, int sheetsWide) {
    return {(number - 1) % sheetsWide, (number - 1) / sheetsWide};
}

SheetPlace sheetPlace(const SheetJob& job, int number) {
    const PosterLayout& layout = job.layout;
    if (number < 1 || number > layout.tilesWide * layout.tilesHigh) {
        throw Error("The poster has no sheet " + std::to_string(number) + ".");
    }
    SheetPlace place;
    place.number = number;
    const SheetCell cell = sheetCell(number, layout.tilesWide);
    place.column = cell.column;
    place.row = cell.row;
    place.turned = layout.tilesTurned;
    place.own = ownArea(job);

    const CropRect crop = cropRect(layout);
    const auto across = [&](int column) {
        return crop.left + static_cast<double>(column) * crop.width / layout.tilesWide;
    };
    const auto down = [&](int row) {
        return crop.top + static_cast<double>(row) * crop.height / layout.tilesHigh;
    };
    place.ownPhoto = {across(place.column), down(place.row), across(place.column + 1),
                      down(place.row + 1)};
    if (!(place.ownPhoto.width() > 0) || !(place.ownPhoto.height() > 0)) {
        throw Error("The photo has fewer pixels than this many sheets need.");
    }

    EdgeLengths reach = job.trims;
    for (const Edge edge : allEdges) {
        switch (posterEdge(edge, place.turned)) {
        case edgeTop:
            place.neighbour[edge] = place.row > 0;
            break;
        case edgeRight:
            place.neighbour[edge] = place.column + 1 < layout.tilesWide;
            break;
        case edgeBottom:
            place.neighbour[edge] = place.row + 1 < layout.tilesHigh;
            break;
        case edgeLeft:
            place.neighbour[edge] = place.column > 0;
            break;
        }
        if (carriesStrip(place, edge)) {
            // Never more than the neighbour itself has.
            place.strips[edge] = std::max(
                0.0, std::min({job.choices.overlap, job.margins[edge], ownDepth(place.own, edge)}));
            reach[edge] = std::max(reach[edge], place.strips[edge]);
        }
    }
    place.painted = {place.own.left - reach[edgeLeft], place.own.top - reach[edgeTop],
                     place.own.right + reach[edgeRight], place.own.bottom + reach[edgeBottom]};
    place.paintedPhoto = photoOf(place, place.painted);
    return place;
}

std::vector<PagePhoto> photoItems(const SheetJob& job, const SheetPlace& place) {
    const double pixel =
        (place.turned ? place.own.height() : place.own.width()) / place.ownPhoto.width(); // points
    const double reach =
        std::min(underlap / pixel, std::min(place.ownPhoto.width(), place.ownPhoto.height()));
    const PhotoRect& all = place.paintedPhoto;
    const std::vector<Span> across = spans(all.left, all.right, job.layout.photoWidth, reach);
    const std::vector<Span> down = spans(all.top, all.bottom, job.layout.photoHeight, reach);
    std::vector<PagePhoto> corners;
    std::vector<PagePhoto> sides;
    std::vector<PagePhoto> inside;
    for (const Span& y : down) {
        for (const Span& x : across) {
            const PagePhoto item{{x.sourceFrom, y.sourceFrom, x.sourceTo, y.sourceTo},
                                 pageOf(place, {x.from, y.from, x.to, y.to}),
                                 place.turned};
            (x.stretched && y.stretched   ? corners
             : x.stretched || y.stretched ? sides
                                          : inside)
                .push_back(item);
        }
    }
    corners.insert(corners.end(), sides.begin(), sides.end());
    corners.insert(corners.end(), inside.begin(), inside.end());
    return corners;
}

TileRect shownPixels(const SheetJob& job, const SheetPlace& place) {
    const auto first = [](double edge, int size) {
        return std::clamp(static_cast<int>(std::floor(edge + 1e-9)), 0, size - 1);
    };
    const auto last = [](double edge, int size) {
        return std::clamp(static_cast<int>(std::ceil(edge - 1e-9)) - 1, 0, size - 1);
    };
    const PhotoRect& shown = place.paintedPhoto;
    const int width = job.layout.photoWidth;
    const int height = job.layout.photoHeight;
    return {first(shown.left, width), first(shown.top, height), last(shown.right, width),
            last(shown.bottom, height)};
}

std::optional<std::string> overlapProblem(const SheetJob& job, NumberStyle style) {
    const PageRect own = ownArea(job);
    const bool inches = job.units == Units::inches;
    const std::string unit = inches ? " inches" : " mm";
    const auto text = [&](double points) {
        return plainNumber(
                   std::round(points / (inches ? pointsPerInch : pointsPerMillimetre) * 1000) /
                       1000,
                   style) +
               unit;
    };
    constexpr std::array<const char*, 4> names{"top", "right", "bottom", "left"};
    for (const Edge edge : allEdges) {
        const Edge side = posterEdge(edge, job.layout.tilesTurned);
        const bool joined = (side == edgeRight && job.layout.tilesWide > 1) ||
                            (side == edgeBottom && job.layout.tilesHigh > 1);
        // The last bits of a double are no length.
        const double room = std::min(job.margins[edge], ownDepth(own, edge));
        if (!joined || job.choices.overlap <= room + 1e-6) {
            continue;
        }
        if (job.choices.overlap > ownDepth(own, edge) + 1e-6) {
            return "An overlap of " + text(job.choices.overlap) +
                   " is more than a sheet shows; it is at most " + text(room) + ".";
        }
        return "An overlap of " + text(job.choices.overlap) + " takes a " + names[edge] +
               " margin of " + text(job.choices.overlap) + "; the paper's is " +
               text(job.margins[edge]) + ", so the overlap there is " + text(room) + ".";
    }
    return std::nullopt;
}

} // namespace veldara
