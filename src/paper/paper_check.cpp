#include "paper/paper_check.h"

#include "layout/tile_size.h"

#include <algorithm>

namespace veldara {
namespace {

PaperCheck paperFault(const std::string& text) {
    return {PaperFault::paper, text};
}
PaperCheck marginFault(const std::string& text) {
    return {PaperFault::margin, text};
}

PaperCheck checkPaperSize(const PaperEntries& entries, Units units, NumberStyle style) {
    if (!entries.width || !entries.height) {
        return paperFault("Invalid Paper Width or Height.");
    }
    const double least = units == Units::inches ? minPaperInches : minPaperMillimetres;
    if (*entries.width < least || *entries.height < least) {
        return paperFault("Invalid paper size - size too small.  Minimum size is " +
                          plainNumber(least, style) + ".");
    }
    return {};
}

PaperCheck checkMargins(const PaperEntries& entries) {
    const bool allGood =
        std::all_of(entries.margins.begin(), entries.margins.end(),
                    [](const std::optional<double>& margin) { return margin && *margin >= 0; });
    return allGood ? PaperCheck{} : marginFault("Invalid margin value - can't be less than zero");
}

} // namespace

PaperEntries entriesOf(const PaperRecord& paper) {
    PaperEntries entries{paper.width, paper.height, {}};
    std::copy(paper.margins.begin(), paper.margins.end(), entries.margins.begin());
    return entries;
}

PaperEntries readPaperEntries(const std::string& width, const std::string& height,
                              const std::array<std::string, 4>& margins, NumberStyle style) {
    PaperEntries entries{readNumber(width, style), readNumber(height, style), {}};
    std::transform(margins.begin(), margins.end(), entries.margins.begin(),
                   [&](const std::string& text) { return readNumber(text, style); });
    return entries;
}

PaperCheck checkPaper(const PaperEntries& entries, Units units, double leastInches,
                      double mostInches, NumberStyle style) {
    if (PaperCheck size = checkPaperSize(entries, units, style); !size.ok()) {
        return size;
    }
    if (PaperCheck margins = checkMargins(entries); !margins.ok()) {
        return margins;
    }
    const double width = *entries.width;
    const double height = *entries.height;
    const double tileWidth = entries.tileWidth();
    const double tileHeight = entries.tileHeight();
    if (!(tileWidth > 0)) {
        return marginFault("Invalid Left / Right Margins.  Together they are larger than the "
                           "paper width.");
    }
    if (!(tileHeight > 0)) {
        return marginFault("Invalid Top / Bottom Margins.  Together they are larger than the "
                           "paper height.");
    }
    const double factor = units == Units::millimetres ? millimetresPerInch : 1;
    const double least = leastInches * factor;
    const double most = mostInches * factor;
    if (isBelow(width, least) || isBelow(height, least)) {
        return paperFault("Paper size too small");
    }
    if (isAbove(width, most) || isAbove(height, most)) {
        return paperFault("Paper size too large");
    }
    if (isBelow(tileWidth, least) || isBelow(tileHeight, least)) {
        return marginFault("Paper/Margins too small");
    }
    if (isAbove(tileWidth, most) || isAbove(tileHeight, most)) {
        return marginFault("Paper/Margins too large");
    }
    return {};
}

Message invalidPaperMessage(const PaperCheck& check) {
    return criticalMessage("Invalid Values Entered", check.text);
}

} // namespace veldara
