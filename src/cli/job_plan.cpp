#include "cli/job_plan.h"

#include "cli/option_values.h"
#include "layout/photo_limits.h"
#include "layout/tile_size.h"
#include "output/tile_files.h"
#include "paper/paper_check.h"
#include "platform/error.h"
#include "platform/image/input_format.h"
#include "platform/text/file_name.h"
#include "platform/text/path_text.h"

#include <utility>

namespace veldara {
namespace {

std::string lengthRange(Units units) {
    const bool inches = units == Units::inches;
    const double factor = inches ? 1 : millimetresPerInch;
    return stripSuffix(formatNumber(minTileInches * factor, "0.00"), ".00") + " to " +
           stripSuffix(formatNumber(maxTileInches * factor, "0.00"), ".00") +
           (inches ? " inches" : " millimetres");
}

PaperRecord namedPaper(const PaperTables& tables, const Options& options) {
    const std::vector<PaperRecord>& papers = tables.catalogue(options.units);
    if (options.paper.empty()) {
        return options.paperSize ? papers.back() : papers.front();
    }
    const int flag = static_cast<int>(options.units);
    const PaperFound found = findPaperIndex(tables, options.paper, flag);
    if (found.index < 0) {
        const std::string other = unitsWord(unitsOf(1 - flag));
        const bool elsewhere = findPaperIndex(tables, options.paper, 1 - flag).index >= 0;
        throw WrongOption("--paper \"" + options.paper + "\": " +
                          (elsewhere ? "this paper belongs to --units " + other + "."
                                     : "there is no such paper; --list-papers prints them all."));
    }
    if (options.paperSize && !found.isCustom) {
        throw WrongOption("--paper-size: it is the size of \"" + papers.back().name +
                          "\"; the size of \"" + options.paper + "\" is fixed.");
    }
    return papers[static_cast<std::size_t>(found.index)];
}

PosterLayout photoAndGrid(const Options& options, const ImageHeader& header) {
    PosterLayout layout;
    layout.photoWidth = header.width;
    layout.photoHeight = header.height;
    if (exchangesSides(options.rotation)) {
        std::swap(layout.photoWidth, layout.photoHeight);
    }
    layout.tilesWide = options.wide;
    layout.tilesHigh = options.high;
    layout.tilesTurned = options.rotateTiles;
    layout.zoom = options.zoom;
    layout.horzPos = options.horzPos;
    layout.vertPos = options.vertPos;
    return layout;
}

} // namespace

PaperRecord chosenPaper(const Options& options) {
    PaperRecord paper = namedPaper(buildPaperTables(), options);
    if (options.paperSize) {
        paper.width = (*options.paperSize)[0];
        paper.height = (*options.paperSize)[1];
    }
    if (options.margins) {
        paper.margins = *options.margins;
    }
    const PaperCheck check =
        checkPaper(entriesOf(paper), options.units, minTileInches, maxTileInches);
    if (!check.ok()) {
        throw WrongOption((options.paperSize && check.fault == PaperFault::paper ? "--paper-size: "
                                                                                 : "--margins: ") +
                          stripSuffix(check.text, ".") +
                          ".  A sheet and what its margins leave of it may be " +
                          lengthRange(options.units) + " on each side.");
    }
    return paper;
}

namespace {

// The folder that may have to be made; whatever is above it must be there.
void checkFolderName(const std::string& out) {
    const std::string name = pathText(textPath(out).filename());
    if (name.empty() || name == "." || name == "..") {
        return;
    }
    if (const std::string problem = folderNameProblem(name); !problem.empty()) {
        throw Error(problem + ": give another --out.");
    }
}

} // namespace

JobPlan planJob(const Options& options, const ImageHeader& header,
                const std::optional<ClipCounts>& clip) {
    JobPlan plan;
    plan.photoFile = options.photo;
    plan.units = options.units;
    plan.paper = chosenPaper(options);
    plan.clip = clip;
    if (!isPhotoLargeEnough(header.width, header.height)) {
        throw Error(trimmed(photoTooSmallText()));
    }
    checkFolderName(options.out);
    const std::filesystem::path photo = textPath(options.photo);
    const std::string stem = pathText(photo.stem());
    plan.folder = options.out.empty() ? photo.parent_path() / textPath(defaultFolderName(stem))
                                      : textPath(options.out);

    PosterRequest request;
    request.layout = photoAndGrid(options, header);
    request.tileWidth = plan.paper.tileWidth();
    request.tileHeight = plan.paper.tileHeight();
    request.units = options.units;
    if (clip) {
        request.trims = edgeTrims(*clip);
    }
    request.files = {pathText(plan.folder / ""), options.base.value_or(stem),
                     options.format.value_or(defaultTileFormat(header))};
    plan.poster = planPoster(request);
    if (!plan.poster.ok()) {
        throw Error(plan.poster.reason);
    }
    plan.figures = outputFigures(plan.poster.layout, true, plan.units);
    return plan;
}

} // namespace veldara
