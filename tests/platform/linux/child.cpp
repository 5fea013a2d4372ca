#include "platform/linux/child.h"

#include <cstdio>

#include <sys/wait.h>
#include <unistd.h>

namespace veldara::test {

bool succeedsInChild(const std::function<void()>& act) {
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

bool succeedsWithoutRights(const std::function<void()>& act) {
    constexpr uid_t nobody = 65534;
    return succeedsInChild([&] {
        if (::geteuid() == 0) {
            ASSERT_EQ(::setgid(nobody), 0);
            ASSERT_EQ(::setuid(nobody), 0);
        }
        act();
    });
}

} // namespace veldara::test
