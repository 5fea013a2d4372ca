// How long the tests of random use go on.
#pragma once

#include <cstdlib>

namespace veldara::test {

// 10000, or what the environment variable VELDARA_MONKEY_STEPS says.
inline int monkeySteps() {
    const char* steps = std::getenv("VELDARA_MONKEY_STEPS");
    return steps != nullptr ? std::atoi(steps) : 10'000;
}

} // namespace veldara::test
