// Tile counts, lock, tile rotation, tile sizes, figures, paper, edge compensation: what each change
// brings after it, and what is saved when.
#include "main_fixture.h"

namespace veldara::test {
namespace {

class MainLayout : public MainWindowTest {
  protected:
    double width = 0.0;
    double height = 0.0;
};

TEST_F(MainLayout, TileCountsAreTheListIndexPlusOne) {
    start().cmbTilesWide.userSelect(0);
    window->cmbTilesHigh.userSelect(24);
    EXPECT_EQ(window->GetNumTilesWide(), 1);
    EXPECT_EQ(window->GetNumTilesHigh(), 25);
}

TEST_F(MainLayout, TilesAreCutFromTheWholeCrop) {
    startWithPhoto(1000, 800);
    setTileInches(10, 24);
    window->cmbTilesWide.userSelect(2);
    window->cmbTilesHigh.userSelect(0); // 30 x 24 inches, the photo's own ratio
    std::vector<TileRect> tiles;
    ASSERT_EQ(window->CalcTileCoord(tiles), 3);
    EXPECT_EQ(tiles[0], (TileRect{0, 0, 332, 799}));
    EXPECT_EQ(tiles[1], (TileRect{333, 0, 665, 799}));
    EXPECT_EQ(tiles[2], (TileRect{667, 0, 999, 799}));
}

TEST_F(MainLayout, ZoomAndPanGoIntoTheTiles) {
    startWithPhoto(1000, 1000);
    setTileInches(8, 8);
    window->scrZoom.userSetValue(100);
    std::vector<TileRect> tiles;
    ASSERT_EQ(window->CalcTileCoord(tiles), 4);
    EXPECT_EQ(tiles.front(), (TileRect{250, 250, 499, 499}));
    EXPECT_EQ(tiles.back(), (TileRect{500, 500, 749, 749}));
}

TEST_F(MainLayout, InvalidTileSizeGivesNoTiles) {
    startWithPhoto();
    setTileInches(0.5, 8);
    std::vector<TileRect> tiles;
    EXPECT_EQ(window->CalcTileCoord(tiles), -1);
    EXPECT_EQ(tiles.size(), 4U);
    EXPECT_DOUBLE_EQ(window->GetFinalImgWhRatio(), 0.0);
}

TEST_F(MainLayout, TilesWithoutAPhotoAreNone) {
    start();
    std::vector<TileRect> tiles;
    EXPECT_LT(window->CalcTileCoord(tiles), 1);
}

TEST_F(MainLayout, PosterRatioFollowsTheTileRotation) {
    start();
    setTileInches(8, 10);
    window->cmbTilesWide.userSelect(1);
    window->cmbTilesHigh.userSelect(0);
    EXPECT_DOUBLE_EQ(window->GetFinalImgWhRatio(), 1.6);
    window->chkRotateTiles.userSetChecked(true);
    EXPECT_DOUBLE_EQ(window->GetFinalImgWhRatio(), 2.5);
}

TEST_F(MainLayout, TileCountsAndLockAreNotSavedWhenTheyChange) {
    startWithPhoto();
    window->cmbTilesWide.userSelect(3);
    window->cmbTilesHigh.userSelect(4);
    window->chkLockWh.userSetChecked(true);
    window->cmbRotate.userSelect(1);
    window->chkRotateTiles.userSetChecked(true);
    window->scrZoom.userSetValue(30);
    EXPECT_FALSE(saved());
}

TEST_F(MainLayout, LockingTakesTheWideCount) {
    start().cmbTilesWide.userSelect(4);
    window->cmbTilesHigh.userSelect(7);
    window->chkLockWh.userSetChecked(true);
    EXPECT_EQ(window->GetNumTilesWide(), 5);
    EXPECT_EQ(window->GetNumTilesHigh(), 5);
}

TEST_F(MainLayout, LockedCountsFollowEachOther) {
    start().chkLockWh.userSetChecked(true);
    window->cmbTilesWide.userSelect(6);
    EXPECT_EQ(window->GetNumTilesHigh(), 7);
    window->cmbTilesHigh.userSelect(2);
    EXPECT_EQ(window->GetNumTilesWide(), 3);
}

TEST_F(MainLayout, UnlockingChangesNoCount) {
    start().chkLockWh.userSetChecked(true);
    window->cmbTilesWide.userSelect(6);
    window->chkLockWh.userSetChecked(false);
    EXPECT_EQ(window->GetNumTilesHigh(), 7);
    window->cmbTilesHigh.userSelect(0);
    EXPECT_EQ(window->GetNumTilesWide(), 7);
}

TEST_F(MainLayout, UnlockingLeavesCountsThatWereStoredUnequal) {
    store("prefs_heightEqualsWidth", 1);
    store("prefs_numTiles", "w01h04");
    start().chkLockWh.userSetChecked(false);
    EXPECT_EQ(window->GetNumTilesWide(), 2);
    EXPECT_EQ(window->GetNumTilesHigh(), 5);
}

TEST_F(MainLayout, LockedChangeShowsFiguresOfBothCounts) {
    startWithPhoto();
    setTileInches(8, 8);
    window->chkLockWh.userSetChecked(true);
    window->cmbTilesHigh.userSelect(2);
    EXPECT_EQ(window->lblFinalSize.caption(), "24 x 24 inches");
}

TEST_F(MainLayout, TileRotationIsKnownToTheDialogs) {
    startWithPhoto().chkRotateTiles.userSetChecked(true);
    EXPECT_TRUE(window->bTileRotated);
    EXPECT_TRUE(window->planTiles({}).treatment.turned);
    window->chkRotateTiles.userSetChecked(false);
    EXPECT_FALSE(window->bTileRotated);
}

TEST_F(MainLayout, FiguresOfAWorkedExample) {
    startWithPhoto(3000, 2000);
    setTileInches(8, 10);
    window->cmbTilesWide.userSelect(2);
    EXPECT_EQ(window->lblFinalSize.caption(), "24 x 20 inches");
    EXPECT_EQ(window->lblResolution.caption(), "100.0 dpi");
    EXPECT_EQ(window->lblQuality.caption(), "Good");
    EXPECT_EQ(window->lblMPixVal.caption(), "4.80");
    window->scrZoom.userSetValue(100);
    EXPECT_EQ(window->lblResolution.caption(), "50.0 dpi");
    EXPECT_EQ(window->lblQuality.caption(), "Good from a distance");
    EXPECT_EQ(window->lblMPixVal.caption(), "2.40");
}

TEST_F(MainLayout, FiguresFollowTheTileRotation) {
    startWithPhoto();
    setTileInches(8, 10);
    window->cmbTilesWide.userSelect(2);
    window->chkRotateTiles.userSetChecked(true);
    EXPECT_EQ(window->lblFinalSize.caption(), "30 x 16 inches");
}

TEST_F(MainLayout, FiguresInMillimetresAreInCentimetres) {
    startWithPhoto();
    int done = 0;
    window->setNewTileVals("Paper", 1, 203.2, 254, 210, 297, "line", done);
    window->cmbTilesWide.userSelect(2);
    EXPECT_EQ(window->lblFinalSize.caption(), "61 x 50.8 cm");
    EXPECT_EQ(window->lblResolution.caption(), "39.4 dots/cm");
    EXPECT_EQ(window->lblQuality.caption(), "Good");
}

TEST_F(MainLayout, FiguresUseTheUsersSeparator) {
    fakes.numberStyle.decimalSeparator = ',';
    startWithPhoto();
    EXPECT_EQ(window->lblResolution.caption(), "250,0 dpi");
    EXPECT_EQ(window->lblPaperSize.caption(), "6,00 x 4,00");
}

TEST_F(MainLayout, InvalidTileSizeLeavesTheFiguresStanding) {
    startWithPhoto();
    const std::string before = window->lblFinalSize.caption();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(60, 8);
    EXPECT_EQ(window->lblFinalSize.caption(), before);
    EXPECT_FALSE(window->cmdSaveNow.enabled());
    EXPECT_FALSE(window->cmdLargePreview.enabled());
}

TEST_F(MainLayout, TrimsThatLeaveNothingShowNoFigures) {
    fakes.tree.addFile("/data/veldara/printer_edge_config", "all\t99,99,99,99,\r\n");
    startWithPhoto();
    setTileInches(0.75, 0.75);
    window->chkPreviewTiles.userSetChecked(false);
    window->chkPrinterClips.userSetChecked(true);
    for (const Label* figure : {&window->lblFinalSize, &window->lblMPixVal, &window->lblResolution,
                                &window->lblQuality}) {
        EXPECT_EQ(figure->caption(), "---");
    }
    std::vector<TileRect> tiles;
    EXPECT_LT(window->CalcTileCoord(tiles), 1);
    EXPECT_DOUBLE_EQ(window->GetFinalImgWhRatio(), 0.0);
}

// Tile sizes

struct SizeCase {
    int units;
    double width;
    double height;
    bool valid;
};

class TileSizes : public MainLayout, public ::testing::WithParamInterface<SizeCase> {};

TEST_P(TileSizes, AreCheckedAgainstTheLimits) {
    start().chkPreviewTiles.userSetChecked(false);
    int done = 0;
    window->setNewTileVals("Paper", GetParam().units, GetParam().width, GetParam().height, 1, 1, "",
                           done);
    EXPECT_EQ(window->CheckTileSizes(width, height), GetParam().valid);
    EXPECT_EQ(window->CheckTileSizesNoTrim(width, height), GetParam().valid);
}

INSTANTIATE_TEST_SUITE_P(
    All, TileSizes,
    ::testing::Values(SizeCase{0, 0.75, 0.75, true}, SizeCase{0, 50, 50, true},
                      SizeCase{0, 0.7499, 8, false}, SizeCase{0, 8, 0.7499, false},
                      SizeCase{0, 50.0001, 8, false}, SizeCase{0, 8, 50.0001, false},
                      SizeCase{1, 19.05, 19.05, true}, SizeCase{1, 1270, 1270, true},
                      SizeCase{1, 19.04, 100, false}, SizeCase{1, 100, 1270.1, false},
                      SizeCase{2, 100, 100, true}));

TEST_F(MainLayout, TrimsAreTakenOffAfterTheTest) {
    fakes.tree.addFile("/data/veldara/printer_edge_config", "mine\t04,08,12,16,\r\n");
    start();
    setTileInches(0.75, 0.75);
    window->chkPrinterClips.userSetChecked(true);
    ASSERT_TRUE(window->CheckTileSizes(width, height));
    EXPECT_DOUBLE_EQ(width, 0.75 - 8 / 64.0 - 16 / 64.0);
    EXPECT_DOUBLE_EQ(height, 0.75 - 4 / 64.0 - 12 / 64.0);
    ASSERT_TRUE(window->CheckTileSizesNoTrim(width, height));
    EXPECT_DOUBLE_EQ(width, 0.75);
    EXPECT_DOUBLE_EQ(height, 0.75);
}

TEST_F(MainLayout, TrimsCountOnlyWhileCompensationIsOn) {
    fakes.tree.addFile("/data/veldara/printer_edge_config", "mine\t16,16,16,16,\r\n");
    start();
    setTileInches(8, 10);
    ASSERT_TRUE(window->CheckTileSizes(width, height));
    EXPECT_DOUBLE_EQ(width, 8.0);
    window->chkPrinterClips.userSetChecked(true);
    ASSERT_TRUE(window->CheckTileSizes(width, height));
    EXPECT_DOUBLE_EQ(width, 7.5);
    EXPECT_DOUBLE_EQ(height, 9.5);
}

TEST_F(MainLayout, CheckWithoutAnActiveProfileFails) {
    start().chkPrinterClips.userSetChecked(true);
    window->cmbCurBtm.setListIndex(-1);
    EXPECT_FALSE(window->CheckTileSizes(width, height));
    EXPECT_TRUE(window->CheckTileSizesNoTrim(width, height));
}

TEST_F(MainLayout, ValidSizeIsOkWithoutAMessage) {
    EXPECT_TRUE(start().bTileSizesOk());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(MainLayout, InvalidSizeIsCheckedUntilItIsMended) {
    start().chkPreviewTiles.userSetChecked(false);
    setTileInches(0.1, 8);
    int rounds = 0;
    fakes.eventPump.whileEventsRun = [&] {
        if (++rounds == 100000) { // far deeper than calls could nest
            setTileInches(8, 8);
        }
    };
    EXPECT_FALSE(window->bTileSizesOk());
    EXPECT_EQ(rounds, 100000);
    EXPECT_EQ(fakes.dialogs.messages.size(), 1U) << "the message comes once";
}

TEST_F(MainLayout, InvalidSizeIsCheckedSilentlyWhenAskedSo) {
    start().chkPreviewTiles.userSetChecked(false);
    setTileInches(0.1, 8);
    fakes.eventPump.whileEventsRun = [&] { window->EndAppNow(); };
    EXPECT_FALSE(window->bTileSizesOk(false));
    EXPECT_TRUE(fakes.dialogs.quiet());
}

// Paper

TEST_F(MainLayout, NewPaperIsStoredShownAndSaved) {
    startWithPhoto();
    int done = 0;
    window->setNewTileVals("Letter", 0, 6, 9, 8.5, 11, "|0|Letter|", done);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(window->lblPaperName.caption(), "Letter");
    EXPECT_EQ(window->lblPaperSize.caption(), "8.50 x 11.00");
    EXPECT_EQ(window->lblTileSize.caption(), "6.00 x 9.00");
    EXPECT_EQ(window->lblUnits.caption(), "Inches");
    EXPECT_EQ(window->lblFinalSize.caption(), "12 x 18 inches");
    EXPECT_EQ(window->getPaperRegLine(), "|0|Letter|");
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_EQ(storedText("paperRegLine"), "|0|Letter|");
}

TEST_F(MainLayout, NewPaperInMillimetresIsShownWithOneDecimal) {
    start();
    int done = 0;
    window->setNewTileVals("A4", 1, 160, 247.25, 210, 297, "", done);
    EXPECT_EQ(window->lblPaperSize.caption(), "210.0 x 297.0");
    EXPECT_EQ(window->lblTileSize.caption(), "160.0 x 247.3");
    EXPECT_EQ(window->lblUnits.caption(), "Millimeters");
    EXPECT_EQ(window->iCurUnits, 1);
}

TEST_F(MainLayout, MarginLockIsSavedByTheNextFullWrite) {
    start().setWhMarginLockedVal(1);
    EXPECT_FALSE(saved());
    setTileInches(8, 10);
    EXPECT_EQ(stored("cmbMarginLocked").number, 1);
}

// What is saved, in which form

TEST_F(MainLayout, FullWriteHasItsOrderAndForms) {
    startWithPhoto();
    window->cmbTilesWide.userSelect(3);
    window->cmbTilesHigh.userSelect(11);
    window->chkLockWh.userSetChecked(true);
    window->cmbTilesHigh.userSelect(11);
    forgetWrites();
    window->chkPreviewTiles.userSetChecked(false);
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_EQ(storedText("prefs_numTiles"), "w11h11");
    EXPECT_EQ(storedText("prefs_edgeAdjust"), "0_00");
    EXPECT_EQ(stored("prefs_showTiles").type, RegistryType::dword);
    EXPECT_EQ(stored("prefs_showTiles").number, 0);
    EXPECT_EQ(stored("prefs_heightEqualsWidth").type, RegistryType::dword);
    EXPECT_EQ(stored("prefs_heightEqualsWidth").number, 1);
    EXPECT_EQ(stored("cmbMarginLocked").type, RegistryType::dword);
    EXPECT_EQ(stored("cmbMarginLocked").number, 0);
    EXPECT_FALSE(window->bSkipSettingWrite);
}

TEST_F(MainLayout, WriteErrorsStopNothing) {
    start();
    fakes.registry.setFails = 5;
    window->chkPreviewTiles.userSetChecked(false);
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_TRUE(fakes.dialogs.quiet());
    EXPECT_FALSE(window->bSkipSettingWrite);
}

TEST_F(MainLayout, UnchosenCountIsSavedAndReadBackAsTheDefault) {
    start().cmbTilesWide.setListIndex(-1);
    window->userClose();
    EXPECT_EQ(storedText("prefs_numTiles"), "w-1h01");
    start();
    EXPECT_EQ(window->cmbTilesWide.listIndex(), 1);
}

TEST_F(MainLayout, ClosingSavesWhatExitForgets) {
    start().cmbTilesWide.userSelect(8);
    window->cmdQuit.userClick();
    EXPECT_FALSE(saved());
    EXPECT_EQ(fakes.screen.log.back(), "end program");
    start().cmbTilesWide.userSelect(8);
    window->userClose();
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_FALSE(window->visible());
    EXPECT_EQ(std::count(fakes.screen.log.begin(), fakes.screen.log.end(), "end program"), 1)
        << "only the exit ends the program at once";
    start();
    EXPECT_EQ(window->GetNumTilesWide(), 9);
}

TEST_F(MainLayout, EverythingSavedIsBackAtTheNextStart) {
    start();
    int done = 0;
    window->setNewTileVals("A4 - 210 x 297", 1, 190, 257, 210, 297,
                           "|1|A4 - 210 x 297|210|297|25|25|25|25|20|10|20|10|", done);
    window->cmbTilesWide.userSelect(4);
    window->cmbTilesHigh.userSelect(5);
    window->chkPrinterClips.userSetChecked(true);
    window->cmbCurBtm.userSelect(2);
    window->chkPreviewTiles.userSetChecked(false);
    window->setWhMarginLockedVal(1);
    window->userClose();
    start();
    EXPECT_EQ(window->lblTileSize.caption(), "190.0 x 257.0");
    EXPECT_EQ(window->GetNumTilesWide(), 5);
    EXPECT_EQ(window->GetNumTilesHigh(), 6);
    EXPECT_TRUE(window->chkPrinterClips.checked());
    EXPECT_EQ(window->cmbCurBtm.listIndex(), 2);
    EXPECT_FALSE(window->chkPreviewTiles.checked());
    window->userClose();
    EXPECT_EQ(stored("cmbMarginLocked").number, 1);
}

// Edge compensation

class EdgeCompensationSwitch : public MainLayout {
  protected:
    Message introduction() const {
        return {"This option compensates for the amount that your printer clips off from the top, "
                "bottom, left and right edges of your image while printing.  This edge clipping "
                "primarily happens with borderless printing.  \r\nClick on the Edit button to the "
                "right of the Edge Calibration dropdown control to create a customized Edge "
                "Calibration Profile for your printer (see the help file for more details about "
                "this).",
                "Edge Calibration Introduction", MessageIcon::information, MessageButtons::ok};
    }
};

TEST_F(EdgeCompensationSwitch, EnablesTheProfileList) {
    start().chkPrinterClips.userSetChecked(true);
    EXPECT_TRUE(window->cmbCurBtm.enabled());
    window->chkPrinterClips.userSetChecked(false);
    EXPECT_FALSE(window->cmbCurBtm.enabled());
}

TEST_F(EdgeCompensationSwitch, IsIntroducedAtEverySwitchOnUntilCalibrated) {
    start().chkPrinterClips.userSetChecked(true);
    EXPECT_EQ(fakes.dialogs.onlyMessage(), introduction());
    window->chkPrinterClips.userSetChecked(false);
    EXPECT_EQ(fakes.dialogs.messages.size(), 1U);
    window->chkPrinterClips.userSetChecked(true);
    EXPECT_EQ(fakes.dialogs.messages.size(), 2U);
}

TEST_F(EdgeCompensationSwitch, IsNotIntroducedWithAnActiveCalibration) {
    start().cmbCurBtm.setListIndex(1);
    window->chkPrinterClips.userSetChecked(true);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(EdgeCompensationSwitch, IsNotIntroducedWithMoreThanThreeProfiles) {
    fakes.tree.addFile("/data/veldara/printer_edge_config",
                       "a\t00,00,00,00,\r\nb\t00,00,00,00,\r\nc\t00,00,00,00,\r\n"
                       "d\t00,00,00,00,\r\n");
    start().chkPrinterClips.userSetChecked(true);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(EdgeCompensationSwitch, IsSavedAndReckonedWith) {
    startWithPhoto();
    window->cmbCurBtm.setListIndex(1);
    forgetWrites();
    window->chkPrinterClips.userSetChecked(true);
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_EQ(storedText("prefs_edgeAdjust"), "1_01");
    EXPECT_EQ(window->lblFinalSize.caption(), "11.81 x 7.81 inches");
}

TEST_F(EdgeCompensationSwitch, ProfileChoiceRefreshesAndSaves) {
    startWithPhoto();
    window->chkPrinterClips.userSetChecked(true);
    forgetWrites();
    window->cmbCurBtm.userSelect(2);
    EXPECT_EQ(window->lblFinalSize.caption(), "11.63 x 7.84 inches");
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_EQ(storedText("prefs_edgeAdjust"), "1_02");
    EXPECT_EQ(window->activeProfile(), 2);
}

TEST_F(EdgeCompensationSwitch, NoProfileLeavesNothingToSave) {
    startWithPhoto();
    window->chkPreviewTiles.userSetChecked(false);
    window->chkPrinterClips.userSetChecked(true);
    EXPECT_TRUE(window->cmdSaveNow.enabled());
    window->cmbCurBtm.setListIndex(-1);
    EXPECT_FALSE(window->cmdSaveNow.enabled());
    EXPECT_FALSE(window->cmdLargePreview.enabled());
}

TEST_F(EdgeCompensationSwitch, RefilledProfileListIsReckonedWith) {
    startWithPhoto();
    window->chkPrinterClips.userSetChecked(true);
    window->cmbCurBtm.userSelect(2);
    window->fillProfileList({"default", "Kodak photo lab default"}, 1);
    EXPECT_EQ(window->lblFinalSize.caption(), "11.81 x 7.81 inches");
}

TEST_F(EdgeCompensationSwitch, RefilledProfileListSavesOnlyAnotherPosition) {
    start().chkPrinterClips.userSetChecked(true);
    window->cmbCurBtm.userSelect(2);
    forgetWrites();
    window->fillProfileList({"default", "Kodak photo lab default", "renamed"}, 2);
    EXPECT_FALSE(saved());
    EXPECT_EQ(window->cmbCurBtm.text(), "renamed");
    window->fillProfileList({"Kodak photo lab default", "renamed"}, 1);
    EXPECT_EQ(storedText("prefs_edgeAdjust"), "1_01");
}

} // namespace
} // namespace veldara::test
