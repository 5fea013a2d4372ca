#include "cli/job_plan.h"

#include "layout/photo_limits.h"
#include "output/tile_files.h"
#include "paper/paper_check.h"
#include "platform/error.h"
#include "platform/image/file_ending.h"
#include "platform/text/path_text.h"

#include <algorithm>
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
        const std::string other = options.units == Units::inches ? "mm" : "in";
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

PosterLayout posterLayout(const Options& options, const ImageHeader& header,
                          const TileSize& tileSize) {
    PosterLayout layout;
    layout.photoWidth = header.width;
    layout.photoHeight = header.height;
    if (options.rotation == Turn::clockwise || options.rotation == Turn::counterClockwise) {
        std::swap(layout.photoWidth, layout.photoHeight);
    }
    layout.tilesWide = options.wide;
    layout.tilesHigh = options.high;
    layout.tileWidthInches = tileSize.width;
    layout.tileHeightInches = tileSize.height;
    layout.tilesTurned = options.rotateTiles;
    layout.zoom = options.zoom;
    layout.horzPos = options.horzPos;
    layout.vertPos = options.vertPos;
    return layout;
}

// Name without its extension, and where the tiles go.
void nameFiles(const Options& options, JobPlan& plan) {
    const std::filesystem::path photo = textPath(options.photo);
    const std::string stem = pathText(photo.stem());
    plan.folder = options.out.empty() ? photo.parent_path() / textPath(defaultFolderName(stem))
                                      : textPath(options.out);
    const std::string base = options.base.value_or(stem);
    for (std::size_t i = 0; i < plan.tiles.size(); ++i) {
        plan.tiles[i].file = plan.folder / textPath(base + tileNumberText(static_cast<int>(i) + 1) +
                                                    extensionOf(plan.type));
    }
}

} // namespace

std::vector<TileRect> JobPlan::rects() const {
    std::vector<TileRect> all;
    std::transform(tiles.begin(), tiles.end(), std::back_inserter(all),
                   [](const PlannedTile& tile) { return tile.rect; });
    return all;
}

std::vector<std::filesystem::path> JobPlan::files() const {
    std::vector<std::filesystem::path> all;
    std::transform(tiles.begin(), tiles.end(), std::back_inserter(all),
                   [](const PlannedTile& tile) { return tile.file; });
    return all;
}

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

JobPlan planJob(const Options& options, const ImageHeader& header,
                const std::optional<ClipCounts>& clip) {
    JobPlan plan;
    plan.photoFile = options.photo;
    plan.units = options.units;
    plan.paper = chosenPaper(options);
    plan.clip = clip;
    plan.type = options.format.value_or(header.type);
    if (!isPhotoLargeEnough(header.width, header.height)) {
        throw Error(trimmed(photoTooSmallText()));
    }
    std::optional<EdgeTrims> trims;
    if (clip) {
        trims = edgeTrims(*clip);
    }
    const std::optional<TileSize> size =
        checkTileSizes(plan.paper.tileWidth(), plan.paper.tileHeight(), plan.units, trims);
    if (!size) {
        throw Error(tileSizeMessage(plan.units).text);
    }
    plan.layout = posterLayout(options, header, *size);
    plan.photoWidth = plan.layout.photoWidth;
    plan.photoHeight = plan.layout.photoHeight;

    const std::vector<TileRect> rects = calcTileCoord(plan.layout);
    if (!everyTileHasPixels(rects)) {
        throw Error("The photo has fewer pixels than this many tiles need: choose fewer tiles, "
                    "a smaller zoom or a larger photo.");
    }
    plan.crop = {rects.front().left, rects.front().top, rects.back().right, rects.back().bottom};
    plan.figures = outputFigures(plan.layout, true, plan.units);
    plan.treatment = tileTreatment(rects, options.rotateTiles, size->width, trims);
    for (const TileRect& rect : rects) {
        plan.tiles.push_back({rect, tileImageSize(rect, plan.treatment), {}});
    }
    nameFiles(options, plan);
    return plan;
}

} // namespace veldara
