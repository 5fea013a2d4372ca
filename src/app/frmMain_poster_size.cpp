// Choosing the poster by its size: what the dialog starts from, and how its choice is set.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "controls/scoped_flag.h"

namespace veldara {

void frmMain::openPosterSizeDialog() {
    if (!bImgSelected) {
        platform_.dialogs.showMessage(noImageSelectedMessage());
        return;
    }
    posterSize_.Open();
}

std::optional<PosterState> frmMain::posterState() const {
    const std::optional<PosterLayout> layout = posterLayout();
    if (!bImgSelected || !layout) {
        return std::nullopt;
    }
    PosterState state;
    state.limits.photoWidth = lImgWidth;
    state.limits.photoHeight = lImgHeight;
    state.limits.zoom = scrZoom.value();
    const PaperTables& tables = tileSize_.papers();
    state.units = unitsOf(iCurUnits);
    state.papers = tables.catalogue(state.units);
    state.paper = tables.index(state.units);
    if (chkPrinterClips.checked()) {
        FillCurEdgeTrimInches(state.trims.emplace());
    }
    const double wide = bTileRotated ? layout->tileHeightInches : layout->tileWidthInches;
    state.width = layout->tilesWide * wide;
    state.photo = photo_.image;
    return state;
}

// While the controls are set their handlers neither redraw nor save; the last one redraws.
void frmMain::applyPosterChoice(int paper, int tilesWide, int tilesHigh, bool tilesTurned) {
    {
        const ScopedFlag skipWrite(bSkipSettingWrite);
        if (paper != tileSize_.papers().index(unitsOf(iCurUnits))) {
            tileSize_.ApplyPaper(paper_.preferenceLine, paper_.marginsLocked == 1, paper);
        }
        const ScopedFlag skipLayout(bInitializing);
        if (tilesWide != tilesHigh) {
            chkLockWh.setChecked(false);
        }
        cmbTilesWide.setListIndex(tilesWide - 1);
        cmbTilesHigh.setListIndex(tilesHigh - 1);
    }
    if (chkRotateTiles.checked() != tilesTurned) {
        chkRotateTiles.setChecked(tilesTurned);
    } else {
        refreshLayout();
    }
    saveSettings();
}

} // namespace veldara
