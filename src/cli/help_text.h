// What --help and --version print.
#pragma once

#include <string>

namespace veldara {

std::string helpText();
std::string versionLine();

} // namespace veldara
