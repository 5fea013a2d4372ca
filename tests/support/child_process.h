// Runs a piece of a test in a process of its own: to be killed, limited, given a small disk, or
// kept from the rights of the administrator that the tests may run as. Linux only.
#pragma once

#include <cstdio>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldara::test {

// Runs the act in a child process and waits for it; true when it reported no failure.
inline bool succeedsInChild(const std::function<void()>& act) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        act();
        std::fflush(nullptr);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

// The same as the user "nobody" when the tests run as the administrator.
inline bool succeedsWithoutRights(const std::function<void()>& act) {
    constexpr uid_t nobody = 65534;
    return succeedsInChild([&] {
        if (::geteuid() == 0) {
            ASSERT_EQ(::setgid(nobody), 0);
            ASSERT_EQ(::setuid(nobody), 0);
        }
        act();
    });
}

// The same with a disk of that many bytes on an existing folder, which only the child can see and
// which goes with it.
inline bool succeedsOnSmallDisk(const std::string& folder, long bytes,
                                const std::function<void()>& act) {
    return succeedsInChild([&] {
        const int own = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
        ASSERT_EQ(::unshare(own), 0) << "this machine lets no test mount a disk of its own";
        ASSERT_EQ(::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
        const std::string size = "size=" + std::to_string(bytes);
        ASSERT_EQ(::mount("small", folder.c_str(), "tmpfs", 0, size.c_str()), 0);
        act();
    });
}

} // namespace veldara::test
