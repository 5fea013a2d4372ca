// The time of day, behind an interface so that tests can set it.
#pragma once

namespace veldara {

class Clock {
  public:
    virtual ~Clock() = default;
    virtual double seconds() = 0; // current date-time in days times 86400
    virtual int year() = 0;       // four digits, of the system's local time
};

} // namespace veldara
