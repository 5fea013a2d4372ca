// The saved edge calibration profiles, read from where the desktop program keeps them.
#pragma once

#include "calibration/edge_profile.h"

#include <vector>

namespace veldara {

// The profiles of the file, or the built-in ones if it cannot be read.
std::vector<EdgeProfile> savedProfiles();

} // namespace veldara
