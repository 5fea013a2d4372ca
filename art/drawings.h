// What the program's own drawings look like: SVG texts, kept inside the program. They use only
// paths, rectangles, circles and gradients, so that the small renderer of the toolkit draws them.
#pragma once

#include "controls/picture.h"

#include <string_view>

namespace veldara {

// The drawing as SVG, square; empty for Drawing::none. The arrow pads are all of one size, with the
// arms where the pad answers to the mouse.
std::string_view drawingSvg(Drawing drawing);

// The program's icon. Up to 24 pixels a side it is a simpler one, since sheets and snow would melt
// into each other.
std::string_view iconSvg(int pixelsPerSide);

} // namespace veldara
