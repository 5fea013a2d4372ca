#include "gui/desktop_program.h"

#include <utility>

namespace veldara {

DesktopProgram::DesktopProgram(std::function<void()> onEnd)
    : screen_(pump_), dialogs_([this] { return screen_.dialogParent(); }),
      printing_(makePrintSystem([this] { return screen_.dialogParent(); }, pump_)),
      platform_(system_.with(dialogs_, pump_, *printing_)),
      main_(
          platform_, screen_,
          [this](const std::filesystem::path& photo, const StopFlag& stop) {
              return decoding_.run<Image>(
                  [photo](const StopFlag& own) { return loadImage(photo, own); }, stop);
          },
          realPhotoCopy(decoding_)) {
    screen_.onEnd = std::move(onEnd);
}

DesktopProgram::~DesktopProgram() {
    screen_.onEnd = {};
    printing_->onStopped = {};
    screen_.clear();
}

} // namespace veldara
