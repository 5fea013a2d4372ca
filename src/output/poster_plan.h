// Plans a poster: computes tiles, resolution and file names from what the user chose. Used by both
// programs.
#pragma once

#include "layout/tile_grid.h"
#include "output/tile_files.h"
#include "output/tile_image.h"
#include "platform/measures.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

// What a poster is made of.
struct PosterRequest {
    PosterLayout layout;   // its tile size is left to the plan
    double tileWidth = 0;  // print size of a tile before any trims, in the units
    double tileHeight = 0; //
    Units units = Units::inches;
    std::optional<EdgeTrims> trims; // of a printer that clips the edges, when compensation is on
    TileFileParts files;
};

// What is wrong with a request, in the order of the checks.
enum class PlanProblem {
    none,
    tileSize,     // a side of a tile is out of range
    noTiles,      // the trims leave nothing of a tile, or there is no photo
    emptyTiles,   // the crop has fewer pixels than tiles
    resolution,   // the print width leaves no resolution
    fileName,     // no file type, or no folder
    compensation, // a tile cannot be enlarged by the trims
};

struct PlannedTile {
    TileRect rect; // pixels of the photo as turned
    std::filesystem::path file;
    PictureSize picture; // as written
};

// Filled as far as the first problem.
struct PosterPlan {
    PosterLayout layout; // with the effective tile size
    std::vector<PlannedTile> tiles;
    TileTreatment treatment;
    TileFormat type = TileFormat::jpeg;
    PlanProblem problem = PlanProblem::none;
    std::string reason; // of the problem

    bool ok() const { return problem == PlanProblem::none; }
    std::vector<TileRect> rects() const;
    std::vector<std::filesystem::path> files() const;
};

// The layout with the effective tile size; nothing when the entered size is out of range.
std::optional<PosterLayout> effectiveLayout(const PosterRequest& request);

PosterPlan planPoster(const PosterRequest& request);

// The part of planPoster that follows the layout. tilePrintWidth: the effective one, in inches.
PosterPlan planTiles(const std::vector<TileRect>& rects, bool turned, double tilePrintWidth,
                     const std::optional<EdgeTrims>& trims, const TileFileParts& files);

} // namespace veldara
