#include "sheets/frmSheets.h"

#include "output/save_messages.h"
#include "output/tile_files.h"
#include "platform/error.h"
#include "platform/text/path_text.h"
#include "sheets/assembled_poster.h"
#include "sheets/guide_page.h"
#include "sheets/page_picture.h"
#include "sheets/pdf_progress.h"
#include "sheets/poster_pdf.h"
#include "sheets/sheet_marks.h"
#include "sheets/sheet_numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldara {
namespace {

constexpr const char* overlapName = "sheet_overlap"; // micrometres: stored numbers are whole
constexpr double micrometres = 1000;                 // of a millimetre
constexpr int largestOverlap = 1270000;
constexpr const char* marksName = "sheet_marks";
constexpr const char* labelsName = "sheet_labels";
constexpr const char* guideName = "sheet_guide";
constexpr std::array<SheetMarks, 3> marks{SheetMarks::none, SheetMarks::corners, SheetMarks::lines};

} // namespace

frmSheets::frmSheets(Platform& platform, Screen& screen, SheetsOwner& owner, frmMsg& progress,
                     frmSimpleMsg& result)
    : Window("frmSheets", screen), platform_(platform), owner_(owner), progress_(progress),
      result_(result) {
    fillTexts();
    cmbShown.onClick = [this] { showPage(); };
    cmdPrevious.onClick = [this] { stepShown(-1); };
    cmdNext.onClick = [this] { stepShown(1); };
    picSheet.onResize = [this] { showPage(); };
    picPoster.onResize = [this] { showPage(); };
    cmbOverlap.onChange = [this] { choicesChanged(); };
    cmbMarks.onClick = [this] { choicesChanged(); };
    chkLabels.onClick = [this] { choicesChanged(); };
    chkGuide.onClick = [this] { choicesChanged(); };
    txtSheets.onChange = [this] { choicesChanged(); };
    cmdPrint.onClick = [this] { cmdPrint_Click(); };
    cmdSavePdf.onClick = [this] { cmdSavePdf_Click(); };
    cmdClose.onClick = [this] { unload(); };
}

void frmSheets::fillTexts() {
    setCaption("Sheets for Printing");
    lblShown.setCaption("Page:");
    cmdPrevious.setCaption("<");
    cmdPrevious.setToolTip("Show the page before this one");
    cmdNext.setCaption(">");
    cmdNext.setToolTip("Show the page after this one");
    cmbShown.setToolTip("The page that is shown");
    picSheet.setToolTip("The page as it will come out of the printer");
    lblPoster.setCaption("The sheets put together:");
    picPoster.setToolTip("The poster; dashed lines end the strips that lie under the next sheet");
    fraChoices.setCaption("On the Sheets");
    lblMarks.setCaption("Cutting marks:");
    cmbMarks.setToolTip("What to cut along");
    cmbMarks.setItems({"None", "At the corners", "Lines to cut along"});
    chkLabels.setCaption("Label in the margin");
    chkLabels.setToolTip("Say in the margin which sheet it is");
    chkGuide.setCaption("Page on printing and assembling");
    chkGuide.setToolTip("Begin with a page that tells how to print and put the sheets together");
    lblSheets.setCaption("Only these sheets:");
    txtSheets.setToolTip("Numbers and ranges such as 1-3,7; nothing means all");
    cmbOverlap.setToolTip("Width of the strip that the next sheet is glued on");
    cmdPrint.setCaption("Print...");
    cmdPrint.setToolTip("Print the sheets on a printer of this computer");
    cmdSavePdf.setCaption("Save PDF...");
    cmdSavePdf.setToolTip("Save all pages as one PDF");
    cmdClose.setCaption("Close");
}

bool frmSheets::Open() {
    try {
        job_ = owner_.posterSheets();
        if (job_) {
            sheetPlace(*job_, 1);
        }
    } catch (const Error&) {
        job_.reset();
    }
    if (!job_) {
        return false;
    }
    showModal();
    return true;
}

void frmSheets::loadHandler() {
    filling_ = true;
    lblOverlap.setCaption(job_ && job_->units == Units::millimetres ? "Overlap (mm):"
                                                                    : "Overlap (inches):");
    fillOverlaps();
    restoreChoices();
    txtSheets.setText("");
    filling_ = false;
    readChoices();
    fillShown();
}

void frmSheets::unloadHandler() {
    storeChoices();
}

void frmSheets::closeBox() {
    if (!writing_) {
        unload();
    }
}

void frmSheets::fillOverlaps() {
    const NumberStyle style = platform_.numberStyle;
    std::vector<std::string> items;
    const bool inches = job_ && job_->units == Units::inches;
    for (const double length : inches ? std::vector<double>{0, 0.125, 0.25, 0.375, 0.5}
                                      : std::vector<double>{0, 3, 5, 8, 10, 15}) {
        items.push_back(plainNumber(length, style));
    }
    cmbOverlap.setItems(items);
}

double frmSheets::storedOverlap() const {
    const int stored = readInteger(owner_.storedChoice(overlapName)).value_or(0);
    return std::clamp(stored, 0, largestOverlap) / micrometres;
}

int frmSheets::storedMarks() const {
    const int mark = readInteger(owner_.storedChoice(marksName)).value_or(1);
    return mark >= 0 && mark < cmbMarks.count() ? mark : 1;
}

std::optional<SheetJob> frmSheets::storedJob() const {
    try {
        std::optional<SheetJob> job = owner_.posterSheets();
        if (job) {
            sheetPlace(*job, 1);
            job->choices.overlap = storedOverlap() * pointsPerMillimetre;
            job->choices.marks = marks.at(static_cast<std::size_t>(storedMarks()));
            job->choices.labels = owner_.storedChoice(labelsName) != "0";
            job->choices.guide = owner_.storedChoice(guideName) != "0";
        }
        return job;
    } catch (const Error&) {
        return std::nullopt;
    }
}

void frmSheets::restoreChoices() {
    const bool inches = job_ && job_->units == Units::inches;
    const double overlap = storedOverlap() / (inches ? millimetresPerInch : 1);
    cmbOverlap.setText(plainNumber(std::round(overlap * 1000) / 1000, platform_.numberStyle));
    cmbMarks.setListIndex(storedMarks());
    chkLabels.setChecked(owner_.storedChoice(labelsName) != "0");
    chkGuide.setChecked(owner_.storedChoice(guideName) != "0");
}

void frmSheets::storeChoices() {
    if (const std::optional<double> overlap = readNumber(cmbOverlap.text(), platform_.numberStyle);
        overlap && *overlap >= 0 && job_) {
        const double factor = job_->units == Units::inches ? millimetresPerInch : 1;
        owner_.storeChoice(overlapName,
                           std::to_string(std::lround(
                               std::min(*overlap * factor * micrometres, 1.0 * largestOverlap))));
    }
    owner_.storeChoice(marksName, std::to_string(cmbMarks.listIndex()));
    owner_.storeChoice(labelsName, chkLabels.checked() ? "1" : "0");
    owner_.storeChoice(guideName, chkGuide.checked() ? "1" : "0");
}

void frmSheets::choicesChanged() {
    if (filling_ || !job_) {
        return;
    }
    readChoices();
    fillShown();
}

std::optional<SheetJob> frmSheets::chosenJob() const {
    return chosen_;
}

// What cannot be read leaves the last readable choices on the screen, and
// nothing to save.
void frmSheets::readChoices() {
    const std::optional<double> overlap = readNumber(cmbOverlap.text(), platform_.numberStyle);
    std::string note;
    SheetJob job = *job_;
    if (!overlap || *overlap < 0) {
        note = "The overlap is no length: write a number, 0 or more.";
    } else {
        job.choices.overlap = pointsOf(*overlap, job.units);
    }
    job.choices.marks = marks.at(static_cast<std::size_t>(std::max(cmbMarks.listIndex(), 0)));
    job.choices.labels = chkLabels.checked();
    job.choices.guide = chkGuide.checked();
    try {
        job.choices.sheets =
            readSheetNumbers(txtSheets.text(), job.layout.tilesWide * job.layout.tilesHigh);
    } catch (const Error& error) {
        note = error.what();
    }
    cmdSavePdf.setEnabled(note.empty());
    cmdPrint.setEnabled(note.empty());
    if (note.empty()) {
        note = overlapProblem(job, platform_.numberStyle).value_or("");
        chosen_ = job;
    }
    lblNote.setCaption(note);
}

// The pages that there are now; the page that was shown stays shown where it is
// still there.
void frmSheets::fillShown() {
    if (!chosen_) {
        return;
    }
    const std::string before = cmbShown.text();
    std::vector<std::string> items;
    if (chosen_->choices.guide) {
        items.emplace_back("Guide");
    }
    const int wide = chosen_->layout.tilesWide;
    for (const int number : chosenSheets(*chosen_)) {
        const SheetCell cell = sheetCell(number, wide);
        items.push_back("Sheet " + std::to_string(number) + ": row " +
                        std::to_string(cell.row + 1) + ", column " +
                        std::to_string(cell.column + 1));
    }
    if (items != cmbShown.items()) {
        const auto found = std::find(items.begin(), items.end(), before);
        const auto index = found == items.end() ? 0 : std::distance(items.begin(), found);
        cmbShown.setItems(items);
        cmbShown.setListIndex(static_cast<int>(index)); // shows it
    } else {
        showPage();
    }
}

int frmSheets::shownSheet() const {
    const int index = cmbShown.listIndex();
    const std::vector<int> sheets = chosenSheets(*chosen_);
    const int first = chosen_->choices.guide ? 1 : 0;
    if (index < first || index - first >= static_cast<int>(sheets.size())) {
        return 0;
    }
    return sheets[static_cast<std::size_t>(index - first)];
}

void frmSheets::showPage() {
    if (filling_ || !chosen_ || cmbShown.listIndex() < 0) {
        return;
    }
    cmdPrevious.setEnabled(cmbShown.listIndex() > 0);
    cmdNext.setEnabled(cmbShown.listIndex() + 1 < cmbShown.count());
    const int sheet = shownSheet();
    const PhotoPicture photo{owner_.smallPhoto(), chosen_->layout.photoWidth,
                             chosen_->layout.photoHeight};
    const auto show = [&](Picture& box, const SheetPage& page) {
        box.setPixels(
            box.width() < 1 || box.height() < 1
                ? nullptr
                : std::make_shared<const Image>(drawPage(page, photo, box.width(), box.height())));
    };
    try {
        show(picSheet, sheet == 0 ? guidePage(*chosen_) : sheetPage(*chosen_, sheet));
        show(picPoster, assembledPoster(*chosen_, sheet));
    } catch (const std::exception&) {
        picSheet.setPixels(nullptr); // no memory for the pictures: the document can still be saved
        picPoster.setPixels(nullptr);
    }
}

void frmSheets::stepShown(int by) {
    const int index = cmbShown.listIndex() + by;
    if (index >= 0 && index < cmbShown.count()) {
        cmbShown.setListIndex(index);
    }
}

// Events run while the document is written, and nothing that it is made of may
// change under it.
void frmSheets::setControlsEnabled(bool enabled) {
    Control* const controls[] = {&cmbShown, &cmbOverlap,  &cmbMarks, &chkLabels,
                                 &chkGuide, &txtSheets,   &cmdPrint, &cmdSavePdf,
                                 &cmdClose, &cmdPrevious, &cmdNext};
    for (Control* control : controls) {
        control->setEnabled(enabled);
    }
    if (enabled) {
        showPage(); // decides on the arrows
    }
}

std::string frmSheets::askForDocument() const {
    const std::filesystem::path photo = owner_.photoPath();
    return platform_.dialogs.askSaveFile({"Save Poster as PDF",
                                          {{"PDF (*.pdf)", "*.pdf"}},
                                          pathText(photo.stem()) + "_poster",
                                          pathText(photo.parent_path())});
}

void frmSheets::work(Button& pressed, const std::function<void()>& act) {
    writing_ = true;
    setControlsEnabled(false);
    act();
    writing_ = false;
    setControlsEnabled(true);
    pressed.setFocus(); // which it lost when it was switched off
}

void frmSheets::cmdPrint_Click() {
    storeChoices();
    bool wantsDocument = false;
    work(cmdPrint, [&] { wantsDocument = owner_.printSheets(*chosen_); });
    if (wantsDocument) {
        cmdSavePdf_Click();
    }
}

void frmSheets::cmdSavePdf_Click() {
    const std::string file = askForDocument();
    if (file.empty()) {
        return;
    }
    storeChoices();
    std::function<void()> tell;
    work(cmdSavePdf, [&] { tell = writeDocument(*chosen_, textPath(file)); });
    tell();
}

void frmSheets::SaveDocument(const SheetJob& job) {
    const std::string file = askForDocument();
    if (!file.empty()) {
        writeDocument(job, textPath(file))();
    }
}

std::function<void()> frmSheets::writeDocument(const SheetJob& job,
                                               const std::filesystem::path& file) {
    try {
        PdfRun run({owner_.photoPath(), owner_.photoTurn(), job, file});
        const std::string notice = finishWithProgress(run, "Writing", platform_, progress_);
        progress_.unload();
        return [this, file, notice] { result_.ShowDocumentOkMsg(pathText(file), notice); };
    } catch (const PdfCanceled&) {
        return endRun(canceledMessage());
    } catch (const std::exception& error) {
        return endRun(criticalMessage("Problem", error.what()));
    }
}

std::function<void()> frmSheets::endRun(const Message& message) {
    progress_.unload();
    return [this, message] { platform_.dialogs.showMessage(message); };
}

} // namespace veldara
