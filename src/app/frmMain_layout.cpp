// The layout of the poster: tile counts, tile size, paper, edge compensation, zoom; and the figures
// that follow from them.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "controls/loading_mark.h"
#include "layout/output_figures.h"
#include "platform/error.h"

namespace veldara {

namespace {

std::string sizeText(double width, double height, Units units, NumberStyle style) {
    const char* pattern = units == Units::inches ? "#####0.00" : "#####0.0";
    return formatNumber(width, pattern, style) + " x " + formatNumber(height, pattern, style);
}

} // namespace

double frmMain::GetFinalImgWhRatio() const {
    const std::optional<PosterLayout> layout = posterLayout();
    try {
        return layout ? posterRatio(*layout) : 0.0;
    } catch (const Error&) {
        return 0.0; // the trims leave nothing of a tile
    }
}

int frmMain::CalcTileCoord(std::vector<TileRect>& tiles) const {
    const std::optional<PosterLayout> layout = posterLayout();
    tiles.assign(static_cast<std::size_t>(GetNumTilesWide()) *
                     static_cast<std::size_t>(GetNumTilesHigh()),
                 TileRect{});
    if (!layout) {
        return -1;
    }
    try {
        tiles = calcTileCoord(*layout);
        return static_cast<int>(tiles.size());
    } catch (const Error&) {
        return 0;
    }
}

std::string frmMain::GetTileMin() const {
    return tileMinText(platform_.numberStyle);
}

std::string frmMain::GetTileMax() const {
    return tileMaxText(platform_.numberStyle);
}

bool frmMain::CheckTileSizes(double& widthInches, double& heightInches) const {
    try {
        std::optional<EdgeTrims> trims;
        if (chkPrinterClips.checked()) {
            FillCurEdgeTrimInches(trims.emplace());
        }
        const auto size = checkTileSizes(dCurTileWidth, dCurTileHeight, unitsOf(iCurUnits), trims);
        if (size) {
            widthInches = size->width;
            heightInches = size->height;
        }
        return size.has_value();
    } catch (const Error&) {
        return false; // no profile is active
    }
}

bool frmMain::CheckTileSizesNoTrim(double& widthInches, double& heightInches) const {
    const auto size = checkTileSizesNoTrim(dCurTileWidth, dCurTileHeight, unitsOf(iCurUnits));
    if (size) {
        widthInches = size->width;
        heightInches = size->height;
    }
    return size.has_value();
}

// The repeated check is a loop that serves events and not a call of itself: it lasts as long as the
// size stays invalid, and neither the stack nor the window may pay for that.
bool frmMain::bTileSizesOk(bool bShowWarning) {
    double width = 0.0;
    double height = 0.0;
    if (CheckTileSizes(width, height)) {
        return true;
    }
    if (bShowWarning) {
        ShowTileSizeError();
    }
    while (!ended_ && !CheckTileSizes(width, height)) {
        platform_.eventPump.doEvents();
    }
    return false;
}

void frmMain::ShowTileSizeError() {
    platform_.dialogs.showMessage(tileSizeMessage(unitsOf(iCurUnits), platform_.numberStyle));
}

std::optional<PosterLayout> frmMain::posterLayout() const {
    PosterLayout layout;
    if (!CheckTileSizes(layout.tileWidthInches, layout.tileHeightInches)) {
        return std::nullopt;
    }
    layout.photoWidth = lImgWidth;
    layout.photoHeight = lImgHeight;
    layout.tilesWide = GetNumTilesWide();
    layout.tilesHigh = GetNumTilesHigh();
    layout.tilesTurned = bTileRotated;
    layout.zoom = scrZoom.value();
    layout.horzPos = pan_.horzPos;
    layout.vertPos = pan_.vertPos;
    return layout;
}

void frmMain::UpdateOutputSize() {
    if (bInitializing) {
        return;
    }
    const std::optional<PosterLayout> layout = posterLayout();
    if (!layout) {
        return;
    }
    OutputFigures figures;
    try {
        figures = outputFigures(*layout, bImgSelected, unitsOf(iCurUnits), platform_.numberStyle);
    } catch (const Error&) {
        figures = {"---", "---", "---", "---"}; // the trims leave nothing of a tile
    }
    lblFinalSize.setCaption(figures.size);
    lblResolution.setCaption(figures.resolution);
    lblQuality.setCaption(figures.quality);
    lblMPixVal.setCaption(figures.megapixels);
    UpdateActionButtons();
}

void frmMain::UpdateActionButtons() {
    double width = 0.0;
    double height = 0.0;
    const bool ready = bImgSelected && CheckTileSizes(width, height);
    cmdSaveNow.setEnabled(ready);
    cmdLargePreview.setEnabled(ready);
}

// What follows every change of the layout that is not saved with it.
void frmMain::refreshLayout() {
    UpdateOutputSize();
    ShowMainPreview();
    UpdatePlacementLabels();
}

void frmMain::cmbTilesWide_Click() {
    if (bInitializing) {
        return;
    }
    if (chkLockWh.checked()) {
        cmbTilesHigh.setListIndex(cmbTilesWide.listIndex());
    }
    refreshLayout();
}

void frmMain::cmbTilesHigh_Click() {
    if (bInitializing) {
        return;
    }
    if (chkLockWh.checked()) {
        cmbTilesWide.setListIndex(cmbTilesHigh.listIndex());
    }
    refreshLayout();
}

void frmMain::chkLockWh_Click() {
    if (chkLockWh.checked()) {
        cmbTilesHigh.setListIndex(cmbTilesWide.listIndex());
    }
}

void frmMain::chkRotateTiles_Click() {
    bTileRotated = chkRotateTiles.checked();
    ShowMainPreview();
    UpdateOutputSize();
    UpdatePlacementLabels();
}

void frmMain::chkPreviewTiles_Click() {
    if (bSkipSettingWrite) {
        return;
    }
    double width = 0.0;
    double height = 0.0;
    if (chkPreviewTiles.checked() && !CheckTileSizes(width, height)) {
        ShowTileSizeError();
        chkPreviewTiles.setChecked(false);
        return;
    }
    ShowMainPreview();
    saveSettings();
}

void frmMain::chkPrinterClips_Click() {
    cmbCurBtm.setEnabled(chkPrinterClips.checked());
    if (bSkipOutputUpdate) {
        return;
    }
    UpdateOutputSize();
    ShowMainPreview();
    saveSettingsUnlessSkipped();
    UpdatePlacementLabels();
    bool neverCalibrated = false;
    btm_.IsInitialProfile(neverCalibrated);
    if (chkPrinterClips.checked() && neverCalibrated) {
        platform_.dialogs.showMessage(edgeCalibrationIntroduction());
    }
}

void frmMain::cmbCurBtm_Click() {
    if (bSkipSettingWrite || fillingProfiles_) {
        return;
    }
    UpdateOutputSize();
    UpdateActionButtons();
    ShowMainPreview();
    saveSettings();
    UpdatePlacementLabels();
}

void frmMain::fillProfileList(const std::vector<std::string>& names, int selected) {
    const int before = cmbCurBtm.listIndex();
    {
        const LoadingMark mark(fillingProfiles_);
        cmbCurBtm.setItems(names);
        selectProfile(selected);
    }
    if (bSkipSettingWrite) {
        return;
    }
    refreshLayout();
    if (cmbCurBtm.listIndex() != before) {
        saveSettings(); // a profile is remembered by its position, and that has become another one
    }
}

void frmMain::FillCurEdgeTrimInches(std::array<double, 4>& trims) const {
    btm_.FillCurEdgeTrimInches(trims);
}

void frmMain::scrZoom_Change() {
    lblZoomAmount.setCaption(zoomAmountText(scrZoom.value()));
    ShowMainPreview();
    UpdateOutputSize();
    UpdatePlacementLabels();
}

void frmMain::setNewTileVals(const std::string& sNewCurPaperName, int iNewCurUnits,
                             double dNewCurTileWidth, double dNewCurTileHeight,
                             double dNewCurPaperWidth, double dNewCurPaperHeight,
                             const std::string& sNewPaperRegLine, int& iNewVal) {
    sCurPaperName = sNewCurPaperName;
    iCurUnits = iNewCurUnits;
    dCurTileWidth = dNewCurTileWidth;
    dCurTileHeight = dNewCurTileHeight;
    dCurPaperWidth = dNewCurPaperWidth;
    dCurPaperHeight = dNewCurPaperHeight;
    sPaperRegLine = sNewPaperRegLine;
    refreshPaperLabels();
    UpdateOutputSize();
    if (!bSkipSettingWrite) {
        saveSettings();
        UpdateActionButtons();
        ShowMainPreview();
        UpdatePlacementLabels();
    }
    iNewVal = 1;
}

void frmMain::refreshPaperLabels() {
    const Units units = unitsOf(iCurUnits);
    lblPaperName.setCaption(sCurPaperName);
    lblPaperSize.setCaption(
        sizeText(dCurPaperWidth, dCurPaperHeight, units, platform_.numberStyle));
    lblTileSize.setCaption(sizeText(dCurTileWidth, dCurTileHeight, units, platform_.numberStyle));
    lblUnits.setCaption(units == Units::inches ? "Inches" : "Millimeters");
}

} // namespace veldara
