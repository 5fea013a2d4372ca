// A request to end long work before its time, made by one thread and seen by another.
#pragma once

#include <atomic>

namespace veldara {

// Thrown by work that was asked to stop. Nothing has failed, so it is no Error.
struct WorkStopped {};

class StopFlag {
  public:
    void set() noexcept { set_ = true; }
    void clear() noexcept { set_ = false; }
    bool isSet() const noexcept { return set_; }

    // Throws WorkStopped when it is set.
    void check() const {
        if (isSet()) {
            throw WorkStopped();
        }
    }

  private:
    std::atomic<bool> set_ = false;
};

} // namespace veldara
