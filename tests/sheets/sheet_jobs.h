// Posters that the tests of the sheets begin with.
#pragma once

#include "sheets/sheet_layout.h"

namespace veldara::testing {

// Six sheets of A4 with margins of 10 mm, three wide and two high, of a photo of 3000 x 2000.
inline SheetJob a4Job() {
    SheetJob job;
    job.paperWidth = pointsOf(210, Units::millimetres);
    job.paperHeight = pointsOf(297, Units::millimetres);
    job.margins.fill(pointsOf(10, Units::millimetres));
    job.units = Units::millimetres;
    job.layout.photoWidth = 3000;
    job.layout.photoHeight = 2000;
    job.layout.tilesWide = 3;
    job.layout.tilesHigh = 2;
    job.layout.tileWidthInches = 190 / millimetresPerInch;
    job.layout.tileHeightInches = 277 / millimetresPerInch;
    job.photoName = "lake.jpg";
    job.paperName = "A4 - 210 x 297";
    job.posterSize = "57 x 55.4 cm";
    return job;
}

// The same with the sheets lying on their side.
inline SheetJob turnedJob() {
    SheetJob job = a4Job();
    job.layout.tilesTurned = true;
    return job;
}

// The same without margins, edges compensated by 3 mm.
inline SheetJob borderlessJob() {
    SheetJob job = a4Job();
    job.margins.fill(0);
    job.trims.fill(pointsOf(3, Units::millimetres));
    job.layout.tileWidthInches = 204 / millimetresPerInch;
    job.layout.tileHeightInches = 291 / millimetresPerInch;
    return job;
}

template <class Kind>
std::vector<Kind> itemsOf(const std::vector<PageItem>& items) {
    std::vector<Kind> result;
    for (const PageItem& item : items) {
        if (const Kind* kind = std::get_if<Kind>(&item)) {
            result.push_back(*kind);
        }
    }
    return result;
}

} // namespace veldara::testing
