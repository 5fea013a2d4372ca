#include "sheets/pdf_progress.h"

#include <algorithm>
#include <chrono>

namespace veldara {
namespace {

constexpr std::chrono::milliseconds reportInterval{20};

} // namespace

std::string finishWithProgress(PdfRun& run, const std::string& doing, Platform& platform,
                               frmMsg& progress) {
    const auto caption = [&](std::size_t sheet) {
        return doing + " sheet " + std::to_string(sheet) + " of " + std::to_string(run.sheets());
    };
    progress.bAllowCancel = true;
    progress.ShowProgressBar(caption(1));
    std::size_t shown = 0;
    bool done = false;
    while (!done) {
        platform.eventPump.runWhileServing([&] { done = run.waitDone(reportInterval); });
        if (progress.bCancel) {
            run.cancel();
            continue;
        }
        const std::size_t written = run.written();
        if (written == shown) {
            continue;
        }
        shown = written;
        progress.lblMsg.setCaption(caption(std::min(written + 1, run.sheets())));
        // Not quite full before the file is in its place.
        progress.SetProgressVal(0.99 * static_cast<double>(written) /
                                static_cast<double>(run.sheets()));
    }
    return run.result();
}

} // namespace veldara
