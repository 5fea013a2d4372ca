// What --list-papers and --list-profiles print.
#pragma once

#include "calibration/edge_profile.h"

#include <string>
#include <vector>

namespace veldara {

std::string paperListing();
std::string profileListing(const std::vector<EdgeProfile>& profiles);

} // namespace veldara
