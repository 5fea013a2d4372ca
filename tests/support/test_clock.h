// A clock that stands still until a test moves it, and drives the timers that it was given.
#pragma once

#include "controls/controls.h"
#include "platform/clock.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace veldara::test {

class TestClock : public Clock {
  public:
    double now = 4'000'000'000.0; // seconds
    int currentYear = 2026;

    double seconds() override { return now; }
    int year() override { return currentYear; }

    // From now on advance() ticks the timer. The timer must outlive the last advance().
    void drive(Timer& timer) { timers_.push_back({&timer, 0}); }

    // Lets time pass in steps of a millisecond; each enabled timer ticks when its interval is full.
    // A timer starts counting when advance() first sees it enabled.
    void advance(int milliseconds) {
        const double start = now;
        for (int i = 1; i <= milliseconds; ++i) {
            now = start + i / 1000.0;
            for (std::size_t t = 0; t < timers_.size(); ++t) {
                tickWhenDue(t);
            }
        }
    }

  private:
    struct Driven {
        Timer* timer;
        int elapsed;
    };

    void tickWhenDue(std::size_t index) {
        Timer& timer = *timers_[index].timer;
        if (!timer.enabled() || timer.interval() <= 0) {
            timers_[index].elapsed = 0;
            return;
        }
        if (++timers_[index].elapsed >= timer.interval()) {
            timers_[index].elapsed = 0;
            timer.tick();
        }
    }

    std::vector<Driven> timers_;
};

} // namespace veldara::test
