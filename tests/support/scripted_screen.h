// A screen without pixels. It records what was shown and hidden; where a window is shown modally it
// plays the user that the test has queued for it.
#pragma once

#include "controls/window.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {

class ScriptedScreen : public Screen {
  public:
    using User = std::function<void(Window&)>;

    std::vector<std::string> log; // "show frmMsg", "modal frmBtm", "hide frmBtm", "end program"
    bool programEnded = false;
    Window* lastShown = nullptr; // beside the others

    // The next window that is shown modally must have this name; the user acts on it and must
    // leave it hidden or unloaded.
    void whenModal(const std::string& name, User user) {
        users_.push_back({name, std::move(user)});
    }

    // True when every queued user has had a window to act on.
    bool allUsersPlayed() const { return users_.empty(); }

    void show(Window& window) override {
        log.push_back("show " + window.name());
        lastShown = &window;
    }
    void hide(Window& window) override { log.push_back("hide " + window.name()); }

    void showModal(Window& window) override {
        log.push_back("modal " + window.name());
        if (users_.empty()) {
            ADD_FAILURE() << window.name() << " was shown modally and no user was expected for it";
        } else {
            const Expected expected = users_.front();
            users_.pop_front();
            EXPECT_EQ(window.name(), expected.name) << "another window was to be shown modally";
            if (window.name() == expected.name) {
                expected.user(window);
                EXPECT_FALSE(window.visible()) << "the user left " << window.name() << " open";
            }
        }
        leave(window);
    }

    void endProgram() override {
        programEnded = true;
        log.push_back("end program");
    }

  private:
    struct Expected {
        std::string name;
        User user;
    };

    // A test that went wrong must not hang in, or carry on beside, an open modal window.
    static void leave(Window& window) {
        if (window.visible()) {
            window.userClose();
        }
        if (window.visible()) {
            window.unload();
        }
    }

    std::deque<Expected> users_;
};

} // namespace veldara::test
