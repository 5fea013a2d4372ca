#include "agreement.h"
#include "layout/tile_size.h"
#include "paper/paper_line.h"

namespace veldara::fuzz {
namespace {

void checkAccepted(const PaperTables& tables, NumberStyle style) {
    const PaperRecord& paper = tables.current();
    const double factor = tables.units == Units::inches ? 1 : millimetresPerInch;
    require(isWithin(paper.tileWidth(), minTileInches * factor, maxTileInches * factor) &&
                isWithin(paper.tileHeight(), minTileInches * factor, maxTileInches * factor),
            "the tile of an accepted line is within the limits");
    const PaperTables initial = buildPaperTables();
    const PaperRecord& original =
        initial.catalogue(tables.units)[static_cast<std::size_t>(tables.index(tables.units))];
    require(paper.name == original.name && paper.defaultMargins == original.defaultMargins,
            "a line changes no paper's name and no default margin");
    require(tables.isCustom(tables.units, tables.index(tables.units)) ||
                (paper.width == original.width && paper.height == original.height),
            "a line changes the size of the custom paper alone");

    PaperTables again = buildPaperTables();
    require(setPrefFromRegLine(again, makePaperRegLine(tables, style), minTileInches, maxTileInches,
                               style),
            "a line that the program writes is accepted");
    require(again == tables, "a line that the program writes gives the same state");
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldara;
    const auto [style, line] = fuzz::styledText(data, size);
    PaperTables tables = buildPaperTables();
    if (setPrefFromRegLine(tables, line, minTileInches, maxTileInches, style)) {
        fuzz::checkAccepted(tables, style);
    } else {
        fuzz::require(tables == buildPaperTables(), "a refused line leaves the initial state");
    }
    return 0;
}
