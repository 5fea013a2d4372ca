// What is bound to what, what the program calls itself, and how it ends.
#include "app/frmMain.h"

#include "app/program_identity.h"
#include "platform/text/version_text.h"

#include <utility>

namespace veldara {

frmMain::frmMain(Platform& platform, Screen& screen, PhotoLoader loadPhoto,
                 PhotoCopyHooks copyHooks)
    : Window("frmMain", screen), Drive1("Drive1", platform.drives), Dir1("Dir1", platform.drives),
      platform_(platform), loadPhoto_(std::move(loadPhoto)), copyHooks_(std::move(copyHooks)),
      preferences_(platform.registry, platform.numberStyle), storage_(screen), appEnd_(screen),
      about_(platform, screen, programWebAddress()), progress_(platform, screen),
      result_(platform, screen), saveTiles_(platform, screen, *this, progress_, result_),
      sheets_(platform, screen, *this, progress_, result_), printing_(platform, *this, progress_),
      tileSize_(platform, screen, *this), posterSize_(platform, screen, *this),
      btm_(platform, screen, *this), previewWindow_(platform, screen, *this) {
    fillControlTexts();
    bindMenus();
    bindBrowser();
    bindLayoutControls();
    bindPreview();
}

void frmMain::bindMenus() {
    mnuOpenPhoto.onClick = [this] { mnuOpenPhoto_Click(); };
    mnuOpenRecent.onClick = [this](int index) { mnuOpenRecent_Click(index); };
    mnuOpenRecent.onOpen = [this] { mnuOpenRecent_Open(); };
    mnuExit.onClick = [this] { EndNow(); };
    cmdQuit.onClick = [this] { EndNow(); };
    mnuPaperSize.onClick = [this] { openPaperDialog(); };
    cmdEditPaperSize.onClick = [this] { openPaperDialog(); };
    mnuEdgeClip.onClick = [this] { openCalibrationDialog(); };
    cmdConfig.onClick = [this] { openCalibrationDialog(); };
    mnuPosterSize.onClick = [this] { openPosterSizeDialog(); };
    mnuDimOutside.onClick = [this] {
        if (!bSkipSettingWrite) {
            preferences_.write(prefDimOutside, mnuDimOutside.checked() ? "1" : "0");
        }
    };
    mnuContent.onClick = [this] { OpenHelpFile(); };
    mnuAbout.onClick = [this] { mnuAbout_Click(); };
    cmdLargePreview.onClick = [this] { cmdLargePreview_Click(); };
    cmdSaveNow.onClick = [this] { cmdSaveNow_Click(); };
    cmdSheets.onClick = [this] { cmdSheets_Click(); };
    mnuSavePdf.onClick = [this] { cmdSheets_Click(); };
    mnuPrint.onClick = [this] { mnuPrint_Click(); };
    platform_.printing.onStopped = [this](const std::string& printer, const std::string& reason) {
        printing_.jobStopped(printer, reason);
    };
}

void frmMain::bindBrowser() {
    Drive1.onChange = [this] { Drive1_Change(); };
    Dir1.onChange = [this] { Dir1_Change(); };
    lstFiles.onClick = [this] { lstFiles_Click(); };
    cmbFileType.onClick = [this] { cmbFileType_Click(); };
    cmdMyDoc.onClick = [this] { cmdMyDoc_Click(); };
    cmdDesktop.onClick = [this] { cmdDesktop_Click(); };
}

void frmMain::bindLayoutControls() {
    cmbTilesWide.onClick = [this] { cmbTilesWide_Click(); };
    cmbTilesHigh.onClick = [this] { cmbTilesHigh_Click(); };
    chkLockWh.onClick = [this] { chkLockWh_Click(); };
    cmbRotate.onClick = [this] { cmbRotate_Click(); };
    chkRotateTiles.onClick = [this] { chkRotateTiles_Click(); };
    chkPreviewTiles.onClick = [this] { chkPreviewTiles_Click(); };
    chkPrinterClips.onClick = [this] { chkPrinterClips_Click(); };
    cmbCurBtm.onClick = [this] { cmbCurBtm_Click(); };
    scrZoom.onChange = [this] { scrZoom_Change(); };
}

void frmMain::bindPreview() {
    picCur.onMouseDown = [this](MouseButton button, int x, int y) {
        picCur_MouseDown(button, x, y);
    };
    picCur.onMouseMove = [this](int x, int y) { picCur_MouseMove(x, y); };
    picCur.onMouseUp = [this](MouseButton, int x, int y) { picCur_MouseUp(x, y); };
    picCur.onDoubleClick = [this] { picCur_DoubleClick(); };
    picCur.onResize = [this] { picCur_Resize(); };
    imgArrow.onMouseDown = [this](MouseButton, int x, int y) { imgArrow_MouseDown(x, y); };
    for (Picture* pad :
         {&imgArrow, &imgArrow_Up, &imgArrow_right, &imgArrow_down, &imgArrow_left}) {
        // the release comes to the pad that was pressed or to the one that took its place
        pad->onMouseUp = [this](MouseButton, int, int) { imgArrow_MouseUp(); };
    }
    tmrImg.onTick = [this] { tmrImg_Timer(); };
    tmrLoadingImg.onTick = [this] { tmrLoadingImg_Timer(); };
    tmrResize.onTick = [this] { tmrResize_Timer(); };
}

void frmMain::UpdateMainFormCaption() {
    setCaption(programTitle() + " v" + GetAppVersionString());
}

std::string frmMain::GetAppVersionString() const {
    return programVersion();
}

std::string frmMain::GetCompanyName() const {
    return companyName();
}

std::string frmMain::GetAppCopyrightString() const {
    return copyrightText(platform_.clock.year());
}

void frmMain::EndNow() {
    ended_ = true;
    dropWork();
    screen().endProgram();
}

// Nobody waits for the photo that is being decoded, or copied.
void frmMain::dropWork() {
    work_.dropLoad();
    stopCopy_.set();
}

void frmMain::unloadHandler() {
    dropWork();
    saveSettings();
    for (Timer* timer : {&tmrImg, &tmrLoadingImg, &tmrResize}) {
        timer->setEnabled(false);
    }
    unloadOtherWindows();
}

std::vector<Timer*> frmMain::timers() {
    return {&tmrImg,    &tmrLoadingImg,  &tmrAppEnd,
            &tmrResize, &appEnd_.Timer1, &progress_.tmrProgBar};
}

void frmMain::unloadOtherWindows() {
    for (Window* window : std::initializer_list<Window*>{
             &storage_, &appEnd_, &about_, &progress_, &result_, &saveTiles_, &sheets_, &tileSize_,
             &posterSize_, &btm_, &previewWindow_}) {
        window->unload();
    }
}

} // namespace veldara
