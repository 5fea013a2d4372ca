#include "sheets/sheet_job.h"

#include <algorithm>

namespace veldara {

SheetJob sheetJob(const PaperRecord& paper, Units units, const PosterLayout& layout,
                  const std::optional<EdgeTrims>& trims, const std::string& photoName,
                  const std::string& posterSize) {
    SheetJob job;
    job.paperWidth = pointsOf(paper.width, units);
    job.paperHeight = pointsOf(paper.height, units);
    std::transform(paper.margins.begin(), paper.margins.end(), job.margins.begin(),
                   [&](double margin) { return pointsOf(margin, units); });
    if (trims) {
        std::transform(trims->begin(), trims->end(), job.trims.begin(),
                       [](double trim) { return trim * pointsPerInch; });
    }
    job.layout = layout;
    job.photoName = photoName;
    job.paperName = paper.name;
    job.posterSize = posterSize;
    job.units = units;
    return job;
}

} // namespace veldara
