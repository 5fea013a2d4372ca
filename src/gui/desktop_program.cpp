#include "gui/desktop_program.h"

#include <utility>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace veldara {
namespace {

// A preview of some megabytes is made again at each movement of the pointer. Left to itself, the C
// library returns its memory to the system every time, which has to clear it for the next one.
// These are the limits that the library itself grows to with larger blocks; whole photos are above
// them.
void keepMemoryOfPreviews() {
#ifdef __GLIBC__
    constexpr int largestBlock = 32 << 20;
    mallopt(M_MMAP_THRESHOLD, largestBlock);
    mallopt(M_TRIM_THRESHOLD, 2 * largestBlock);
#endif
}

} // namespace

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
    keepMemoryOfPreviews();
    screen_.onEnd = std::move(onEnd);
}

DesktopProgram::~DesktopProgram() {
    screen_.onEnd = {};
    printing_->onStopped = {};
    screen_.clear();
}

} // namespace veldara
