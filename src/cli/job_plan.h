// From the options and the photo's size to everything that a run does: rectangles, figures, file
// names. The window computes the same with the same rules.
#pragma once

#include "cli/options.h"
#include "layout/output_figures.h"
#include "layout/tile_grid.h"
#include "layout/tile_size.h"
#include "output/tile_image.h"

#include <filesystem>
#include <string>
#include <vector>

namespace veldara {

struct PlannedTile {
    TileRect rect;
    PictureSize picture; // as written
    std::filesystem::path file;
};

struct JobPlan {
    std::string photoFile;
    int photoWidth = 0; // as turned
    int photoHeight = 0;
    PaperRecord paper;
    Units units = Units::inches;
    PosterLayout layout;
    TileRect crop;
    OutputFigures figures;
    std::optional<ClipCounts> clip;
    TileTreatment treatment;
    FileType type = FileType::jpeg;
    std::filesystem::path folder;
    std::vector<PlannedTile> tiles;

    std::vector<TileRect> rects() const;
    std::vector<std::filesystem::path> files() const;
};

// The paper that the options choose. Throws WrongOption.
PaperRecord chosenPaper(const Options& options);

// clip: the counts of --clip or of the profile. header: of the photo before it is turned. Throws
// Error when no poster can be made of the photo, WrongOption for a paper that cannot be.
JobPlan planJob(const Options& options, const ImageHeader& header,
                const std::optional<ClipCounts>& clip);

} // namespace veldara
