#include "sheets/pdf_progress.h"

#include <algorithm>
#include <chrono>

namespace veldara {
namespace {

constexpr std::chrono::milliseconds reportInterval{20};

} // namespace

std::string finishWithProgress(PdfRun& run, const std::string& doing, Platform& platform,
                               frmMsg& progress) {
    const std::string sheets = std::to_string(run.sheets());
    progress.bAllowCancel = true;
    progress.ShowProgressBar(doing + " sheet 1 of " + sheets);
    bool done = false;
    while (!done) {
        platform.eventPump.runWhileServing([&] { done = run.waitDone(reportInterval); });
        if (progress.bCancel) {
            run.cancel();
        }
        const std::size_t written = run.written();
        progress.lblMsg.setCaption(doing + " sheet " +
                                   std::to_string(std::min(written + 1, run.sheets())) + " of " +
                                   sheets);
        // Not quite full before the file is in its place.
        progress.SetProgressVal(0.99 * static_cast<double>(written) /
                                static_cast<double>(run.sheets()));
    }
    return run.result();
}

} // namespace veldara
