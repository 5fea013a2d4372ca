// How long the window is without an answer while it loads, redraws and saves a 24-megapixel photo.
// The figures are printed; what they should be depends on the machine. Beside each stands how long
// the window thread itself was at work in one go, which other programs do not lengthen. Only what
// anybody would call a frozen window fails.
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "gui/wx_event_pump.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <future>
#include <iostream>
#include <memory>
#ifdef __WXMSW__
#include <wx/msw/wrapwin.h>
#else
#include <ctime>
#endif

#include <gtest/gtest.h>
#include <wx/timer.h>

namespace veldara::test {

namespace {

using Clock = std::chrono::steady_clock;

// More than ten times the longest gap on a machine that is busy with other work.
constexpr double frozen = 3000; // milliseconds

// Processor time of the calling thread.
double threadMilliseconds() {
#ifdef __WXMSW__
    FILETIME created;
    FILETIME ended;
    FILETIME kernel;
    FILETIME used;
    GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &used);
    const auto milliseconds = [](const FILETIME& time) {
        return (double(time.dwHighDateTime) * 4294967296.0 + double(time.dwLowDateTime)) / 1e4;
    };
    return milliseconds(kernel) + milliseconds(used);
#else
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
#endif
}

// A timer of the window thread that notes the longest time between two of its ticks.
class Heartbeat : public wxTimer {
  public:
    void Notify() override {
        const Clock::time_point now = Clock::now();
        const double work = threadMilliseconds();
        longest_ = std::max(longest_, Milliseconds(now - last_).count());
        longestWork_ = std::max(longestWork_, work - lastWork_);
        last_ = now;
        lastWork_ = work;
        ++beats_;
    }

    void begin() {
        last_ = Clock::now();
        lastWork_ = threadMilliseconds();
        longest_ = 0;
        longestWork_ = 0;
        beats_ = 0;
        Start(5);
    }

    void end() {
        Notify();
        Stop();
    }

    double longest() const { return longest_; }
    double longestWork() const { return longestWork_; }
    int beats() const { return beats_; }

  private:
    Clock::time_point last_;
    double lastWork_ = 0;
    double longest_ = 0;
    double longestWork_ = 0;
    int beats_ = 0;
};

class Measured {
  public:
    explicit Measured(Driver& user) : user_(user) {
        user_.onWindowThread([this] { heartbeat_ = std::make_unique<Heartbeat>(); });
    }
    ~Measured() {
        try {
            user_.onWindowThread([this] { heartbeat_.reset(); });
        } catch (const std::exception& error) { // the timer belongs to a thread that is stuck
            std::cerr << error.what() << std::endl;
            std::abort();
        }
    }

    template <typename Act>
    void run(const std::string& what, Act act) {
        user_.onWindowThread([this] { heartbeat_->begin(); });
        act();
        user_.onWindowThread([this] { heartbeat_->end(); });
        beats = heartbeat_->beats();
        std::cout << "longest gap while " << what << ": " << heartbeat_->longest() << " ms, of it "
                  << "at work " << heartbeat_->longestWork() << " ms (" << beats << " beats)\n";
        EXPECT_LT(heartbeat_->longest(), frozen) << "the window was frozen while " << what;
    }

    int beats = 0;

  private:
    Driver& user_;
    std::unique_ptr<Heartbeat> heartbeat_;
};

// Work that ends when an event has been served while it runs; for the window thread only.
void workThroughAnEvent(WxEventPump& pump, const std::function<void()>& act) {
    std::promise<void> served;
    std::future<void> event = served.get_future();
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
        act();
        served.set_value();
    });
    timer.StartOnce(1);
    pump.runWhileServing(
        [&] { EXPECT_EQ(event.wait_for(std::chrono::seconds(30)), std::future_status::ready); });
}

TEST(Responsiveness, EventsAreServedWhileWorkRuns) {
    Driver user;
    user.onWindowThread([] {
        WxEventPump pump;
        workThroughAnEvent(pump, [] {});
    });
}

TEST(Responsiveness, WhatWaitsForTheWorkIsDoneAfterIt) {
    Driver user;
    auto done = std::make_shared<std::promise<void>>();
    std::future<void> after = done->get_future();
    user.onWindowThread([&] {
        WxEventPump pump;
        workThroughAnEvent(pump, [&] { pump.afterWork([done] { done->set_value(); }); });
        EXPECT_EQ(after.wait_for(std::chrono::seconds(0)), std::future_status::timeout)
            << "not before the caller's own handler has ended";
    });
    EXPECT_EQ(after.wait_for(std::chrono::seconds(30)), std::future_status::ready);
}

TEST(Responsiveness, WindowLivesWhileA24MegapixelPhotoIsWorkedOn) {
    Stage stage;
    writeJpeg(stage.photos() / "large.jpg", 6000, 4000);
    stage.store("paperRegLine", letterLine);
    stage.store("prefs_numTiles", "w02h01");
    stage.start();
    Driver& user = stage.user();
    Measured measured(user);

    measured.run("loading", [&] { stage.pickPhoto("large.jpg"); });
    EXPECT_GT(measured.beats, 5);

    const wxSize box = user.sizeOf("frmMain", "picCur");
    measured.run("dragging the crop", [&] {
        user.drag("frmMain", "picCur", {box.x / 2, box.y / 2}, {box.x / 2 + 60, box.y / 2});
        user.drag("frmMain", "picCur", {box.x / 2, box.y / 2}, {box.x / 2 - 90, box.y / 2});
    });
    measured.run("zooming", [&] { user.dragSlider("frmMain", "scrZoom", 100); });
    measured.run("turning the photo", [&] {
        user.choose("frmMain", "cmbRotate", 3);
        user.pause(std::chrono::milliseconds(800));
    });
    measured.run("opening the full-screen preview", [&] {
        user.click("frmMain", "cmdLargePreview");
        user.waitForWindow("frmPreview");
        user.pause(std::chrono::milliseconds(800));
        user.key(WXK_ESCAPE);
        user.waitForWindowToGo("frmPreview");
    });
    measured.run("saving", [&] {
        user.click("frmMain", "cmdSaveNow");
        user.click("frmSaveTiles", "cmdSaveNow");
        user.waitForWindow("frmSimpleMsg");
    });
    EXPECT_GT(measured.beats, 5);
    user.click("frmSimpleMsg", "cmdOk");
    user.waitForWindowToGo("frmSimpleMsg");
}

} // namespace

} // namespace veldara::test
