// The camera at the lake: what it sees of land, sky and water.
#pragma once

#include "canvas.h"
#include "landscape.h"

namespace veldara::sample {

// The whole view, in linear light, without the near shore.
Canvas paintView(int width, int height, const SunShadow& shadow);

} // namespace veldara::sample
