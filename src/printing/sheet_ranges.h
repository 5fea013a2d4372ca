// Which sheets a print dialog's from-to leaves of a poster.
#pragma once

#include "platform/print_system.h"
#include "sheets/sheet_layout.h"

#include <optional>
#include <vector>

namespace veldara {

// The lowest and the highest number among the sheets that are wanted.
SheetRange sheetsWanted(const SheetJob& job);

// Without ranges the job as it is. With them the wanted sheets whose number lies in one; the guide
// belongs to the whole poster and is left out. Nothing when no sheet is left.
std::optional<SheetJob> jobOfRanges(const SheetJob& job, const std::vector<SheetRange>& ranges);

} // namespace veldara
