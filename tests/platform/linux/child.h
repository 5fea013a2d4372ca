// Runs a piece of a test in a process of its own: to be killed, limited, or without the rights of
// the administrator that the tests may run as.
#pragma once

#include <functional>

#include <gtest/gtest.h>

namespace veldara::test {

// Runs the act in a child process and waits for it; true when it reported no failure.
bool succeedsInChild(const std::function<void()>& act);

// The same as the user "nobody" when the tests run as the administrator.
bool succeedsWithoutRights(const std::function<void()>& act);

} // namespace veldara::test
