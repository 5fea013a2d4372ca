// The computer's clock.
#pragma once

#include "platform/clock.h"

namespace veldara {

class LocalClock : public Clock {
  public:
    // Counted from the last days of 1899, as date numbers are, in local time.
    double seconds() override;
    int year() override;
};

} // namespace veldara
