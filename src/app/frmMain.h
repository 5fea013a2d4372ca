// The main window: owns the state of the poster that is being made, browses and loads the photo,
// shows the preview, and hands over to the dialogs. It reads its controls, calls rules, and shows
// the answers.
#pragma once

#include "app/frmAbout.h"
#include "app/frmAppEnd.h"
#include "app/frmStorage.h"
#include "app/preferences.h"
#include "calibration/frmBtm.h"
#include "controls/browsing.h"
#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "layout/frmPreview.h"
#include "layout/preview_geometry.h"
#include "layout/tile_grid.h"
#include "layout/tile_size.h"
#include "output/frmMsg.h"
#include "output/frmSaveTiles.h"
#include "output/frmSimpleMsg.h"
#include "paper/frmTileSize.h"
#include "platform/image/codec.h"
#include "platform/platform.h"

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

// Turns a picture file into an upright picture; runs on a worker thread. Throws Error or
// std::bad_alloc.
using PhotoLoader = std::function<Image(const std::filesystem::path&)>;

class frmMain : public Window,
                public PaperOwner,
                public CalibrationOwner,
                public PreviewOwner,
                public SaveOwner {
  public:
    frmMain(Platform& platform, Screen& screen, PhotoLoader loadPhoto = loadImage);

    // Menus
    MenuItem mnuFile;
    MenuItem mnuExit;
    MenuItem mnuTools;
    MenuItem mnuPaperSize;
    MenuItem mnuEdgeClip;
    MenuItem mnuHelp;
    MenuItem mnuContent;
    MenuItem mnuAbout;

    // The labels of the four steps
    Label lblStep1;
    Label lblStep2;
    Label lblStep3;
    Label lblStep4;

    // Step 1: the photo
    DriveList Drive1;
    FolderList Dir1;
    ListBox lstFiles;
    ComboBox cmbFileType;
    Button cmdMyDoc;
    Button cmdDesktop;

    // Step 2: what one tile is printed on. A caption label stands beside the label with the value.
    Frame fraPrintInfo;
    Label lblPaperNameCaption;
    Label lblPaperName;
    Label lblPaperSizeCaption;
    Label lblPaperSize;
    Label lblTileSizeCaption;
    Label lblTileSize;
    Label lblUnitsCaption;
    Label lblUnits;
    Button cmdEditPaperSize;
    CheckBox chkPrinterClips;
    ComboBox cmbCurBtm;
    Button cmdConfig;

    // Step 3: the tiles and the result
    Frame fraNumberTiles;
    Label lblTilesWide;
    ComboBox cmbTilesWide;
    Label lblTilesHigh;
    ComboBox cmbTilesHigh;
    CheckBox chkLockWh;
    ComboBox cmbRotate;
    CheckBox chkRotateTiles;
    CheckBox chkPreviewTiles;
    Button cmdLargePreview;

    Frame fraPosterSize;
    Label lblFinalSizeCaption;
    Label lblFinalSize;
    Label lblMPixCaption;
    Label lblMPixVal;
    Label lblResolutionCaption;
    Label lblResolution;
    Label lblQualityCaption;
    Label lblQuality;

    Frame fraTilePlacement;
    Label lblZoom;
    ScrollBar scrZoom;
    Label lbl4x;
    Label lblZoomAmount;
    // The pad and its four pressed states; which of them stands at the pad's home position is what
    // is seen.
    Picture imgArrow;
    Picture imgArrow_Up;
    Picture imgArrow_right;
    Picture imgArrow_down;
    Picture imgArrow_left;
    Label lblLrCaption;
    Label lblLrValue;
    Label lblTbCaption;
    Label lblTbValue;

    Picture picCur;

    // Step 4: the files
    Button cmdSaveNow;
    Button cmdQuit;

    Timer tmrImg;
    Timer tmrLoadingImg;
    Timer tmrAppEnd;
    Timer tmrResize; // rebuilds the preview when the picture box has kept its new size for a moment

    // The poster's state, shared with the dialogs.
    std::string sCurDrive;          // the last drive that could be opened, as Drives names it
    bool bImgSelected = false;      // a photo is loaded; without one no layout action does anything
    int lImgWidth = 0;              // pixels of the photo as it is turned now
    int lImgHeight = 0;             //
    bool bTileRotated = false;      // tiles are turned by 90 degrees
    bool bPreviewOn = false;        // the main preview shows the tile grid
    bool bSkipSettingWrite = true;  // the program itself sets controls: save and refresh nothing
    bool bSkipOutputUpdate = false; // the program itself sets chkPrinterClips
    int iCurUnits = 0;              // of the paper and tile sizes: 0 inches, otherwise millimetres

    // Tile grid and crop. The tiles are in pixels of the photo as it is turned; the result is their
    // number, -1 when the tile size is out of range, 0 when it leaves nothing to cut.
    int GetNumTilesWide() const { return cmbTilesWide.listIndex() + 1; }
    int GetNumTilesHigh() const { return cmbTilesHigh.listIndex() + 1; }
    double GetFinalImgWhRatio() const override;
    int CalcTileCoord(std::vector<TileRect>& tiles) const override;

    // Print size of a tile, in inches.
    double getConstMinTileSize() const override { return minTileInches; }
    double getConstMaxTileSize() const override { return maxTileInches; }
    std::string GetTileMin() const;
    std::string GetTileMax() const;
    bool CheckTileSizes(double& widthInches, double& heightInches) const override;
    bool CheckTileSizesNoTrim(double& widthInches, double& heightInches) const override;
    // Returns only when the size is valid: as long as it is not, it is checked again and again, and
    // window events run meanwhile. False when it was not valid at the call.
    bool bTileSizesOk(bool bShowWarning = true);

    // Refreshes the four figures of the poster, and which action buttons may be used.
    void UpdateOutputSize() override;

    // Paper
    void setNewTileVals(const std::string& sNewCurPaperName, int iNewCurUnits,
                        double dNewCurTileWidth, double dNewCurTileHeight, double dNewCurPaperWidth,
                        double dNewCurPaperHeight, const std::string& sNewPaperRegLine,
                        int& iNewVal) override;
    std::string getPaperRegLine() const { return sPaperRegLine; }
    int getCurUnits() const override { return iCurUnits; }
    void setWhMarginLockedVal(int iLocked) override { iMarginsLocked = iLocked; }

    // What the program calls itself
    void UpdateMainFormCaption();
    std::string GetAppVersionString() const;
    std::string GetCompanyName() const;
    std::string GetAppCopyrightString() const; // with this year's number

    // Ends the program at once; nothing is saved.
    void EndNow();
    void EndAppNow() { EndNow(); }

    // Opens the help file, or says that it is missing.
    void OpenHelpFile();

    // Refills lstFiles from the folder of Dir1, and remembers that folder unless told not to.
    void FillFileList(bool skipLastFolder = false);

    // Goes to the folder with that full path; or, of a photo, to the folder that it lies in, and
    // loads it as a click in the list would. Says what stands in the way. For what is dropped on
    // the window, or named when the program is started.
    void openPath(const std::string& path);

    // How the last load ended: 0 well, 402 with a photo that is too small, 1 with any other
    // failure.
    int loadError() const { return loadError_; }

    // For the dialogs
    void FillPreview(Picture& box) override;
    std::string tileSizeAreaName() const override { return fraPrintInfo.caption(); }
    void fillProfileList(const std::vector<std::string>& names, int selected) override;
    int activeProfile() const override { return cmbCurBtm.listIndex(); }
    std::string applicationFolder() const override;
    std::shared_ptr<const Image> currentPhoto() const override { return img; }
    bool rotateTilesChecked() const override { return chkRotateTiles.checked(); }
    bool tileRotated() const override { return bTileRotated; }
    bool printerClipsChecked() const override { return chkPrinterClips.checked(); }
    void FillCurEdgeTrimInches(std::array<double, 4>& trims) const override;

  protected:
    void loadHandler() override;
    void unloadHandler() override;

  private:
    // Captions, tool tips, lists, and what each event runs
    void fillControlTexts();
    void fillMenuTexts();
    void fillStepTexts();
    void fillBrowserTexts();
    void fillPrintInfoTexts();
    void fillTilesTexts();
    void fillResultTexts();
    void fillPlacementTexts();
    void bindMenus();
    void bindBrowser();
    void bindLayoutControls();
    void bindPreview();

    // Start-up and settings
    void initControls();
    void restoreLastFolder();
    void applySettings();
    void applyPaperLine();
    void applyTileCounts();
    void applyEdgeAdjust();
    int storedProfileIndex() const;
    void selectProfile(int index);
    void saveSettings();
    void saveSettingsUnlessSkipped();
    void unloadOtherWindows();
    void findHelpFile();
    void findSpecialFolders();
    bool fileExists(const std::string& path) const;

    // Browsing
    void Drive1_Change();
    void Dir1_Change();
    void cmbFileType_Click();
    void cmdDesktop_Click();
    void cmdMyDoc_Click();
    void goToSpecialFolder(const std::string& folder, const std::string& folderName);
    void openPhoto(const std::string& path);
    // False when the drive could not be reached, which the user was told. Throws Error.
    bool goToFolder(const std::string& folder);
    void showStatusPicture(const Picture& status);

    // The photo: loading, turning, its preview-sized copy
    void lstFiles_Click();
    void cmbRotate_Click();
    void tmrLoadingImg_Timer();
    void tmrResize_Timer();
    void workOnPhoto();
    bool workOnPhotoOnce();
    void loadSelectedPhoto();
    void loadPhotoFile(const std::string& name);
    void takePhoto(std::shared_ptr<const Image> photo, int angle);
    void turnPhoto();
    void RotateImageTo(int angle);
    void rebuildPreview();
    void MakePreviewImage();
    void forgetPhoto();
    bool isSuperseded() const;
    void startLoadingAnimation();
    void stopLoadingAnimation();

    // Layout
    void cmbTilesWide_Click();
    void cmbTilesHigh_Click();
    void chkLockWh_Click();
    void chkRotateTiles_Click();
    void chkPreviewTiles_Click();
    void chkPrinterClips_Click();
    void cmbCurBtm_Click();
    void scrZoom_Change();
    void refreshLayout();
    void refreshPaperLabels();
    void ShowTileSizeError();
    std::optional<PosterLayout> posterLayout() const;
    void UpdateActionButtons();

    // Preview
    void ClearPreview();
    void ShowMainPreview();
    void UpdatePlacementLabels();
    bool IsInCropRect(int x, int y) const;
    void DragPanTo(int x, int y);
    void SetPointer(int code);
    void picCur_MouseDown(MouseButton button, int x, int y);
    void picCur_MouseMove(int x, int y);
    void picCur_MouseUp(int x, int y);
    void picCur_Resize();

    // Arrow pad
    void imgArrow_MouseDown(int x, int y);
    void imgArrow_MouseUp();
    void tmrImg_Timer();
    void SetArrowState(int direction);
    void StepPan();

    // Hand-over to the other windows
    void openPaperDialog();
    void openCalibrationDialog();
    void cmdLargePreview_Click();
    void cmdSaveNow_Click();
    void mnuAbout_Click();

    Platform& platform_;
    PhotoLoader loadPhoto_;
    mutable Preferences preferences_; // reading notes the platform's result code

    // Paper: lengths in iCurUnits
    std::string sCurPaperName;
    std::string sPaperRegLine;
    double dCurTileWidth = 0.0;
    double dCurTileHeight = 0.0;
    double dCurPaperWidth = 0.0;
    double dCurPaperHeight = 0.0;
    int iMarginsLocked = 0;

    bool bInitializing = false;    // start-up restores the lists
    bool fillingProfiles_ = false; // the calibration dialog refills cmbCurBtm
    bool restoringDrive_ = false;  // Drive1 is put back after a drive that could not be opened

    std::string sHelpFile;
    std::string desktopFolder_;
    std::string documentsFolder_;
    bool foldersKnown_ = false;

    // The photo. Workers and the full-screen preview hold it while they read it.
    std::shared_ptr<const Image> img = std::make_shared<Image>();
    int iCurRotation = 0;        // degrees already applied to img
    bool photoBusy_ = false;     // work on the photo is under way; window events run meanwhile
    bool loadWanted_ = false;    // a file was clicked and not yet taken up
    bool previewWanted_ = false; // the picture box has another size
    int listGeneration_ = 0;     // counts the fillings of lstFiles
    int loadError_ = 0;
    bool ended_ = false;             // the program is told to end
    bool animationTickRuns_ = false; // a tick lets events run, and with them perhaps the next tick

    // The preview
    std::shared_ptr<const Image> imgPreview;
    double dPreviewScale = 0.0; // preview pixels per photo pixel
    PreviewCrop crop_;          // as last drawn
    Pan pan_;
    bool bDragging = false;
    DragStart dragStart_;
    int iArrowDir = 0;
    int iArrowRepeat = 0;
    int arrowHomeLeft_ = 0;

    frmStorage storage_;
    frmAppEnd appEnd_;
    frmAbout about_;
    frmMsg progress_;
    frmSimpleMsg result_;
    frmSaveTiles saveTiles_;
    frmTileSize tileSize_;
    frmBtm btm_;
    frmPreview preview_;
};

} // namespace veldara
