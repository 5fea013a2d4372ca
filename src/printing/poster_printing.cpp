#include "printing/poster_printing.h"

#include "controls/scoped_flag.h"
#include "output/save_messages.h"
#include "platform/error.h"
#include "printing/print_check.h"
#include "printing/print_messages.h"
#include "printing/sheet_ranges.h"
#include "printing/sheets_source.h"

#include <exception>
#include <new>
#include <optional>

namespace veldara {
namespace {

constexpr const char* printerName = "printer"; // of the stored value

} // namespace

PosterPrinting::PosterPrinting(Platform& platform, StoredChoices& choices, frmMsg& progress)
    : platform_(platform), choices_(choices), progress_(progress) {}

PrintEnd PosterPrinting::print(const SheetsToPrint& sheets, const Message& noPrinter) {
    if (running_) {
        return PrintEnd::notPrinted;
    }
    const ScopedFlag flag(running_);
    try {
        return ask(sheets, noPrinter);
    } catch (const PrintCanceled&) {
        progress_.unload();
        platform_.dialogs.showMessage(canceledMessage());
    } catch (const std::bad_alloc&) {
        progress_.unload();
        platform_.dialogs.showMessage(notPrintedMessage("there is not enough memory for them."));
    } catch (const std::exception& error) {
        progress_.unload();
        platform_.dialogs.showMessage(notPrintedMessage(error.what()));
    }
    return PrintEnd::notPrinted;
}

PrintEnd PosterPrinting::ask(const SheetsToPrint& sheets, const Message& noPrinter) {
    if (!platform_.printing.hasPrinters()) {
        return platform_.dialogs.showMessage(noPrinter) == Answer::yes ? PrintEnd::wantsFile
                                                                       : PrintEnd::notPrinted;
    }
    const SheetJob& job = sheets.job;
    const SheetRange wanted = sheetsWanted(job);
    const std::optional<PrintChoice> choice = platform_.printing.choosePrinter(
        {sheets.title, choices_.storedChoice(printerName), job.paperName, job.paperWidth,
         job.paperHeight, wanted.first, wanted.last});
    if (!choice) {
        return PrintEnd::notPrinted;
    }
    choices_.storeChoice(printerName, choice->printer.name);
    const std::optional<SheetJob> left = jobOfRanges(job, choice->ranges);
    if (!left) {
        platform_.dialogs.showMessage(noSuchSheetsMessage());
        return PrintEnd::notPrinted;
    }
    const PrintShortage shortage = printShortage(*left, choice->printer);
    if (!shortage.none() &&
        platform_.dialogs.showMessage(shortageQuestion(shortageText(
            shortage, *left, choice->printer.name, platform_.numberStyle))) != Answer::yes) {
        return PrintEnd::notPrinted;
    }
    SheetsToPrint chosen = sheets;
    chosen.job = *left;
    SheetsSource source(chosen, platform_, progress_);
    platform_.printing.print(source);
    progress_.unload();
    return PrintEnd::printed;
}

void PosterPrinting::jobStopped(const std::string& printer, const std::string& reason) {
    platform_.dialogs.showMessage(printerStoppedMessage(printer, reason));
}

} // namespace veldara
