// The poster as one document, as the command line asks for it.
#pragma once

#include "cli/console.h"
#include "cli/job_plan.h"
#include "cli/options.h"
#include "sheets/sheet_layout.h"

#include <filesystem>
#include <string>
#include <vector>

namespace veldara {

// A page of the document as the plan tells it.
struct PlannedPage {
    int tile = 0;     // counted from 1; 0: the guide
    double width = 0; // points
    double height = 0;
    PageRect own;       // points from the page's top left corner; of a tile's page
    PhotoRect ownPhoto; // pixels of the turned photo, before the tile is turned on its side
};

struct PdfPlan {
    std::filesystem::path file;
    SheetJob job;
    std::vector<PlannedPage> pages;
};

// Throws WrongOption for sheets that the poster does not have, Error when no document can be made.
PdfPlan planPdf(const JobPlan& plan, const Options& options);

// On standard error, when the margins are too narrow for the overlap.
void noteOverlapProblem(const PdfPlan& plan, const Options& options, Console& console);

// Writes the document, and says what the person should know of it. False when it was interrupted.
// Throws Error.
bool writePdfPoster(const PdfPlan& plan, const Options& options, Console& console);

} // namespace veldara
