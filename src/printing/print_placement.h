// Where a page goes on a printer that takes dots: in bands, so that no page is ever in memory
// whole, and shifted by what the printer cannot reach, so that the picture lies on the paper where
// the document has it.
#pragma once

#include <cstddef>
#include <vector>

namespace veldara {

struct PrinterDots {
    double perInchAcross = 0;
    double perInchDown = 0;
    // The corner that the printer counts from, seen from the corner of the paper, in dots.
    int offsetAcross = 0;
    int offsetDown = 0;
};

struct PlacedBand {
    // Of the page, drawn with as many dots per inch down as across.
    int firstRow = 0;
    int rows = 0;
    // On the printer, as it counts.
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PlacedBand&) const = default;
};

// From the top down, without gaps; the picture of none of them takes more than mostBytes, but a row
// is the least. Lengths of the page in points.
std::vector<PlacedBand> placedBands(double pageWidth, double pageHeight, const PrinterDots& dots,
                                    std::size_t mostBytes);

} // namespace veldara
