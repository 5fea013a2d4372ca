// How the main window prints: the poster, and for the calibration dialog its test image.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "platform/error.h"
#include "printing/print_messages.h"
#include "printing/test_image_sheet.h"
#include "sheets/sheet_job.h"

namespace veldara {

void frmMain::mnuPrint_Click() {
    if (!posterCanBeMade()) {
        return;
    }
    const std::optional<SheetJob> job = sheets_.storedJob();
    if (!job) {
        platform_.dialogs.showMessage(invalidPosterMessage());
    } else if (printSheets(*job)) {
        sheets_.SaveDocument(*job);
    }
}

bool frmMain::printSheets(const SheetJob& job) {
    const SheetsToPrint sheets{job.photoName, job, photo_.image, photoPath(), photoTurn()};
    return printing_.print(sheets, noPrinterQuestion()) == PrintEnd::wantsFile;
}

bool frmMain::printTestImage(std::shared_ptr<const Image> image) {
    SheetsToPrint sheets;
    sheets.title = "Edge_Test_Image";
    try {
        const SheetJob paper =
            sheetJob(currentPaperRecord(), unitsOf(iCurUnits), {}, std::nullopt, sheets.title, "");
        sheets.job = testImageJob(paper, image->width(), image->height());
    } catch (const Error& error) {
        platform_.dialogs.showMessage(errorMessage(error.what()));
        return false;
    }
    sheets.picture = std::move(image);
    return printing_.print(sheets, noPrinterForTestImageMessage()) == PrintEnd::wantsFile;
}

} // namespace veldara
