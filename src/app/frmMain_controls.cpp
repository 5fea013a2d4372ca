// The main window's texts, and the state of its controls before anything is loaded.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "app/photo_file.h"

#include <vector>

namespace veldara {

namespace {

std::vector<std::string> tileCounts() {
    std::vector<std::string> counts;
    for (int count = 1; count <= maximumTilesPerSide; ++count) {
        counts.push_back(std::to_string(count));
    }
    return counts;
}

// The caption of a control that shows no text of its own is its name for screen readers.
void describe(Control& control, const char* caption, const char* toolTip) {
    control.setCaption(caption);
    control.setToolTip(toolTip);
}

} // namespace

void frmMain::fillControlTexts() {
    fillMenuTexts();
    fillStepTexts();
    fillBrowserTexts();
    fillPrintInfoTexts();
    fillTilesTexts();
    fillResultTexts();
    fillPlacementTexts();
}

void frmMain::fillMenuTexts() {
    mnuFile.setCaption("&File");
    mnuOpenPhoto.setCaption("&Open Photo...");
    mnuOpenRecent.setCaption("Open &Recent");
    mnuSavePdf.setCaption("Save Poster as P&DF...");
    mnuSavePdf.setEnabled(false);
    mnuPrint.setCaption("&Print Poster...");
    mnuPrint.setEnabled(false);
    mnuExit.setCaption("E&xit");
    mnuTools.setCaption("&Tools");
    mnuPaperSize.setCaption("&Select Paper/Margins...");
    mnuEdgeClip.setCaption("E&dge Calibration...");
    mnuPosterSize.setCaption("Choose by &Poster Size...");
    mnuView.setCaption("&View");
    mnuDimOutside.setCaption("&Dim Outside of Crop");
    mnuHelp.setCaption("&Help");
    mnuContent.setCaption("C&ontents...");
    mnuAbout.setCaption("&About...");
}

void frmMain::fillStepTexts() {
    lblStep1.setCaption("Step (1) - Select Image File");
    lblStep2.setCaption("Step (2) - Set Tile Print Size");
    lblStep3.setCaption("Step (3) - Adjust Tiles, View Results");
    lblStep4.setCaption("Step (4) - Click to Save Tile Image Files-->");
    describe(cmdSaveNow, "Save Poster Tile Images", "Generate and save poster tile images now");
    describe(cmdSheets, "Print or PDF...",
             "Show the sheets as they are printed, and save them as one PDF");
    cmdSheets.setEnabled(false);
    describe(cmdQuit, "Exit", "Exit program");
    cmdSaveNow.setEnabled(false);
}

void frmMain::fillBrowserTexts() {
    describe(Drive1, "Drive", "Change the current drive");
    describe(Dir1, "Folders",
             "Select folder containing the image that you want to make a poster out of");
    describe(lstFiles, "Image files", "Filtered list of files in selected folder");
    describe(cmbFileType, "File type", "File list filter");
    cmbFileType.setItems(fileFilterTexts());
    cmbFileType.setListIndex(0);
    describe(cmdMyDoc, "My Documents", "Navigate to My Documents folder");
    describe(cmdDesktop, "Desktop", "Navigate to Desktop folder");
    describe(picCur, noPhotoCaption, "Currently selected image");
}

void frmMain::fillPrintInfoTexts() {
    fraPrintInfo.setCaption("Print Size Per Tile");
    lblPaperNameCaption.setCaption("Paper:");
    lblPaperSizeCaption.setCaption("Size:");
    lblTileSizeCaption.setCaption("Trimmed:");
    lblUnitsCaption.setCaption("Units:");
    describe(cmdEditPaperSize, "Edit", "Edit paper/margins");
    chkPrinterClips.setCaption("Adjust for clipped edges:");
    describe(cmbCurBtm, "Edge calibration profile", "Select active Edge Calibration Profile");
    cmbCurBtm.setEnabled(false); // as long as the box beside it is off
    describe(cmdConfig, "Edit", "Edit Edge Calibration Profiles");
}

void frmMain::fillTilesTexts() {
    fraNumberTiles.setCaption("Number of Tiles");
    lblTilesWide.setCaption("Wide:");
    lblTilesHigh.setCaption("High:");
    cmbTilesWide.setItems(tileCounts());
    cmbTilesHigh.setItems(tileCounts());
    cmbTilesWide.setToolTip("Number of Tiles wide that poster will be");
    cmbTilesHigh.setToolTip("Number of Tiles wide that poster will be"); // the same words
    describe(chkLockWh, "Lock tiles high = tiles wide",
             "Force number of tiles high to equal number of tiles wide");
    cmbRotate.setItems({"No Rotate", "CW Rotate", "CCW Rotate", "180 Rotate"});
    cmbRotate.setListIndex(0);
    describe(cmbRotate, "Rotation", "Rotate image 90, 180, or 270 degrees");
    describe(chkRotateTiles, "Rotate Tiles", "Rotate Tiles 90 degrees");
    describe(chkPreviewTiles, "Show Tiles", "Show locations of poster tiles");
    describe(cmdLargePreview, "Preview", "View full screen preview of your poster");
    cmdLargePreview.setEnabled(false);
}

void frmMain::fillResultTexts() {
    fraPosterSize.setCaption("Final Poster Size");
    lblFinalSizeCaption.setCaption("Final Size:");
    lblMPixCaption.setCaption("MegaPixels:");
    lblResolutionCaption.setCaption("Resolution:");
    lblQualityCaption.setCaption("Quality:");
    describe(lblFinalSize, "---", "Final size of your poster");
    describe(lblMPixVal, "---", "Millions of pixels used in poster image");
    describe(lblResolution, "---", "Resolution of your final printed poster");
    describe(lblQuality, "---", "Estimated image quality of your poster");
}

void frmMain::fillPlacementTexts() {
    fraTilePlacement.setCaption("Tile Placement");
    lblZoom.setCaption("Zoom:");
    scrZoom.setRange(0, 400, 1, 20);
    scrZoom.setToolTip("Zoom amount");
    lbl4x.setCaption("4x");
    lblZoomAmount.setCaption("(0%)");
    imgArrow.setCaption("Move the tiles over the photo");
    imgArrow.setDrawing(Drawing::arrowPad);
    imgArrow_Up.setDrawing(Drawing::arrowPadUp);
    imgArrow_right.setDrawing(Drawing::arrowPadRight);
    imgArrow_down.setDrawing(Drawing::arrowPadDown);
    imgArrow_left.setDrawing(Drawing::arrowPadLeft);
    lblLrCaption.setCaption("Horizontal:");
    lblTbCaption.setCaption("Vertical:");
    tmrLoadingImg.setInterval(100);
    tmrAppEnd.setInterval(250);
    tmrResize.setInterval(60);
    describe(lblLrValue, "(center)", "Horizontal centering of the poster Tiles");
    describe(lblTbValue, "(center)", "Vertical centering of the poster Tiles");
}

} // namespace veldara
