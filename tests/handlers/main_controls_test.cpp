// What stands on the main window before and after it comes up.
#include "main_fixture.h"

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MainControls : public MainWindowTest {};

TEST_F(MainControls, MenusCarryTheirCaptions) {
    const frmMain& main = create();
    EXPECT_EQ(main.mnuFile.caption(), "&File");
    EXPECT_EQ(main.mnuOpenPhoto.caption(), "&Open Photo...");
    EXPECT_EQ(main.mnuOpenRecent.caption(), "Open &Recent");
    EXPECT_EQ(main.mnuSavePdf.caption(), "Save Poster as P&DF...");
    EXPECT_EQ(main.mnuExit.caption(), "E&xit");
    EXPECT_EQ(main.mnuTools.caption(), "&Tools");
    EXPECT_EQ(main.mnuPaperSize.caption(), "&Select Paper/Margins...");
    EXPECT_EQ(main.mnuEdgeClip.caption(), "E&dge Calibration...");
    EXPECT_EQ(main.mnuPosterSize.caption(), "Choose by &Poster Size...");
    EXPECT_EQ(main.mnuView.caption(), "&View");
    EXPECT_EQ(main.mnuDimOutside.caption(), "&Dim Outside of Crop");
    EXPECT_EQ(main.mnuHelp.caption(), "&Help");
    EXPECT_EQ(main.mnuContent.caption(), "C&ontents...");
    EXPECT_EQ(main.mnuAbout.caption(), "&About...");
}

TEST_F(MainControls, StepsAreLabelled) {
    const frmMain& main = create();
    EXPECT_EQ(main.lblStep1.caption(), "Step (1) - Select Image File");
    EXPECT_EQ(main.lblStep2.caption(), "Step (2) - Set Tile Print Size");
    EXPECT_EQ(main.lblStep3.caption(), "Step (3) - Adjust Tiles, View Results");
    EXPECT_EQ(main.lblStep4.caption(), "Step (4) - Click to Save Tile Image Files-->");
}

TEST_F(MainControls, BrowserHasToolTipsAndFilters) {
    const frmMain& main = create();
    EXPECT_EQ(main.Drive1.toolTip(), "Change the current drive");
    EXPECT_EQ(main.Dir1.toolTip(),
              "Select folder containing the image that you want to make a poster out of");
    EXPECT_EQ(main.lstFiles.toolTip(), "Filtered list of files in selected folder");
    EXPECT_EQ(main.cmbFileType.toolTip(), "File list filter");
    EXPECT_THAT(main.cmbFileType.items(),
                ElementsAre("Image Files (*.jpg, *.tif, *.bmp)", "Jpeg Files Only (*.jpg)",
                            "Tiff Files Only (*.tif)", "BMP Files Only (*.bmp)",
                            "Show All Files (*.*)"));
    EXPECT_EQ(main.cmdMyDoc.caption(), "My Documents");
    EXPECT_EQ(main.cmdMyDoc.toolTip(), "Navigate to My Documents folder");
    EXPECT_EQ(main.cmdDesktop.caption(), "Desktop");
    EXPECT_EQ(main.cmdDesktop.toolTip(), "Navigate to Desktop folder");
    EXPECT_EQ(main.picCur.toolTip(), "Currently selected image");
}

TEST_F(MainControls, TileCountsGoFromOneToTwentyFive) {
    const frmMain& main = create();
    for (const ComboBox* list : {&main.cmbTilesWide, &main.cmbTilesHigh}) {
        ASSERT_EQ(list->count(), 25);
        EXPECT_EQ(list->items().front(), "1");
        EXPECT_EQ(list->items()[9], "10");
        EXPECT_EQ(list->items().back(), "25");
        EXPECT_EQ(list->toolTip(), "Number of Tiles wide that poster will be");
    }
    EXPECT_EQ(main.lblTilesWide.caption(), "Wide:");
    EXPECT_EQ(main.lblTilesHigh.caption(), "High:");
    EXPECT_EQ(main.fraNumberTiles.caption(), "Number of Tiles");
}

TEST_F(MainControls, LayoutControlsAreDescribed) {
    const frmMain& main = create();
    EXPECT_EQ(main.chkLockWh.caption(), "Lock tiles high = tiles wide");
    EXPECT_EQ(main.chkLockWh.toolTip(), "Force number of tiles high to equal number of tiles wide");
    EXPECT_THAT(main.cmbRotate.items(),
                ElementsAre("No Rotate", "CW Rotate", "CCW Rotate", "180 Rotate"));
    EXPECT_EQ(main.cmbRotate.toolTip(), "Rotate image 90, 180, or 270 degrees");
    EXPECT_EQ(main.chkRotateTiles.caption(), "Rotate Tiles");
    EXPECT_EQ(main.chkRotateTiles.toolTip(), "Rotate Tiles 90 degrees");
    EXPECT_EQ(main.chkPreviewTiles.caption(), "Show Tiles");
    EXPECT_EQ(main.chkPreviewTiles.toolTip(), "Show locations of poster tiles");
    EXPECT_EQ(main.cmdLargePreview.caption(), "Preview");
    EXPECT_EQ(main.cmdLargePreview.toolTip(), "View full screen preview of your poster");
}

TEST_F(MainControls, PosterSizeFrameIsDescribed) {
    const frmMain& main = create();
    EXPECT_EQ(main.fraPosterSize.caption(), "Final Poster Size");
    EXPECT_EQ(main.lblFinalSizeCaption.caption(), "Final Size:");
    EXPECT_EQ(main.lblMPixCaption.caption(), "MegaPixels:");
    EXPECT_EQ(main.lblResolutionCaption.caption(), "Resolution:");
    EXPECT_EQ(main.lblQualityCaption.caption(), "Quality:");
    EXPECT_EQ(main.lblFinalSize.toolTip(), "Final size of your poster");
    EXPECT_EQ(main.lblMPixVal.toolTip(), "Millions of pixels used in poster image");
    EXPECT_EQ(main.lblResolution.toolTip(), "Resolution of your final printed poster");
    EXPECT_EQ(main.lblQuality.toolTip(), "Estimated image quality of your poster");
}

TEST_F(MainControls, PlacementFrameIsDescribed) {
    const frmMain& main = create();
    EXPECT_EQ(main.fraTilePlacement.caption(), "Tile Placement");
    EXPECT_EQ(main.lblZoom.caption(), "Zoom:");
    EXPECT_EQ(main.lbl4x.caption(), "4x");
    EXPECT_EQ(main.lblZoomAmount.caption(), "(0%)");
    EXPECT_EQ(main.scrZoom.toolTip(), "Zoom amount");
    EXPECT_EQ(main.scrZoom.minimum(), 0);
    EXPECT_EQ(main.scrZoom.maximum(), 400);
    EXPECT_EQ(main.scrZoom.smallChange(), 1);
    EXPECT_EQ(main.scrZoom.largeChange(), 20);
    EXPECT_EQ(main.lblLrCaption.caption(), "Horizontal:");
    EXPECT_EQ(main.lblTbCaption.caption(), "Vertical:");
    EXPECT_EQ(main.lblLrValue.caption(), "(center)");
    EXPECT_EQ(main.lblTbValue.caption(), "(center)");
    EXPECT_EQ(main.lblLrValue.toolTip(), "Horizontal centering of the poster Tiles");
    EXPECT_EQ(main.lblTbValue.toolTip(), "Vertical centering of the poster Tiles");
    EXPECT_EQ(main.imgArrow.drawing(), Drawing::arrowPad);
    EXPECT_EQ(main.imgArrow_Up.drawing(), Drawing::arrowPadUp);
    EXPECT_EQ(main.imgArrow_right.drawing(), Drawing::arrowPadRight);
    EXPECT_EQ(main.imgArrow_down.drawing(), Drawing::arrowPadDown);
    EXPECT_EQ(main.imgArrow_left.drawing(), Drawing::arrowPadLeft);
}

TEST_F(MainControls, PrintInfoFrameIsDescribed) {
    const frmMain& main = create();
    EXPECT_EQ(main.fraPrintInfo.caption(), "Print Size Per Tile");
    EXPECT_EQ(main.lblPaperNameCaption.caption(), "Paper:");
    EXPECT_EQ(main.lblPaperSizeCaption.caption(), "Size:");
    EXPECT_EQ(main.lblTileSizeCaption.caption(), "Trimmed:");
    EXPECT_EQ(main.lblUnitsCaption.caption(), "Units:");
    EXPECT_EQ(main.cmdEditPaperSize.toolTip(), "Edit paper/margins");
    EXPECT_EQ(main.chkPrinterClips.caption(), "Adjust for clipped edges:");
    EXPECT_EQ(main.cmbCurBtm.toolTip(), "Select active Edge Calibration Profile");
    EXPECT_EQ(main.cmdConfig.caption(), "Edit");
    EXPECT_EQ(main.cmdConfig.toolTip(), "Edit Edge Calibration Profiles");
    EXPECT_EQ(main.tileSizeAreaName(), "Print Size Per Tile");
}

TEST_F(MainControls, LastStepHasItsButtons) {
    const frmMain& main = create();
    EXPECT_EQ(main.cmdSaveNow.caption(), "Save Poster Tile Images");
    EXPECT_EQ(main.cmdSaveNow.toolTip(), "Generate and save poster tile images now");
    EXPECT_EQ(main.cmdQuit.caption(), "Exit");
    EXPECT_EQ(main.cmdQuit.toolTip(), "Exit program");
}

TEST_F(MainControls, NothingRunsAndNothingIsReadyBeforeTheLoad) {
    const frmMain& main = create();
    EXPECT_FALSE(main.visible());
    EXPECT_FALSE(main.tmrImg.enabled());
    EXPECT_FALSE(main.tmrLoadingImg.enabled());
    EXPECT_FALSE(main.tmrAppEnd.enabled());
    EXPECT_EQ(main.tmrLoadingImg.interval(), 100);
    EXPECT_EQ(main.tmrAppEnd.interval(), 250);
    EXPECT_FALSE(main.cmdSaveNow.enabled());
    EXPECT_FALSE(main.cmdLargePreview.enabled());
    EXPECT_FALSE(main.cmbCurBtm.enabled());
    EXPECT_FALSE(main.bImgSelected);
    EXPECT_FALSE(main.bTileRotated);
    EXPECT_FALSE(main.bPreviewOn);
    EXPECT_TRUE(main.bSkipSettingWrite);
    EXPECT_FALSE(main.bSkipOutputUpdate);
    EXPECT_EQ(main.lImgWidth, 0);
    EXPECT_EQ(main.lImgHeight, 0);
    EXPECT_THAT(fakes.registry.log, IsEmpty());
}

TEST_F(MainControls, IdentityIsFixedTextAndTheYearOfTheClock) {
    fakes.clock.currentYear = 2031;
    const frmMain& main = create();
    EXPECT_EQ(main.GetAppVersionString(), VELDARA_VERSION);
    EXPECT_EQ(main.GetCompanyName(), "Korvane Software, LLC");
    EXPECT_EQ(main.GetAppCopyrightString(), "Copyright © 2031 Korvane Software, LLC");
    fakes.clock.currentYear = 2032;
    EXPECT_EQ(main.GetAppCopyrightString(), "Copyright © 2032 Korvane Software, LLC");
}

TEST_F(MainControls, ConstantTileLimitsAreInInches) {
    const frmMain& main = create();
    EXPECT_DOUBLE_EQ(main.getConstMinTileSize(), 0.75);
    EXPECT_DOUBLE_EQ(main.getConstMaxTileSize(), 50.0);
    EXPECT_EQ(main.GetTileMin(), "0.75");
    EXPECT_EQ(main.GetTileMax(), "50");
}

TEST_F(MainControls, TileLimitTextsFollowTheUsersSeparator) {
    fakes.numberStyle.decimalSeparator = ',';
    EXPECT_EQ(create().GetTileMin(), "0,75");
}

} // namespace
} // namespace veldara::test
