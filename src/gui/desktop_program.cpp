#include "gui/desktop_program.h"

#include <utility>

namespace veldara {

DesktopProgram::DesktopProgram(std::function<void()> onEnd)
    : screen_(pump_), dialogs_([this] { return screen_.dialogParent(); }),
      platform_(system_.with(dialogs_, pump_)), main_(platform_, screen_) {
    screen_.onEnd = std::move(onEnd);
}

DesktopProgram::~DesktopProgram() {
    screen_.onEnd = {};
    screen_.clear();
}

} // namespace veldara
