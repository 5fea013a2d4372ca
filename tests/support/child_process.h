// Runs a piece of a test in a process of its own: to be killed, limited, given a small disk, or
// kept from the rights of the administrator that the tests may run as. Linux only.
#pragma once

#include <cstdio>
#include <exception>
#include <fstream>
#include <functional>
#include <string>

#include <fcntl.h>
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
        try {
            act();
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what(); // thrown on, it would reach the parent's tests
        }
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

// From here on nobody else sees what the process mounts.
inline void enterOwnMounts() {
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    const int own = user == "0" ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    ASSERT_EQ(::unshare(own), 0) << "this machine lets no test mount a disk of its own";
    if (user != "0") { // who keeps his own name, or he could make no file
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << user << ' ' << user << " 1";
        std::ofstream("/proc/self/gid_map") << group << ' ' << group << " 1";
    }
    // In a changed root, "/" may be no mount and then takes no such flag: the flag is set at the
    // real root, which is reached by entering the mounts once more, and the path back is kept.
    const int root = ::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC);
    const int mounts = ::open("/proc/self/ns/mnt", O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::setns(mounts, CLONE_NEWNS), 0);
    ASSERT_EQ(::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    ASSERT_EQ(::fchdir(root), 0);
    ASSERT_EQ(::chroot("."), 0);
}

// The same with a disk of that many bytes on an existing folder, which only the child can see and
// which goes with it.
inline bool succeedsOnSmallDisk(const std::string& folder, long bytes,
                                const std::function<void()>& act) {
    return succeedsInChild([&] {
        ASSERT_NO_FATAL_FAILURE(enterOwnMounts());
        const std::string size = "size=" + std::to_string(bytes);
        ASSERT_EQ(::mount("small", folder.c_str(), "tmpfs", 0, size.c_str()), 0);
        act();
    });
}

} // namespace veldara::test
