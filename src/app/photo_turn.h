// The rotation list, and the whole photo turned by quarter turns.
#pragma once

#include "platform/image/image.h"
#include "platform/image/turn.h"

namespace veldara {

// The angle that an entry of the rotation list stands for: the third is the turn by 270 degrees,
// the fourth the half turn. 0 when nothing is chosen.
int rotationAngle(int listIndex);

// The entry of the rotation list that stands for the angle.
int rotationIndex(int angle);

// By how much a photo that was turned by `from` is still to be turned, 0 to 270 degrees.
int rotationDelta(int from, int to);

// The turn clockwise by 0, 90, 180 or 270 degrees.
Turn turnOf(int degrees);

// The photo turned clockwise by 0, 90, 180 or 270 degrees, exactly, with its resolution and its
// colour profile. Throws Error or std::bad_alloc when there is not enough memory.
Image turnedBy(const Image& photo, int degrees);

} // namespace veldara
