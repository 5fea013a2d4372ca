// Plans a run from the command line's options and the photo's size.
#pragma once

#include "cli/options.h"
#include "layout/output_figures.h"
#include "output/poster_plan.h"

#include <filesystem>
#include <optional>
#include <string>

namespace veldara {

struct JobPlan {
    std::string photoFile;
    PaperRecord paper;
    Units units = Units::inches;
    OutputFigures figures;
    std::optional<ClipCounts> clip;
    std::filesystem::path folder;
    PosterPlan poster;
};

// The paper that the options choose. Throws WrongOption.
PaperRecord chosenPaper(const Options& options);

// clip: the counts of --clip or of the profile. header: of the photo before it is turned. Throws
// Error when no poster can be made of the photo, WrongOption for a paper that cannot be.
JobPlan planJob(const Options& options, const ImageHeader& header,
                const std::optional<ClipCounts>& clip);

} // namespace veldara
