#include "cli/pdf_poster.h"

#include "cli/progress_line.h"
#include "platform/error.h"
#include "platform/text/file_name.h"
#include "platform/text/path_text.h"
#include "sheets/poster_pdf.h"
#include "sheets/sheet_job.h"
#include "sheets/sheet_numbers.h"

namespace veldara {
namespace {

std::vector<int> chosenNumbers(const std::string& text, const PosterLayout& layout) {
    try {
        return readSheetNumbers(text, layout.tilesWide * layout.tilesHigh);
    } catch (const Error& error) {
        throw WrongOption("--sheets: " + std::string(error.what()));
    }
}

void note(const std::string& text, const Options& options, Console& console) {
    if (!options.quiet && !text.empty()) {
        console.complain("veldara-tiles: " + text + "\n");
    }
}

} // namespace

PdfPlan planPdf(const JobPlan& plan, const Options& options) {
    PdfPlan pdf;
    pdf.file = textPath(options.pdf);
    if (const std::string problem = fileNameProblem(pathText(pdf.file.filename()));
        !problem.empty()) {
        throw Error(problem + ": give another --pdf.");
    }
    std::optional<EdgeTrims> trims;
    if (plan.clip) {
        trims = edgeTrims(*plan.clip);
    }
    pdf.job = sheetJob(plan.paper, plan.units, plan.poster.layout, trims,
                       pathText(textPath(plan.photoFile).filename()), plan.figures.size);
    pdf.job.choices.overlap = pointsOf(options.overlap, options.units);
    pdf.job.choices.marks = options.marks;
    pdf.job.choices.labels = !options.noLabels;
    pdf.job.choices.guide = !options.noGuide;
    pdf.job.choices.sheets = chosenNumbers(options.sheets, plan.poster.layout);
    if (pdf.job.choices.guide) {
        pdf.pages.push_back({0, pdf.job.paperWidth, pdf.job.paperHeight, {}, {}});
    }
    for (const int number : chosenSheets(pdf.job)) {
        const SheetPlace place = sheetPlace(pdf.job, number);
        pdf.pages.push_back(
            {number, pdf.job.paperWidth, pdf.job.paperHeight, place.own, place.ownPhoto});
    }
    return pdf;
}

void noteOverlapProblem(const PdfPlan& plan, const Options& options, Console& console) {
    note(overlapProblem(plan.job).value_or(""), options, console);
}

bool writePdfPoster(const PdfPlan& plan, const Options& options, Console& console) {
    PdfRun run({textPath(options.photo), options.rotation, plan.job, plan.file});
    {
        ProgressLine progress(console, !options.quiet);
        do {
            progress.show(run.written(), run.sheets());
            if (console.interrupted()) {
                return false;
            }
        } while (!run.waitDone(std::chrono::milliseconds(50)));
    }
    note(run.result(), options, console);
    return true;
}

} // namespace veldara
