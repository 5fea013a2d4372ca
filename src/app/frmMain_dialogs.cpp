// The main window's hand-over to its other windows and to the help.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "platform/error.h"

namespace veldara {

void frmMain::openPaperDialog() {
    tileSize_.OpenWith(sPaperRegLine, iMarginsLocked == 1);
}

void frmMain::openCalibrationDialog() {
    btm_.Open();
    // the trims may have become others
    ShowMainPreview();
    UpdatePlacementLabels();
}

void frmMain::cmdLargePreview_Click() {
    if (!bImgSelected) {
        platform_.dialogs.showMessage(noImageSelectedMessage());
        return;
    }
    SetPointer(3);
    preview_.show();
    preview_.setFocus(); // it may have been left open behind this window
    preview_.Fill();
    SetPointer(0);
}

void frmMain::cmdSaveNow_Click() {
    double width = 0.0;
    double height = 0.0;
    if (!CheckTileSizes(width, height)) {
        ShowTileSizeError();
        return;
    }
    std::vector<TileRect> tiles;
    if (!bImgSelected || CalcTileCoord(tiles) < 1 || !everyTileHasPixels(tiles)) {
        platform_.dialogs.showMessage(invalidPosterMessage());
        return;
    }
    saveTiles_.OpenForPhoto(Drive1.drive(), Dir1.path(), lstFiles.selectedText());
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
