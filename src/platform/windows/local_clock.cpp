#include "platform/windows/local_clock.h"

#include <windows.h>

namespace veldara {

double LocalClock::seconds() {
    constexpr double ticksOfSecond = 1e7;
    constexpr double secondsOfDay = 86400;
    constexpr double daysFrom1601 = 109205; // to 30 December 1899
    FILETIME universal{};
    FILETIME local{};
    GetSystemTimePreciseAsFileTime(&universal);
    FileTimeToLocalFileTime(&universal, &local);
    const ULARGE_INTEGER ticks{{local.dwLowDateTime, local.dwHighDateTime}};
    return static_cast<double>(ticks.QuadPart) / ticksOfSecond - daysFrom1601 * secondsOfDay;
}

int LocalClock::year() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return now.wYear;
}

} // namespace veldara
