#include "platform/linux/system_clock.h"

#include <chrono>
#include <ctime>

namespace veldara {

namespace {

struct tm localTime() {
    const std::time_t now = std::time(nullptr);
    struct tm local = {};
    ::localtime_r(&now, &local);
    return local;
}

} // namespace

double SystemClock::seconds() {
    constexpr double daysBefore1970 = 25569; // from 30 December 1899
    constexpr double secondsOfDay = 86400;
    const std::chrono::duration<double> sinceEpoch =
        std::chrono::system_clock::now().time_since_epoch();
    return sinceEpoch.count() + static_cast<double>(localTime().tm_gmtoff) +
           daysBefore1970 * secondsOfDay;
}

int SystemClock::year() {
    return localTime().tm_year + 1900;
}

} // namespace veldara
