// How the main window opens its other windows and the help.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "app/photo_turn.h"
#include "layout/output_figures.h"
#include "paper/paper_line.h"
#include "platform/error.h"
#include "platform/preference_keys.h"
#include "platform/text/path_text.h"
#include "sheets/sheet_job.h"

#include <cmath>

namespace veldara {

void frmMain::openPaperDialog() {
    tileSize_.OpenWith(paper_.preferenceLine, paper_.marginsLocked == 1);
}

void frmMain::openCalibrationDialog() {
    btm_.Open();
    // the trims may have changed
    ShowMainPreview();
    UpdatePlacementLabels();
}

void frmMain::cmdLargePreview_Click() {
    if (!bImgSelected) {
        platform_.dialogs.showMessage(noImageSelectedMessage());
        return;
    }
    SetPointer(Pointer::hourglass);
    previewWindow_.show();
    previewWindow_.setFocus(); // it may be open already, behind this window
    previewWindow_.Fill();
    SetPointer(Pointer::arrow);
}

bool frmMain::posterCanBeMade() {
    const PosterPlan plan = planTiles({});
    if (plan.problem == PlanProblem::tileSize) {
        ShowTileSizeError();
        return false;
    }
    if (!bImgSelected || plan.tiles.empty()) {
        platform_.dialogs.showMessage(invalidPosterMessage());
        return false;
    }
    return true;
}

void frmMain::cmdSaveNow_Click() {
    if (posterCanBeMade()) {
        saveTiles_.OpenForPhoto(Drive1.drive(), Dir1.path(), lstFiles.selectedText());
    }
}

void frmMain::cmdSheets_Click() {
    if (posterCanBeMade() && !sheets_.Open()) {
        platform_.dialogs.showMessage(invalidPosterMessage());
    }
}

std::optional<SheetJob> frmMain::posterSheets() const {
    const std::optional<PosterLayout> layout = posterLayout();
    if (!layout || !bImgSelected) {
        return std::nullopt;
    }
    std::optional<EdgeTrims> trims;
    if (chkPrinterClips.checked()) {
        trims.emplace();
        FillCurEdgeTrimInches(*trims);
    }
    const PaperRecord paper = currentPaperRecord();
    const Units units = unitsOf(iCurUnits);
    const OutputFigures figures = outputFigures(*layout, true, units, platform_.numberStyle);
    return sheetJob(paper, units, *layout, trims, lstFiles.selectedText(), figures.size);
}

PaperRecord frmMain::currentPaperRecord() const {
    PaperTables tables = buildPaperTables();
    setPrefFromRegLine(tables, paper_.preferenceLine, minTileInches, maxTileInches,
                       platform_.numberStyle);
    PaperRecord paper = tables.current();
    constexpr double nothing = 1e-6;
    if (std::abs(paper.tileWidth() - paper_.tileWidth) > nothing ||
        std::abs(paper.tileHeight() - paper_.tileHeight) > nothing) {
        throw Error("The paper is not the one that the tiles were laid out for.");
    }
    return paper;
}

std::filesystem::path frmMain::photoPath() const {
    return textPath(Dir1.path()) / textPath(lstFiles.selectedText());
}

Turn frmMain::photoTurn() const {
    return turnOf(photo_.rotation);
}

std::string frmMain::storedChoice(const std::string& name) const {
    return preferences_.queryValue(RegistryRoot::localMachine, preferencesKey, name);
}

void frmMain::storeChoice(const std::string& name, const std::string& value) {
    preferences_.ensureKeys();
    preferences_.setValue(RegistryRoot::localMachine, preferencesKey, name, value);
}

void frmMain::mnuAbout_Click() {
    about_.showModal();
}

void frmMain::OpenHelpFile() {
    if (sHelpFile.empty() || !fileExists(sHelpFile)) {
        platform_.dialogs.showMessage(helpMissingMessage());
        return;
    }
    try {
        platform_.launcher.openHelp(sHelpFile);
    } catch (const Error& error) {
        platform_.dialogs.showMessage(errorMessage(error.what()));
    }
}

} // namespace veldara
