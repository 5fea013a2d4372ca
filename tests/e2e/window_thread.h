// Lets a program drive its own windows: the main thread serves them, the driving runs on another.
#pragma once

#include <functional>

namespace veldara::test {

// Starts the toolkit, runs the act on a thread of its own, and returns its result when it is done.
int runBesideWindows(int argc, char** argv, std::function<int()> act);

} // namespace veldara::test
