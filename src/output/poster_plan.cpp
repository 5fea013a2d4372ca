#include "output/poster_plan.h"

#include "layout/tile_size.h"
#include "platform/error.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <iterator>

namespace veldara {
namespace {

PosterPlan failedPlan(PlanProblem problem, const std::string& reason) {
    PosterPlan plan;
    plan.problem = problem;
    plan.reason = reason;
    return plan;
}

// Runs one step of a plan; an Error becomes the plan's problem.
template <class Step>
void take(PosterPlan& plan, PlanProblem problem, Step step) {
    if (!plan.ok()) {
        return;
    }
    try {
        step();
    } catch (const Error& error) {
        plan.problem = problem;
        plan.reason = error.what();
    }
}

void nameFiles(PosterPlan& plan, const TileFileParts& parts) {
    for (std::size_t i = 0; i < plan.tiles.size(); ++i) {
        const TileFileName name = getTileFileName(parts, static_cast<int>(i) + 1);
        if (!name.ok()) {
            throw Error(name.problem);
        }
        plan.tiles[i].file = textPath(name.path);
    }
}

} // namespace

std::vector<TileRect> PosterPlan::rects() const {
    std::vector<TileRect> all;
    std::transform(tiles.begin(), tiles.end(), std::back_inserter(all),
                   [](const PlannedTile& tile) { return tile.rect; });
    return all;
}

std::vector<std::filesystem::path> PosterPlan::files() const {
    std::vector<std::filesystem::path> all;
    std::transform(tiles.begin(), tiles.end(), std::back_inserter(all),
                   [](const PlannedTile& tile) { return tile.file; });
    return all;
}

std::optional<PosterLayout> effectiveLayout(const PosterRequest& request) {
    const std::optional<TileSize> size =
        checkTileSizes(request.tileWidth, request.tileHeight, request.units, request.trims);
    if (!size) {
        return std::nullopt;
    }
    PosterLayout layout = request.layout;
    layout.tileWidthInches = size->width;
    layout.tileHeightInches = size->height;
    return layout;
}

PosterPlan planPoster(const PosterRequest& request) {
    const std::optional<PosterLayout> layout = effectiveLayout(request);
    if (!layout) {
        return failedPlan(PlanProblem::tileSize, tileSizeMessage(request.units).text);
    }
    std::vector<TileRect> rects;
    try {
        rects = calcTileCoord(*layout);
    } catch (const Error& error) {
        return failedPlan(PlanProblem::noTiles, error.what());
    }
    PosterPlan plan = planTiles(rects, layout->tilesTurned, layout->tileWidthInches, request.trims,
                                request.files);
    plan.layout = *layout;
    return plan;
}

PosterPlan planTiles(const std::vector<TileRect>& rects, bool turned, double tilePrintWidth,
                     const std::optional<EdgeTrims>& trims, const TileFileParts& files) {
    if (rects.empty()) {
        return failedPlan(PlanProblem::noTiles, "There are no tiles.");
    }
    if (!everyTileHasPixels(rects)) {
        return failedPlan(PlanProblem::emptyTiles,
                          "The photo has fewer pixels than this many tiles need: choose fewer "
                          "tiles, a smaller zoom or a larger photo.");
    }
    PosterPlan plan;
    for (const TileRect& rect : rects) {
        plan.tiles.push_back({rect, {}, {}});
    }
    plan.type = files.type.value_or(TileFormat::jpeg);
    take(plan, PlanProblem::resolution,
         [&] { plan.treatment = tileTreatment(rects, turned, tilePrintWidth, trims); });
    take(plan, PlanProblem::fileName, [&] { nameFiles(plan, files); });
    take(plan, PlanProblem::compensation, [&] {
        for (PlannedTile& tile : plan.tiles) {
            tile.picture = tileImageSize(tile.rect, plan.treatment);
        }
    });
    return plan;
}

} // namespace veldara
