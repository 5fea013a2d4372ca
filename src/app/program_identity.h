// What the program calls itself: title, version, maker, copyright line.
#pragma once

#include <string>

namespace veldara {

std::string programTitle();

// Major number, ".", minor and revision number, with nothing between the last two: "1.20".
std::string versionText(int major, int minor, int revision);
std::string programVersion(); // the version that was built

std::string companyName();

// "Copyright © 2026 ..." with the given year in four digits.
std::string copyrightText(int year);

// The web address that the build was given; empty when there is none to show.
std::string programWebAddress();

} // namespace veldara
