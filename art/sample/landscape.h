// The land around the lake: heights, what grows where, and where the morning sun reaches.
// Lengths are kilometres; the water lies at height 0; z runs away from the camera, x to the right.
#pragma once

#include "noise.h"

#include <cstddef>
#include <vector>

namespace veldara::sample {

// Bare ground; negative under the lake. Detail is the number of fine octaves to add.
float groundHeight(float x, float z, int detail);

struct Surface {
    float height = 0; // tree tops where trees stand
    float tree = 0;   // 0 bare ground, 1 the tip of a tree
};

// The ground with its forest.
Surface surfaceAt(float x, float z);

// Towards the sun.
Vec3 sunDirection();

// For a point of the land: how much of the sun's disc stands above the ridges.
class SunShadow {
  public:
    SunShadow();

    // 0 in shadow, 1 in full light.
    float lightAt(Vec3 point) const;

  private:
    std::vector<float> shadowHeights_; // what stands lower than this is in shadow
};

// The colour of the land at a point, lit, before haze. Distance from the camera in kilometres.
Vec3 landColour(Vec3 point, float tree, float distance, const SunShadow& shadow);

} // namespace veldara::sample
