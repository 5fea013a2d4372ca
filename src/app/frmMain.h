// The main window: owns the state of the poster that is being made, browses and loads the photo,
// shows the preview, and opens the dialogs. It reads its controls, calls rules, and shows the
// results.
#pragma once

#include "app/current_paper.h"
#include "app/frmAbout.h"
#include "app/frmAppEnd.h"
#include "app/frmStorage.h"
#include "app/photo_work.h"
#include "app/preferences.h"
#include "app/recent_photos.h"
#include "calibration/frmBtm.h"
#include "choice/frmPosterSize.h"
#include "controls/browsing.h"
#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "layout/arrow_pad.h"
#include "layout/frmPreview.h"
#include "layout/main_preview.h"
#include "layout/preview_geometry.h"
#include "layout/tile_grid.h"
#include "layout/tile_size.h"
#include "output/frmMsg.h"
#include "output/frmSaveTiles.h"
#include "output/frmSimpleMsg.h"
#include "output/photo_copy.h"
#include "output/poster_plan.h"
#include "paper/frmTileSize.h"
#include "platform/image/codec.h"
#include "platform/platform.h"
#include "printing/poster_printing.h"
#include "sheets/frmSheets.h"

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

// Turns a picture file into an upright picture; runs on a worker thread. Throws Error or
// std::bad_alloc, or WorkStopped after the flag was set.
using PhotoLoader = std::function<Image(const std::filesystem::path&, const StopFlag& stop)>;

class frmMain : public Window,
                public PaperOwner,
                public CalibrationOwner,
                public PreviewOwner,
                public SaveOwner,
                public SheetsOwner,
                public PosterSizeOwner {
  public:
    frmMain(Platform& platform, Screen& screen, PhotoLoader loadPhoto = loadImage,
            PhotoCopyHooks copyHooks = realPhotoCopy());

    // Menus
    MenuItem mnuFile{"mnuFile"};
    MenuItem mnuOpenPhoto{"mnuOpenPhoto"};
    ListMenu mnuOpenRecent{"mnuOpenRecent"};
    MenuItem mnuSavePdf{"mnuSavePdf"};
    MenuItem mnuPrint{"mnuPrint"};
    MenuItem mnuExit{"mnuExit"};
    MenuItem mnuTools{"mnuTools"};
    MenuItem mnuPaperSize{"mnuPaperSize"};
    MenuItem mnuEdgeClip{"mnuEdgeClip"};
    MenuItem mnuPosterSize{"mnuPosterSize"};
    MenuItem mnuView{"mnuView"};
    CheckBox mnuDimOutside{"mnuDimOutside"}; // an entry with a check
    MenuItem mnuHelp{"mnuHelp"};
    MenuItem mnuContent{"mnuContent"};
    MenuItem mnuAbout{"mnuAbout"};

    // The labels of the four steps
    Label lblStep1{"lblStep1"};
    Label lblStep2{"lblStep2"};
    Label lblStep3{"lblStep3"};
    Label lblStep4{"lblStep4"};

    // Step 1: the photo
    DriveList Drive1;
    FolderList Dir1;
    ListBox lstFiles{"lstFiles"};
    ComboBox cmbFileType{"cmbFileType"};
    Button cmdMyDoc{"cmdMyDoc"};
    Button cmdDesktop{"cmdDesktop"};

    // Step 2: what one tile is printed on. Each value label has a caption label beside it.
    Frame fraPrintInfo{"fraPrintInfo"};
    Label lblPaperNameCaption{"lblPaperNameCaption"};
    Label lblPaperName{"lblPaperName"};
    Label lblPaperSizeCaption{"lblPaperSizeCaption"};
    Label lblPaperSize{"lblPaperSize"};
    Label lblTileSizeCaption{"lblTileSizeCaption"};
    Label lblTileSize{"lblTileSize"};
    Label lblUnitsCaption{"lblUnitsCaption"};
    Label lblUnits{"lblUnits"};
    Button cmdEditPaperSize{"cmdEditPaperSize"};
    CheckBox chkPrinterClips{"chkPrinterClips"};
    ComboBox cmbCurBtm{"cmbCurBtm"};
    Button cmdConfig{"cmdConfig"};

    // Step 3: the tiles and the result
    Frame fraNumberTiles{"fraNumberTiles"};
    Label lblTilesWide{"lblTilesWide"};
    ComboBox cmbTilesWide{"cmbTilesWide"};
    Label lblTilesHigh{"lblTilesHigh"};
    ComboBox cmbTilesHigh{"cmbTilesHigh"};
    CheckBox chkLockWh{"chkLockWh"};
    ComboBox cmbRotate{"cmbRotate"};
    CheckBox chkRotateTiles{"chkRotateTiles"};
    CheckBox chkPreviewTiles{"chkPreviewTiles"};
    Button cmdLargePreview{"cmdLargePreview"};

    Frame fraPosterSize{"fraPosterSize"};
    Label lblFinalSizeCaption{"lblFinalSizeCaption"};
    Label lblFinalSize{"lblFinalSize"};
    Label lblMPixCaption{"lblMPixCaption"};
    Label lblMPixVal{"lblMPixVal"};
    Label lblResolutionCaption{"lblResolutionCaption"};
    Label lblResolution{"lblResolution"};
    Label lblQualityCaption{"lblQualityCaption"};
    Label lblQuality{"lblQuality"};

    Frame fraTilePlacement{"fraTilePlacement"};
    Label lblZoom{"lblZoom"};
    ScrollBar scrZoom{"scrZoom"};
    Label lbl4x{"lbl4x"};
    Label lblZoomAmount{"lblZoomAmount"};
    // The pad and its four pressed states; the one at the pad's home position is the one that is
    // seen.
    Picture imgArrow{"imgArrow"};
    Picture imgArrow_Up{"imgArrow_Up"};
    Picture imgArrow_right{"imgArrow_right"};
    Picture imgArrow_down{"imgArrow_down"};
    Picture imgArrow_left{"imgArrow_left"};
    Label lblLrCaption{"lblLrCaption"};
    Label lblLrValue{"lblLrValue"};
    Label lblTbCaption{"lblTbCaption"};
    Label lblTbValue{"lblTbValue"};

    Picture picCur{"picCur"};

    // Step 4: the files
    Button cmdSaveNow{"cmdSaveNow"};
    Button cmdSheets{"cmdSheets"};
    Button cmdQuit{"cmdQuit"};

    Timer tmrImg{"tmrImg"};
    Timer tmrLoadingImg{"tmrLoadingImg"};
    Timer tmrAppEnd{"tmrAppEnd"};
    Timer tmrResize{"tmrResize"}; // rebuilds the preview when the picture box has kept its new size
                                  // for a moment

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
    int CalcTileCoord(std::vector<TileRect>& tiles) const;

    // Print size of a tile, in inches.
    double getConstMinTileSize() const override { return minTileInches; }
    double getConstMaxTileSize() const override { return maxTileInches; }
    std::string GetTileMin() const;
    std::string GetTileMax() const;
    bool CheckTileSizes(double& widthInches, double& heightInches) const;
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
    std::string getPaperRegLine() const { return paper_.preferenceLine; }
    int getCurUnits() const override { return iCurUnits; }
    void setWhMarginLockedVal(int iLocked) override { paper_.marginsLocked = iLocked; }

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

    // Refills lstFiles from the folder of Dir1, and stores that folder unless skipLastFolder.
    void FillFileList(bool skipLastFolder = false);

    // Goes to the folder with that full path; or, of a photo, to the folder that it lies in, and
    // loads it as a click in the list would. Shows a message when that fails. For what is dropped
    // on the window, or named when the program is started.
    void openPath(const std::string& path);

    // Raised when the file list has been filled with the files of Dir1's folder.
    Handler onFilesListed;

    // Reads the folder again. The selected file, its photo and the crop stay while it is still
    // there. For F5, and for a view that watches the folder.
    void RefreshFolder();

    // The whole crop, in the middle of the photo.
    void ResetZoomAndPan();

    // The figures, the placement and the paper as text that can be pasted into a message, one per
    // line.
    std::string FiguresText() const;

    // All timers that run while the main window is open, those of windows without a view included.
    std::vector<Timer*> timers();

    // Where the window stood when the program ended, as its view writes it; empty: not known.
    std::string storedWindowPlace() const { return preferences_.read(prefWindowPlace); }
    void storeWindowPlace(const std::string& place) { preferences_.write(prefWindowPlace, place); }

    // How the last load ended: 0 well, 402 with a photo that is too small, 1 with any other
    // failure.
    int loadError() const { return loadError_; }

    // For the dialogs
    void FillPreview(Picture& box) override;
    std::string tileSizeAreaName() const override { return fraPrintInfo.caption(); }
    void fillProfileList(const std::vector<std::string>& names, int selected) override;
    int activeProfile() const override { return cmbCurBtm.listIndex(); }
    std::string applicationFolder() const override;
    std::shared_ptr<const Image> currentPhoto() const override { return photo_.image; }
    PosterPlan planTiles(const TileFileParts& files) const override;
    void FillCurEdgeTrimInches(EdgeTrims& trims) const;
    std::optional<SheetJob> posterSheets() const override;
    std::filesystem::path photoPath() const override;
    Turn photoTurn() const override;
    std::shared_ptr<const Image> smallPhoto() const override { return preview_.image; }
    std::string storedChoice(const std::string& name) const override;
    void storeChoice(const std::string& name, const std::string& value) override;
    bool printSheets(const SheetJob& job) override;
    bool printTestImage(std::shared_ptr<const Image> image) override;
    std::optional<PosterState> posterState() const override;
    void applyPosterChoice(int paper, int tilesWide, int tilesHigh, bool tilesTurned) override;

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
    std::vector<std::string> firstFolders() const;
    void applySettings();
    void applyPaperLine();
    void applyTileCounts();
    void applyEdgeAdjust();
    int storedProfileIndex() const;
    void selectProfile(int index);
    void saveSettings();
    void saveSettingsUnlessSkipped();
    void dropWork();
    void unloadOtherWindows();
    void findHelpFile();
    void findSpecialFolders();
    bool fileExists(const std::string& path) const;

    // Browsing
    void Drive1_Change();
    void Dir1_Change();
    void cmbFileType_Click();
    void mnuOpenPhoto_Click();
    void mnuOpenRecent_Click(int index);
    void mnuOpenRecent_Open();
    void rememberPhoto(const std::string& path);
    void showRecentPhotos();
    std::vector<std::string> listedFiles() const;
    void fillFileList(const std::vector<std::string>& names, bool skipLastFolder);
    void updateFileList();
    void refreshWithoutPhoto();
    void followDrive();
    void showDrive(const std::string& drive);
    void cmdDesktop_Click();
    void cmdMyDoc_Click();
    void goToSpecialFolder(const std::string& folder, const std::string& folderName);
    void openPhoto(const std::string& path);
    void offerCopy(const std::string& path, const std::string& name);
    std::string askForCopy(const std::string& copy);
    bool makeCopy(const std::string& path, const std::string& target);
    // False when the drive could not be reached, after a message about it. Throws Error.
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
    // A photo in the size of the preview.
    struct ScaledPreview {
        std::shared_ptr<const Image> image;
        double scale = 0.0; // preview pixels per photo pixel
    };
    void MakePreviewImage();
    ScaledPreview scaledToBox(const Image& photo);
    void showPhoto(ScaledPreview preview);
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
    PosterRequest posterRequest() const; // throws Error when no profile is active
    std::optional<PosterLayout> posterLayout() const;
    bool hasValidTileSize() const;
    void UpdateActionButtons();

    // Preview
    void ClearPreview();
    void ShowMainPreview();
    void markCrop();
    void UpdatePlacementLabels();
    bool IsInCropRect(int x, int y) const;
    void DragPanTo(int x, int y);
    Pointer pointerAt(int x, int y) const;
    void SetPointer(Pointer pointer);
    void picCur_MouseDown(MouseButton button, int x, int y);
    void picCur_MouseMove(int x, int y);
    void picCur_MouseUp(int x, int y);
    void picCur_DoubleClick();
    void picCur_Resize();
    void centreCrop();

    // Arrow pad
    void imgArrow_MouseDown(int x, int y);
    void imgArrow_MouseUp();
    void tmrImg_Timer();
    void SetArrowState(int direction);
    void StepPan();

    // Hand-over to the other windows
    void openPaperDialog();
    void openCalibrationDialog();
    void openPosterSizeDialog();
    void cmdLargePreview_Click();
    void cmdSaveNow_Click();
    void cmdSheets_Click();
    void mnuPrint_Click();
    PaperRecord currentPaperRecord() const; // throws Error
    bool posterCanBeMade();
    void mnuAbout_Click();

    Platform& platform_;
    PhotoLoader loadPhoto_;
    PhotoCopyHooks copyHooks_;
    bool copying_ = false; // a copy of a photo is being made; window events run meanwhile
    StopFlag stopCopy_;    // nobody waits for it any more
    mutable Preferences preferences_; // reading stores the platform's result code

    CurrentPaper paper_;
    RecentPhotos recent_;

    bool bInitializing = false;    // start-up restores the lists
    bool fillingProfiles_ = false; // the calibration dialog refills cmbCurBtm
    bool settingDrive_ = false;    // Drive1 is made to show a drive; Dir1 stays where it is

    std::string sHelpFile;
    std::string desktopFolder_;
    std::string documentsFolder_;
    bool foldersKnown_ = false;

    CurrentPhoto photo_;
    PhotoWork work_;
    std::string photoName_; // of the photo's file
    int loadError_ = 0;
    bool ended_ = false;             // EndNow was called
    bool animationTickRuns_ = false; // a tick serves events, and with them perhaps the next tick

    MainPreview preview_;
    ArrowPad arrowPad_;

    frmStorage storage_;
    frmAppEnd appEnd_;
    frmAbout about_;
    frmMsg progress_;
    frmSimpleMsg result_;
    frmSaveTiles saveTiles_;
    frmSheets sheets_;
    PosterPrinting printing_;
    frmTileSize tileSize_;
    frmPosterSize posterSize_;
    frmBtm btm_;
    frmPreview previewWindow_;
};

} // namespace veldara
