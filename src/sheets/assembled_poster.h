// The poster as it will hang on the wall, as a page to draw: the crop, where
// the sheets meet, the strips that lie under the next sheet, and the sheet that
// is looked at.
#pragma once

#include "sheets/sheet_layout.h"

namespace veldara {

// shownSheet: counted from 1; 0: none is marked. Sheets that are not chosen are
// crossed out.
SheetPage assembledPoster(const SheetJob& job, int shownSheet);

} // namespace veldara
