// The two catalogues of paper sizes, one in inches and one in millimetres, with the default and the
// current margins of every paper.
#pragma once

#include "platform/measures.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace veldara {

using Margins = std::array<double, 4>; // top, right, bottom, left

// Lengths in the catalogue's unit. The orientation is part of the paper: some are kept wider than
// high although their names give the short side first.
struct PaperRecord {
    std::string name;
    double width = 0;
    double height = 0;
    Margins defaultMargins{}; // never change
    Margins margins{};        // what the user has set

    double tileWidth() const { return width - margins[edgeRight] - margins[edgeLeft]; }
    double tileHeight() const { return height - margins[edgeTop] - margins[edgeBottom]; }
    bool operator==(const PaperRecord&) const = default;
};

// Both catalogues, each ending with its custom entry, and which paper is chosen in each.
struct PaperTables {
    std::vector<PaperRecord> inches;
    std::vector<PaperRecord> millimetres;
    Units units = Units::inches;
    int inchIndex = 0;
    int millimetreIndex = 0;

    std::vector<PaperRecord>& catalogue(Units of);
    const std::vector<PaperRecord>& catalogue(Units of) const;
    int& index(Units of) { return of == Units::inches ? inchIndex : millimetreIndex; }
    int index(Units of) const { return of == Units::inches ? inchIndex : millimetreIndex; }
    bool isCustom(Units of, int entry) const;

    // The current paper of the current units.
    PaperRecord& current();
    const PaperRecord& current() const;
    bool operator==(const PaperTables&) const = default;
};

// Both catalogues with default margins everywhere; inches, and the first paper in each.
PaperTables buildPaperTables();

struct PaperFound {
    int index = -1; // -1: no such paper
    bool isCustom = false;
};

// By the exact name, case-sensitive. Units flag 0 inches, 1 millimetres; any other finds
// nothing.
PaperFound findPaperIndex(const PaperTables& tables, const std::string& name, int units);

} // namespace veldara
