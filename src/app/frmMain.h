// The main window: owns the state of the poster that is being made, browses and loads the photo,
// shows the preview, and hands over to the dialogs. It reads its controls, calls rules, and shows
// the answers.
#pragma once

#include "controls/browsing.h"
#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "platform/image/codec.h"
#include "platform/platform.h"

#include <filesystem>
#include <functional>
#include <string>

namespace veldara {

// Turns a picture file into an upright picture; runs on a worker thread. Throws Error or
// std::bad_alloc.
using PhotoLoader = std::function<Image(const std::filesystem::path&)>;

class frmMain : public Window {
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

  private:
    void fillControlTexts();
    void fillStepTexts();
    void fillBrowserTexts();
    void fillPrintInfoTexts();
    void fillTilesTexts();
    void fillResultTexts();
    void fillPlacementTexts();
    void fillMenuTexts();

    PhotoLoader loadPhoto_;
};

} // namespace veldara
