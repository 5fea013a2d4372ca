#include "platform/linux/system_clock.h"

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

// Another time zone, as long as it lives.
class TimeZone {
  public:
    explicit TimeZone(const char* zone) {
        if (const char* value = std::getenv("TZ")) {
            before_ = value;
        }
        set(zone);
    }
    ~TimeZone() { set(before_ ? before_->c_str() : nullptr); }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

  private:
    static void set(const char* zone) {
        if (zone == nullptr) {
            ::unsetenv("TZ");
        } else {
            ::setenv("TZ", zone, 1);
        }
        ::tzset();
    }
    std::optional<std::string> before_;
};

TEST(SystemClock, CountsInLocalTime) {
    constexpr double daysBefore1970 = 25569;
    constexpr double hour = 3600;
    constexpr double slack = 600; // of a busy machine
    const double utc = static_cast<double>(std::time(nullptr)) + daysBefore1970 * 24 * hour;
    {
        const TimeZone east("EAST-5:30");
        EXPECT_NEAR(SystemClock().seconds(), utc + 5.5 * hour, slack);
    }
    const TimeZone west("WEST8");
    EXPECT_NEAR(SystemClock().seconds(), utc - 8 * hour, slack);
}

} // namespace
} // namespace veldara::test
