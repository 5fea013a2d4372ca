// The morning sky: its gradient, thin clouds lit from below, the last stars; and the haze that it
// lays over distant land.
#pragma once

#include "noise.h"

namespace veldara::sample {

// The sky in a direction (need not be normalised). Stars are asked for in the sky itself, not in
// the lake, where ripples drown them.
Vec3 skyColour(Vec3 direction, bool withStars);

// Land seen through the air between it and the camera.
Vec3 hazed(Vec3 colour, Vec3 point, float distance, Vec3 direction);

} // namespace veldara::sample
