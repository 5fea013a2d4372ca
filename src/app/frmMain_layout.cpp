// The layout of the poster: tile counts, tile size, paper, edge compensation, zoom; and the figures
// that follow from them.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "controls/scoped_flag.h"
#include "layout/output_figures.h"
#include "paper/margin_lists.h"
#include "platform/error.h"

namespace veldara {

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
    const std::optional<PosterLayout> layout = posterLayout();
    if (layout) {
        widthInches = layout->tileWidthInches;
        heightInches = layout->tileHeightInches;
    }
    return layout.has_value();
}

bool frmMain::hasValidTileSize() const {
    return posterLayout().has_value();
}

bool frmMain::CheckTileSizesNoTrim(double& widthInches, double& heightInches) const {
    const auto size = checkTileSizesNoTrim(paper_.tileWidth, paper_.tileHeight, unitsOf(iCurUnits));
    if (size) {
        widthInches = size->width;
        heightInches = size->height;
    }
    return size.has_value();
}

// The repeated check is a loop that serves events and not a call of itself: it lasts as long as the
// size stays invalid, so a recursion would exhaust the stack and freeze the window.
bool frmMain::bTileSizesOk(bool bShowWarning) {
    if (hasValidTileSize()) {
        return true;
    }
    if (bShowWarning) {
        ShowTileSizeError();
    }
    while (!ended_ && !hasValidTileSize()) {
        platform_.eventPump.doEvents();
    }
    return false;
}

void frmMain::ShowTileSizeError() {
    platform_.dialogs.showMessage(tileSizeMessage(unitsOf(iCurUnits), platform_.numberStyle));
}

PosterRequest frmMain::posterRequest() const {
    PosterRequest request;
    request.layout.photoWidth = lImgWidth;
    request.layout.photoHeight = lImgHeight;
    request.layout.tilesWide = GetNumTilesWide();
    request.layout.tilesHigh = GetNumTilesHigh();
    request.layout.tilesTurned = bTileRotated;
    request.layout.zoom = scrZoom.value();
    request.layout.horzPos = preview_.pan.horzPos;
    request.layout.vertPos = preview_.pan.vertPos;
    request.tileWidth = paper_.tileWidth;
    request.tileHeight = paper_.tileHeight;
    request.units = unitsOf(iCurUnits);
    if (chkPrinterClips.checked()) {
        FillCurEdgeTrimInches(request.trims.emplace());
    }
    return request;
}

std::optional<PosterLayout> frmMain::posterLayout() const {
    try {
        return effectiveLayout(posterRequest());
    } catch (const Error&) {
        return std::nullopt; // no profile is active
    }
}

PosterPlan frmMain::planTiles(const TileFileParts& files) const {
    try {
        PosterRequest request = posterRequest();
        request.files = files;
        return planPoster(request);
    } catch (const Error& error) {
        PosterPlan plan;
        plan.problem = PlanProblem::tileSize;
        plan.reason = error.what();
        return plan;
    }
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
    const bool ready = bImgSelected && hasValidTileSize();
    for (Control* control :
         std::initializer_list<Control*>{&cmdSaveNow, &cmdSheets, &mnuSavePdf, &mnuPrint}) {
        control->setEnabled(ready);
    }
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
    if (chkPreviewTiles.checked() && !hasValidTileSize()) {
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
        const ScopedFlag flag(fillingProfiles_);
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

void frmMain::FillCurEdgeTrimInches(EdgeTrims& trims) const {
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
    paper_.name = sNewCurPaperName;
    iCurUnits = iNewCurUnits;
    paper_.tileWidth = dNewCurTileWidth;
    paper_.tileHeight = dNewCurTileHeight;
    paper_.width = dNewCurPaperWidth;
    paper_.height = dNewCurPaperHeight;
    paper_.preferenceLine = sNewPaperRegLine;
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
    lblPaperName.setCaption(paper_.name);
    lblPaperSize.setCaption(
        paperSizeText(paper_.width, paper_.height, units, platform_.numberStyle));
    lblTileSize.setCaption(
        paperSizeText(paper_.tileWidth, paper_.tileHeight, units, platform_.numberStyle));
    lblUnits.setCaption(mainUnitsText(units));
}

std::string frmMain::FiguresText() const {
    const auto line = [](const Label& caption, const Label& value) {
        return caption.caption() + " " + value.caption() + "\n";
    };
    return line(lblFinalSizeCaption, lblFinalSize) + line(lblMPixCaption, lblMPixVal) +
           line(lblResolutionCaption, lblResolution) + line(lblQualityCaption, lblQuality) +
           line(lblZoom, lblZoomAmount) + line(lblLrCaption, lblLrValue) +
           line(lblTbCaption, lblTbValue) + line(lblPaperNameCaption, lblPaperName);
}

} // namespace veldara
