#include "paper/paper_catalogue.h"

#include <algorithm>

namespace veldara {
namespace {

PaperRecord paper(const std::string& name, double width, double height, const Margins& margins) {
    return {name, width, height, margins, margins};
}

PaperRecord inchPaper(const std::string& first, const std::string& second, double width,
                      double height, const Margins& margins) {
    return paper(first + "\" x " + second + "\"", width, height, margins);
}

Margins allFour(double margin) {
    return {margin, margin, margin, margin};
}

} // namespace

std::vector<PaperRecord>& PaperTables::catalogue(Units of) {
    return of == Units::inches ? inches : millimetres;
}

const std::vector<PaperRecord>& PaperTables::catalogue(Units of) const {
    return of == Units::inches ? inches : millimetres;
}

bool PaperTables::isCustom(Units of, int entry) const {
    return entry == static_cast<int>(catalogue(of).size()) - 1;
}

PaperRecord& PaperTables::current() {
    return catalogue(units).at(static_cast<std::size_t>(index(units)));
}

const PaperRecord& PaperTables::current() const {
    return catalogue(units).at(static_cast<std::size_t>(index(units)));
}

PaperTables buildPaperTables() {
    constexpr Margins borderless{};
    constexpr Margins document{1.0, 1.25, 1.0, 1.25};
    PaperTables tables;
    tables.inches = {
        inchPaper("Photo 4", "6", 6, 4, borderless),
        inchPaper("Photo 5", "7", 7, 5, borderless),
        inchPaper("Photo 8", "10", 8, 10, borderless),
        inchPaper("Letter 8.5", "11", 8.5, 11, document),
        inchPaper("Legal 8.5", "14", 8.5, 14, document),
        inchPaper("Canvas 11", "17", 11, 17, document),
        paper("Custom (Inches)", 4, 6, borderless),
    };
    tables.millimetres = {
        paper("A8 - 53 x 74", 74, 53, allFour(10)),
        paper("A7 - 74 x 105", 105, 74, allFour(10)),
        paper("A6 - 105 x 148", 148, 105, allFour(15)),
        paper("A5 - 148 x 210", 148, 210, allFour(15)),
        paper("A4 - 210 x 297", 210, 297, allFour(25)),
        paper("A3 - 297 x 420", 297, 420, allFour(25)),
        paper("A2 - 420 x 594", 420, 594, allFour(25)),
        paper("Custom (mm)", 148, 210, borderless),
    };
    return tables;
}

PaperFound findPaperIndex(const PaperTables& tables, const std::string& name, int units) {
    if (units != 0 && units != 1) {
        return {};
    }
    const std::vector<PaperRecord>& papers = tables.catalogue(unitsOf(units));
    const auto found = std::find_if(papers.begin(), papers.end(),
                                    [&](const PaperRecord& entry) { return entry.name == name; });
    if (found == papers.end()) {
        return {};
    }
    const int index = static_cast<int>(found - papers.begin());
    return {index, tables.isCustom(unitsOf(units), index)};
}

} // namespace veldara
