#include "platform/error.h"
#include "platform/stoppable_work.h"

#include <atomic>
#include <future>
#include <optional>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

// Work that goes on until it is let go, as a library does that does not look at the flag.
class Held {
  public:
    std::function<bool(const StopFlag&)> work() {
        return [state = state_](const StopFlag& stop) {
            state->begun.set_value();
            state->gate.get_future().wait();
            state->askedToStop = stop.isSet();
            state->ended = true;
            return true;
        };
    }
    void waitUntilBegun() { state_->begun.get_future().wait(); }
    void letGo() { state_->gate.set_value(); }
    bool ended() const { return state_->ended; }
    bool askedToStop() const { return state_->askedToStop; }

  private:
    struct State {
        std::promise<void> begun;
        std::promise<void> gate;
        std::atomic<bool> ended = false;
        std::atomic<bool> askedToStop = false;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

TEST(StoppableWork, ReturnsAndThrowsWhatTheWorkDoes) {
    StoppableWork works;
    const StopFlag nobody;
    EXPECT_EQ(works.run<std::string>([](const StopFlag&) { return "done"; }, nobody), "done");
    EXPECT_THROW(works.run<int>([](const StopFlag&) -> int { throw Error("not so"); }, nobody),
                 Error);
}

TEST(StoppableWork, IsLeftInItsMidstAndEndsBeforeItsOwner) {
    Held held;
    std::optional<StoppableWork> works(std::in_place);
    StopFlag stop;
    std::thread user([&] {
        held.waitUntilBegun();
        stop.set();
    });
    EXPECT_THROW(works->run(held.work(), stop), WorkStopped);
    user.join();
    EXPECT_FALSE(held.ended());
    const StopFlag nobody;
    EXPECT_EQ(works->run<int>([](const StopFlag&) { return 7; }, nobody), 7); // beside it
    held.letGo();
    works.reset();
    EXPECT_TRUE(held.ended());
    EXPECT_TRUE(held.askedToStop());
}

TEST(StoppableWork, IsNotLeftBesideAnotherOne) {
    Held first;
    Held second;
    StoppableWork works;
    StopFlag stop;
    stop.set();
    EXPECT_THROW(works.run(first.work(), stop), WorkStopped);
    std::thread user([&] {
        second.waitUntilBegun();
        first.letGo();
    });
    EXPECT_THROW(works.run(second.work(), stop), WorkStopped);
    EXPECT_TRUE(first.ended());
    EXPECT_FALSE(second.ended());
    user.join();
    second.letGo();
}

} // namespace
} // namespace veldara::test
