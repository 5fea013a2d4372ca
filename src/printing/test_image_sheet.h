// The edge calibration test image as a sheet of paper: the image where a tile of the poster lies.
#pragma once

#include "sheets/sheet_layout.h"

namespace veldara {

// sheet: with the paper and its margins. The image's size in pixels.
SheetJob testImageJob(const SheetJob& sheet, int width, int height);

} // namespace veldara
