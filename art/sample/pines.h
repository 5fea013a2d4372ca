// The dark pines on the near shore, drawn needle by needle.
#pragma once

#include "canvas.h"

namespace veldara::sample {

// Paints them over the finished view.
void paintPines(Canvas& canvas);

} // namespace veldara::sample
