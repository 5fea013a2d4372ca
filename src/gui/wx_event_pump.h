// Lets the real windows live while the program works: they are painted and their timers run. What
// the user clicks and types meanwhile is delivered, or kept for afterwards where the open windows
// could not deal with it.
#pragma once

#include "platform/event_pump.h"

#include <functional>
#include <vector>

namespace veldara {

class WxEventPump : public EventPump {
  public:
    void doEvents() override;
    void runWhileServing(const std::function<void()>& work) override;

    // True while work runs that defers the user's input.
    bool keepsInputBack() const { return depth_ > 0 && !(wantsInput && wantsInput()); }

    // Runs an action of the user's at once, or after the work that defers input.
    void afterWork(std::function<void()> act);

    // Asked while work runs: whether the user's input is handled now.
    std::function<bool()> wantsInput;

  private:
    void serveOnce();
    void runDeferred();

    int depth_ = 0;
    std::vector<std::function<void()>> deferred_;
};

} // namespace veldara
