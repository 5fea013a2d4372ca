#include "printing/print_check.h"

#include "printing/print_messages.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veldara {
namespace {

// Printers give their papers in whole points, and some round the millimetres first.
constexpr double samePaper = 1.5;
// A fraction of a hair: a margin in a driver's description is rounded, too.
constexpr double sameMargin = 0.1 * pointsPerMillimetre;

// How far two sheets differ, whichever way they are turned.
double difference(const PrinterPaper& paper, double width, double height) {
    const auto apart = [&](double across, double down) {
        return std::max(std::abs(paper.width - across), std::abs(paper.height - down));
    };
    return std::min(apart(width, height), apart(height, width));
}

bool liesOnItsSide(const PrinterPaper& paper, double width, double height) {
    return (paper.width > paper.height) != (width > height) && std::abs(width - height) > samePaper;
}

// The white at each edge of the page. A page that is wider than its paper is turned by the
// printer, and printers do not agree to which side: so the wider white of both counts.
EdgeLengths whiteOfPage(const PrinterPaper& paper, double width, double height) {
    if (!liesOnItsSide(paper, width, height)) {
        return paper.white;
    }
    const double across = std::max(paper.white[edgeLeft], paper.white[edgeRight]);
    const double down = std::max(paper.white[edgeTop], paper.white[edgeBottom]);
    return {across, down, across, down};
}

bool isSamePaper(const PrinterPaper& paper, double width, double height) {
    return difference(paper, width, height) <= samePaper;
}

const PrinterPaper* nearestPaper(const PrinterFacts& printer, double width, double height) {
    const auto nearer = [&](const PrinterPaper& one, const PrinterPaper& other) {
        return difference(one, width, height) < difference(other, width, height);
    };
    const auto found = std::min_element(printer.papers.begin(), printer.papers.end(), nearer);
    return found == printer.papers.end() ? nullptr : &*found;
}

std::vector<ShortEdge> shortEdges(const SheetJob& job, const EdgeLengths& white) {
    const PageRect own = sheetPlace(job, 1).own;
    const EdgeLengths left{own.top, job.paperWidth - own.right, job.paperHeight - own.bottom,
                           own.left};
    std::vector<ShortEdge> edges;
    for (const Edge edge : {edgeTop, edgeRight, edgeBottom, edgeLeft}) {
        const double missing = white[edge] - left[edge];
        if (missing > sameMargin) {
            edges.push_back({edge, white[edge], missing});
        }
    }
    return edges;
}

std::string sizeText(double width, double height, Units units, NumberStyle style) {
    const auto number = [&](double points) {
        return units == Units::inches
                   ? plainNumber(std::round(points / pointsPerInch * 100) / 100, style)
                   : plainNumber(std::round(points / pointsPerMillimetre), style);
    };
    return number(width) + " x " + number(height) + (units == Units::inches ? " inches" : " mm");
}

std::string lengthText(double points, Units units, NumberStyle style) {
    return units == Units::inches
               ? formatNumber(points / pointsPerInch, "0.00", style) + " inches"
               : formatNumber(points / pointsPerMillimetre, "0.0", style) + " mm";
}

std::string edgeText(Edge edge) {
    switch (edge) {
    case edgeTop:
        return "at the top";
    case edgeRight:
        return "at the right";
    case edgeBottom:
        return "at the bottom";
    case edgeLeft:
        break;
    }
    return "at the left";
}

} // namespace

const PrinterPaper* findPrinterPaper(const PrinterFacts& printer, double width, double height) {
    const PrinterPaper* nearest = nearestPaper(printer, width, height);
    return nearest != nullptr && isSamePaper(*nearest, width, height) ? nearest : nullptr;
}

PrintShortage printShortage(const SheetJob& job, const PrinterFacts& printer) {
    PrintShortage shortage;
    const double width = job.paperWidth;
    const double height = job.paperHeight;
    const PrinterPaper* nearest = nearestPaper(printer, width, height);
    if (nearest == nullptr) {
        return shortage; // the printer says nothing of its papers
    }
    shortage.hasPaper = printer.takesCustomSizes || isSamePaper(*nearest, width, height);
    if (!shortage.hasPaper) {
        shortage.nearest = *nearest;
    }
    // A printer leaves the same white on a paper of any size that it does not know.
    shortage.edges = shortEdges(job, whiteOfPage(*nearest, width, height));
    return shortage;
}

std::string shortageText(const PrintShortage& shortage, const SheetJob& job,
                         const std::string& printer, NumberStyle style) {
    std::vector<std::string> faults;
    if (!shortage.hasPaper) {
        faults.push_back(missingPaperText(
            job.paperName, sizeText(job.paperWidth, job.paperHeight, job.units, style),
            shortage.nearest.name,
            sizeText(shortage.nearest.width, shortage.nearest.height, job.units, style)));
    }
    for (const ShortEdge& edge : shortage.edges) {
        faults.push_back(shortEdgeText(lengthText(edge.white, job.units, style),
                                       edgeText(edge.edge),
                                       lengthText(edge.missing, job.units, style)));
    }
    return shortageSummary(printer, faults, !shortage.hasPaper, !shortage.edges.empty());
}

} // namespace veldara
