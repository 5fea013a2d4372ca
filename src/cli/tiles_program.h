// The command-line program: does what the options ask for and returns its exit status.
#pragma once

#include "calibration/edge_profile.h"
#include "cli/console.h"

#include <functional>
#include <string>
#include <vector>

namespace veldara {

constexpr int statusDone = 0;
constexpr int statusFailed = 1;
constexpr int statusWrongOption = 2;
constexpr int statusInterrupted = 130; // as shells count it: 128 and the number of the signal

// arguments: without the program's name. profiles: reads the saved profiles, called only if needed.
int runTilesProgram(const std::vector<std::string>& arguments, Console& console,
                    const std::function<std::vector<EdgeProfile>()>& profiles);

} // namespace veldara
