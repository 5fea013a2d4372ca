#include "gui/wx_event_pump.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

#include <wx/app.h>
#include <wx/evtloop.h>

namespace veldara {

namespace {

// How long a finished event may wait to be served while work runs. The end of the work itself is
// seen at once.
constexpr std::chrono::milliseconds servingInterval{8};

// Work on another thread, and the news of its end.
class BackgroundWork {
  public:
    explicit BackgroundWork(const std::function<void()>& work)
        : thread_([this, &work] { run(work); }) {}
    ~BackgroundWork() { thread_.join(); }
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;

    bool waitFor(std::chrono::milliseconds time) {
        std::unique_lock lock(mutex_);
        return ended_.wait_for(lock, time, [this] { return done_; });
    }

    void rethrow() const {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

  private:
    void run(const std::function<void()>& work) {
        try {
            work();
        } catch (...) {
            failure_ = std::current_exception();
        }
        const std::lock_guard lock(mutex_);
        done_ = true;
        ended_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable ended_;
    bool done_ = false;
    std::exception_ptr failure_;
    std::thread thread_; // last: it uses the members above
};

class ScopedDepth {
  public:
    explicit ScopedDepth(int& depth) : depth_(depth) { ++depth_; }
    ~ScopedDepth() { --depth_; }
    ScopedDepth(const ScopedDepth&) = delete;
    ScopedDepth& operator=(const ScopedDepth&) = delete;

  private:
    int& depth_;
};

} // namespace

void WxEventPump::doEvents() {
    if (depth_ == 0) { // while work runs its own loop serves the windows
        wxTheApp->Yield(true);
    }
}

void WxEventPump::runWhileServing(const std::function<void()>& work) {
    BackgroundWork background(work);
    {
        const ScopedDepth depth(depth_);
        while (!background.waitFor(servingInterval)) {
            serveOnce();
        }
    }
    if (depth_ == 0) {
        runDeferred();
    }
    background.rethrow();
}

void WxEventPump::serveOnce() {
    wxEventLoopBase* loop = wxEventLoopBase::GetActive();
    if (loop == nullptr || loop->IsYielding()) {
        return;
    }
    const long kept = keepsInputBack() ? wxEVT_CATEGORY_USER_INPUT : 0;
    loop->YieldFor(wxEVT_CATEGORY_ALL & ~kept);
}

void WxEventPump::afterWork(std::function<void()> act) {
    if (!keepsInputBack()) {
        act();
    } else {
        deferred_.push_back(std::move(act));
    }
}

// Handed to the event loop, not run here: the caller's own handler has to end first.
void WxEventPump::runDeferred() {
    for (const std::function<void()>& act : deferred_) {
        wxTheApp->CallAfter(act);
    }
    deferred_.clear();
}

} // namespace veldara
