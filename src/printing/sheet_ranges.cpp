#include "printing/sheet_ranges.h"

#include <algorithm>
#include <iterator>

namespace veldara {

SheetRange sheetsWanted(const SheetJob& job) {
    const std::vector<int> sheets = chosenSheets(job);
    return {sheets.front(), sheets.back()};
}

std::optional<SheetJob> jobOfRanges(const SheetJob& job, const std::vector<SheetRange>& ranges) {
    if (ranges.empty()) {
        return job;
    }
    const std::vector<int> wanted = chosenSheets(job);
    SheetJob left = job;
    left.choices.sheets.clear();
    std::copy_if(wanted.begin(), wanted.end(), std::back_inserter(left.choices.sheets),
                 [&](int sheet) {
                     return std::any_of(ranges.begin(), ranges.end(), [&](const SheetRange& range) {
                         return sheet >= range.first && sheet <= range.last;
                     });
                 });
    if (left.choices.sheets.empty()) {
        return std::nullopt;
    }
    left.choices.guide = false;
    return left;
}

} // namespace veldara
