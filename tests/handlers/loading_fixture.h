// The main window while a photo is loaded, turned or resampled.
#pragma once

#include "main_fixture.h"

#include <functional>
#include <memory>
#include <utility>

namespace veldara::test {

class LoadingAPhoto : public MainWindowTest {
  protected:
    void expectNoPhoto() const {
        EXPECT_FALSE(window->bImgSelected);
        EXPECT_FALSE(window->cmdSaveNow.enabled());
        EXPECT_FALSE(window->cmdLargePreview.enabled());
        EXPECT_FALSE(window->tmrLoadingImg.enabled());
        EXPECT_EQ(window->lblLrValue.caption(), "---");
        EXPECT_EQ(window->lblResolution.caption(), "---");
    }
    // What happens once while the loader works.
    void whileLoadingOnce(std::function<void()> act) {
        const auto done = std::make_shared<bool>(false);
        fakes.eventPump.whileServing = [done, act = std::move(act)] {
            if (!std::exchange(*done, true)) {
                act();
            }
        };
    }
};

} // namespace veldara::test
