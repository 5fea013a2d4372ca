// The number of the version that was built, as every program and window shows it.
#pragma once

#include <string>

namespace veldara {

// Major number, ".", minor and revision number, with nothing between the last two: "1.20".
std::string versionText(int major, int minor, int revision);

// The version that was built.
std::string programVersion();

} // namespace veldara
