// What the program calls itself: title, maker, copyright line.
#pragma once

#include <string>

namespace veldara {

std::string programTitle();

std::string companyName();

// "Copyright © 2026 ..." with the given year in four digits.
std::string copyrightText(int year);

// The web address that the build was given; empty when there is none to show.
std::string programWebAddress();

} // namespace veldara
