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

    // True while work runs during which the user's acts are kept back.
    bool keepsInputBack() const { return depth_ > 0 && !(wantsInput && wantsInput()); }

    // Runs an act of the user's: at once, or after the work that keeps such acts back.
    void afterWork(std::function<void()> act);

    // Asked while work runs: whether the user's acts are wanted now.
    std::function<bool()> wantsInput;

  private:
    void serveOnce();
    void runPutOff();

    int depth_ = 0;
    std::vector<std::function<void()>> putOff_;
};

} // namespace veldara
