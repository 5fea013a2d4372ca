#include "platform/linux/system_clock.h"
#include "support/environment_variable.h"

#include <ctime>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

double secondsIn(const char* zone) {
    double seconds = 0;
    {
        const EnvironmentVariable variable("TZ", zone);
        ::tzset();
        seconds = SystemClock().seconds();
    }
    ::tzset();
    return seconds;
}

TEST(SystemClock, CountsInLocalTime) {
    constexpr double daysBefore1970 = 25569;
    constexpr double hour = 3600;
    constexpr double slack = 600; // of a busy machine
    const double utc = static_cast<double>(std::time(nullptr)) + daysBefore1970 * 24 * hour;
    EXPECT_NEAR(secondsIn("EAST-5:30"), utc + 5.5 * hour, slack);
    EXPECT_NEAR(secondsIn("WEST8"), utc - 8 * hour, slack);
}

} // namespace
} // namespace veldara::test
