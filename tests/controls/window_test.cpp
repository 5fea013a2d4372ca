#include "controls/watch.h"
#include "controls/window.h"
#include "support/scripted_screen.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

class LoggingWindow : public Window {
  public:
    LoggingWindow(std::string name, ScriptedScreen& screen)
        : Window(std::move(name), screen), log_(screen.log) {}
    bool loadFails = false;

  protected:
    void loadHandler() override {
        log_.push_back("load");
        if (loadFails) {
            throw std::runtime_error("load");
        }
    }
    void unloadHandler() override { log_.push_back("unload"); }

  private:
    Log& log_;
};

class AWindow : public ::testing::Test {
  protected:
    ScriptedScreen screen;
    LoggingWindow window{"frmTest", screen};
};

TEST_F(AWindow, StartsNeitherLoadedNorVisible) {
    EXPECT_FALSE(window.loaded());
    EXPECT_FALSE(window.visible());
    EXPECT_EQ(window.name(), "frmTest");
}

TEST_F(AWindow, IsLoadedOnceUntilItIsUnloaded) {
    window.load();
    window.load();
    window.show();
    window.show();
    EXPECT_EQ(screen.log, (Log{"load", "show frmTest"}));
    window.unload();
    window.unload();
    EXPECT_EQ(screen.log, (Log{"load", "show frmTest", "unload", "hide frmTest"}));
    window.load();
    EXPECT_EQ(screen.log.back(), "load");
}

TEST_F(AWindow, StaysLoadedWhileItIsHidden) {
    window.show();
    window.hide();
    window.hide();
    EXPECT_TRUE(window.loaded());
    window.show();
    EXPECT_EQ(screen.log, (Log{"load", "show frmTest", "hide frmTest", "show frmTest"}));
}

TEST_F(AWindow, UnloadedWithoutHavingBeenShownLeavesTheScreenAlone) {
    window.load();
    window.unload();
    EXPECT_EQ(screen.log, (Log{"load", "unload"}));
}

TEST_F(AWindow, ShownModallyComesBackWhenTheUserHasClosedIt) {
    screen.whenModal("frmTest", [](Window& shown) {
        EXPECT_TRUE(shown.visible());
        shown.userClose();
    });
    window.showModal();
    EXPECT_FALSE(window.visible());
    EXPECT_FALSE(window.loaded());
    EXPECT_TRUE(screen.allUsersPlayed());
    EXPECT_EQ(screen.log, (Log{"load", "modal frmTest", "unload", "hide frmTest"}));
}

TEST_F(AWindow, WhoseLoadFailedRunsItsHandlerAgain) {
    window.loadFails = true;
    EXPECT_THROW(window.show(), std::runtime_error);
    EXPECT_FALSE(window.loaded());
    EXPECT_FALSE(window.visible());
    window.loadFails = false;
    window.show();
    EXPECT_TRUE(window.visible());
}

TEST_F(AWindow, TellsItsObserverOfThePointerOnce) {
    Watch watch(window);
    window.setPointer(Pointer::hourglass);
    window.setPointer(Pointer::hourglass);
    EXPECT_EQ(watch.taken(), Log{"pointer"});
    EXPECT_EQ(window.pointer(), Pointer::hourglass);
}

TEST_F(AWindow, CanUnloadItselfFromItsUnloadHandler) {
    class Twice : public Window {
      public:
        using Window::Window;
        int unloads = 0;

      protected:
        void unloadHandler() override {
            ++unloads;
            unload();
        }
    };
    Twice twice("frmTwice", screen);
    twice.show();
    twice.userClose();
    EXPECT_EQ(twice.unloads, 1);
}

} // namespace
} // namespace veldara::test
