// Work that a library does in one piece, and that its caller need not wait for when it is asked to
// stop.
#pragma once

#include "platform/stop_flag.h"

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace veldara {

class StoppableWork {
  public:
    StoppableWork() = default;
    StoppableWork(const StoppableWork&) = delete;
    StoppableWork& operator=(const StoppableWork&) = delete;

    // Waits for the work that was left.
    ~StoppableWork() { waitForLeft(); }

    // Runs the work on a thread of its own; returns or throws what it does. Throws WorkStopped soon
    // after `stop` is set: the work is asked to stop, too, by the flag that it is given, and left
    // to end by itself. So what it refers to must be its own. Only one is left at a time, so no
    // more than two hold memory: whoever would leave another one waits for it first.
    template <class Result>
    Result run(std::function<Result(const StopFlag& stop)> work, const StopFlag& stop) {
        auto own = std::make_shared<StopFlag>();
        std::packaged_task<Result()> task([own, work = std::move(work)] { return work(*own); });
        std::future<Result> result = task.get_future();
        std::thread thread(std::move(task));
        while (result.wait_for(betweenLooks) == std::future_status::timeout) {
            if (stop.isSet()) {
                own->set();
                leave(std::move(thread));
                throw WorkStopped();
            }
        }
        thread.join();
        return result.get();
    }

  private:
    static constexpr std::chrono::milliseconds betweenLooks{10};

    void leave(std::thread thread) {
        const std::lock_guard lock(mutex_);
        waitForLeft();
        left_ = std::move(thread);
    }
    void waitForLeft() {
        if (left_.joinable()) {
            left_.join();
        }
    }

    std::mutex mutex_;
    std::thread left_;
};

} // namespace veldara
