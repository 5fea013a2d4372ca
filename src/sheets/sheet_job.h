// From the paper, the layout and the photo, as both programs have them, to the job of making
// sheets.
#pragma once

#include "paper/paper_catalogue.h"
#include "sheets/sheet_layout.h"

#include <optional>
#include <string>

namespace veldara {

// layout: with the effective tile size. posterSize: as the output figures say it.
SheetJob sheetJob(const PaperRecord& paper, Units units, const PosterLayout& layout,
                  const std::optional<EdgeTrims>& trims, const std::string& photoName,
                  const std::string& posterSize);

} // namespace veldara
