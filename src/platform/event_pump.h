// Lets the window live while the program works.
#pragma once

#include <functional>

namespace veldara {

class EventPump {
  public:
    virtual ~EventPump() = default;

    // Lets the pending window events run once.
    virtual void doEvents() = 0;

    // Runs work that touches no window on another thread, and lets window events run until it is
    // done; then throws here what it threw there. To its caller it is one call like any other.
    virtual void runWhileServing(const std::function<void()>& work) = 0;
};

} // namespace veldara
