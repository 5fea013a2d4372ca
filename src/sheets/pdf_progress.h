// Waits for a document that is being written, with the progress window before the others.
#pragma once

#include "output/frmMsg.h"
#include "platform/platform.h"
#include "sheets/poster_pdf.h"

#include <string>

namespace veldara {

// doing: what the window says of each sheet, for example "Writing". The window stays open. Returns
// and throws what PdfRun::result does.
std::string finishWithProgress(PdfRun& run, const std::string& doing, Platform& platform,
                               frmMsg& progress);

} // namespace veldara
