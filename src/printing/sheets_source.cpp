#include "printing/sheets_source.h"

#include "platform/files/whole_file.h"
#include "platform/image/codec.h"
#include "printing/print_messages.h"
#include "sheets/page_picture.h"
#include "sheets/pdf_progress.h"

#include <new>

namespace veldara {

SheetsSource::SheetsSource(const SheetsToPrint& sheets, Platform& platform, frmMsg& progress)
    : sheets_(sheets), platform_(platform), progress_(progress), pages_(posterPages(sheets.job)) {}

void SheetsSource::writeDocument(const std::filesystem::path& file) {
    std::filesystem::path photo = sheets_.photo;
    if (photo.empty()) { // beside the document, in a folder that the print system takes away
        photo = file;
        photo.replace_extension(".tif");
        platform_.eventPump.runWhileServing([&] {
            writeWholeFile(photo, encodeImage(sheets_.picture->view(), TileFormat::tiff, 0, {}));
        });
    }
    try {
        PdfRun run({photo, sheets_.rotation, sheets_.job, file});
        finishWithProgress(run, "Printing", platform_, progress_);
    } catch (const PdfCanceled&) {
        throw PrintCanceled();
    }
    if (progress_.bCancel) { // when the last sheet had been written
        throw PrintCanceled();
    }
    // From here on the system has the sheets.
    progress_.bAllowCancel = false;
    progress_.SetMode(progressMode);
    progress_.lblMsg.setCaption(handingOverText());
    platform_.eventPump.doEvents();
}

void SheetsSource::beginPage(std::size_t page) {
    if (page == 0) {
        progress_.bAllowCancel = true;
        progress_.ShowProgressBar(printingText(1, pages_.size()));
    }
    progress_.lblMsg.setCaption(printingText(page + 1, pages_.size()));
    progress_.SetProgressVal(0.99 * static_cast<double>(page) / static_cast<double>(pages_.size()));
    if (progress_.bCancel) {
        throw PrintCanceled();
    }
}

Image SheetsSource::drawBand(std::size_t page, const PageBand& band) {
    Image drawn;
    const PhotoPicture photo{sheets_.picture, sheets_.job.layout.photoWidth,
                             sheets_.job.layout.photoHeight};
    platform_.eventPump.runWhileServing([&] {
        drawn = drawPageBand(pages_.at(page), photo, band.dotsPerInch, band.firstRow, band.rows);
    });
    if (progress_.bCancel) {
        throw PrintCanceled();
    }
    return drawn;
}

} // namespace veldara
