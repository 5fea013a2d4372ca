// The main window's hand-over to its other windows, to the help, and to the end of the program.
#include "main_fixture.h"

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HandOver : public MainWindowTest {
  protected:
    template <typename Dialog>
    void whenShown(const std::string& name, std::function<void(Dialog&)> act) {
        fakes.screen.whenModal(name, [act](Window& dialog) { act(dynamic_cast<Dialog&>(dialog)); });
    }

    frmPreview& openPreview() {
        window->cmdLargePreview.userClick();
        return dynamic_cast<frmPreview&>(*fakes.screen.lastShown);
    }
};

// Paper and margins

class PaperHandOver : public HandOver,
                      public ::testing::WithParamInterface<std::function<void(frmMain&)>> {};

TEST_P(PaperHandOver, OpensModallyAndTakesTheAcceptedPaper) {
    startWithPhoto();
    whenShown<frmTileSize>("frmTileSize", [](frmTileSize& dialog) {
        EXPECT_FALSE(dialog.chkLock.checked());
        dialog.lstPaperSize.userClick(3); // Letter: 6 x 9 inches after its margins
        dialog.cmdOk.userClick();
    });
    GetParam()(*window);
    EXPECT_TRUE(fakes.screen.allUsersPlayed());
    EXPECT_EQ(window->lblPaperName.caption(), "Letter 8.5\" x 11\"");
    EXPECT_EQ(window->lblTileSize.caption(), "6.00 x 9.00");
    EXPECT_EQ(window->lblFinalSize.caption(), "12 x 18 inches");
    EXPECT_EQ(storedText("paperRegLine"), window->getPaperRegLine());
}

INSTANTIATE_TEST_SUITE_P(MenuAndButton, PaperHandOver,
                         ::testing::Values([](frmMain& main) { main.mnuPaperSize.userClick(); },
                                           [](frmMain& main) {
                                               main.cmdEditPaperSize.userClick();
                                           }));

TEST_F(HandOver, CancelledPaperChangesNothing) {
    startWithPhoto();
    whenShown<frmTileSize>("frmTileSize", [](frmTileSize& dialog) {
        dialog.lstPaperSize.userClick(3);
        dialog.cmdCancel.userClick();
    });
    window->mnuPaperSize.userClick();
    EXPECT_EQ(window->lblTileSize.caption(), "6.00 x 4.00");
    EXPECT_FALSE(saved());
}

TEST_F(HandOver, PaperDialogOpensWithTheCurrentLineAndLock) {
    store("paperRegLine", "|1|A4 - 210 x 297|210|297|25|25|25|25|20|10|20|10|");
    store("cmbMarginLocked", 1);
    start();
    whenShown<frmTileSize>("frmTileSize", [](frmTileSize& dialog) {
        EXPECT_TRUE(dialog.opbMm.selected());
        EXPECT_EQ(dialog.lstPaperSize.selectedText(), "A4 - 210 x 297");
        EXPECT_EQ(dialog.cmbMargins[0].text(), "20.0");
        EXPECT_TRUE(dialog.chkLock.checked());
        dialog.cmdCancel.userClick();
    });
    window->cmdEditPaperSize.userClick();
}

TEST_F(HandOver, NewMarginLockIsStoredByTheNextFullWriteOnly) {
    start();
    whenShown<frmTileSize>("frmTileSize", [](frmTileSize& dialog) {
        dialog.chkLock.userSetChecked(true);
        dialog.cmdOk.userClick();
    });
    window->cmdEditPaperSize.userClick();
    EXPECT_EQ(stored("cmbMarginLocked").number, 0);
    window->chkPreviewTiles.userSetChecked(false);
    EXPECT_EQ(stored("cmbMarginLocked").number, 1);
}

// Edge calibration

class CalibrationHandOver : public HandOver,
                            public ::testing::WithParamInterface<std::function<void(frmMain&)>> {};

TEST_P(CalibrationHandOver, OpensModallyAndItsTrimsAreUsed) {
    startWithPhoto();
    window->cmbCurBtm.setListIndex(1);
    window->chkPrinterClips.userSetChecked(true);
    EXPECT_EQ(window->lblFinalSize.caption(), "11.81 x 7.81 inches");
    whenShown<frmBtm>("frmBtm", [](frmBtm& dialog) {
        dialog.lstConfigurations.userClick(1);
        dialog.cmbLeftEdge.userSelect(16);
        dialog.cmbRightEdge.userSelect(16);
        dialog.cmdOk.userClick();
    });
    GetParam()(*window);
    EXPECT_TRUE(fakes.screen.allUsersPlayed());
    EXPECT_EQ(window->lblFinalSize.caption(), "11 x 7.81 inches");
    EXPECT_EQ(window->lblTbValue.caption(), "(full height)");
    EXPECT_EQ(window->lblLrValue.caption(), "(center)") << "the crop was drawn again";
}

INSTANTIATE_TEST_SUITE_P(MenuAndButton, CalibrationHandOver,
                         ::testing::Values([](frmMain& main) { main.mnuEdgeClip.userClick(); },
                                           [](frmMain& main) { main.cmdConfig.userClick(); }));

TEST_F(HandOver, ProfileListFollowsTheDialog) {
    start();
    fakes.dialogs.texts = {"Mine", "Ours"};
    whenShown<frmBtm>("frmBtm", [this](frmBtm& dialog) {
        dialog.cmdNew.userClick();
        EXPECT_THAT(window->cmbCurBtm.items(), ElementsAre("default", "Kodak photo lab default",
                                                           "Fuji photo lab default", "Mine"));
        dialog.cmdRename.userClick();
        EXPECT_EQ(window->cmbCurBtm.items().back(), "Ours");
        dialog.lstConfigurations.userClick(0);
        dialog.cmdDel.userClick();
        dialog.cmdOk.userClick();
    });
    window->cmdConfig.userClick();
    EXPECT_THAT(window->cmbCurBtm.items(),
                ElementsAre("Kodak photo lab default", "Fuji photo lab default", "Ours"));
}

TEST_F(HandOver, ActiveProfileStaysTheSameWhenAnotherIsDeleted) {
    start().cmbCurBtm.setListIndex(2);
    whenShown<frmBtm>("frmBtm", [](frmBtm& dialog) {
        dialog.lstConfigurations.userClick(0);
        dialog.cmdDel.userClick();
        dialog.cmdOk.userClick();
    });
    window->cmdConfig.userClick();
    EXPECT_EQ(window->cmbCurBtm.text(), "Fuji photo lab default");
    EXPECT_EQ(window->activeProfile(), 1);
    EXPECT_EQ(storedText("prefs_edgeAdjust"), "0_01") << "its position is what is remembered";
}

TEST_F(HandOver, OpeningTheCalibrationDialogSavesNothing) {
    start().cmbCurBtm.setListIndex(2);
    forgetWrites();
    whenShown<frmBtm>("frmBtm", [](frmBtm& dialog) { dialog.cmdOk.userClick(); });
    window->cmdConfig.userClick();
    EXPECT_FALSE(saved());
    EXPECT_EQ(window->activeProfile(), 2);
}

// Full-screen preview

TEST_F(HandOver, PreviewButtonIsOffWithoutAPhoto) {
    start().cmdLargePreview.userClick();
    EXPECT_TRUE(fakes.dialogs.quiet());
    EXPECT_FALSE(window->cmdLargePreview.enabled());
}

TEST_F(HandOver, PreviewWithoutAPhotoIsRefused) {
    start().cmdLargePreview.setEnabled(true);
    window->cmdLargePreview.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              (Message{"No image selected.  Please select an image from the file listbox",
                       "No Image Selected", MessageIcon::exclamation, MessageButtons::ok}));
    EXPECT_THAT(fakes.screen.log, ElementsAre("show frmMain"));
}

TEST_F(HandOver, PreviewIsShownBesideTheMainWindow) {
    startWithPhoto();
    std::vector<Pointer> pointers;
    window->observe([&](Property property) {
        if (property == Property::pointer) {
            pointers.push_back(window->pointer());
        }
    });
    window->cmdLargePreview.userClick();
    EXPECT_EQ(fakes.screen.log.back(), "show frmPreview");
    EXPECT_THAT(pointers, ElementsAre(Pointer::hourglass, Pointer::arrow));
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(HandOver, PreviewThatIsLeftOpenComesToTheFrontWhenItIsAskedForAgain) {
    startWithPhoto();
    frmPreview& preview = openPreview();
    int raised = 0;
    preview.observe([&](Property property) { raised += property == Property::focus ? 1 : 0; });
    window->cmdLargePreview.userClick();
    EXPECT_EQ(raised, 1);
    EXPECT_THAT(fakes.screen.log, ElementsAre("show frmMain", "show frmPreview"));
}

TEST_F(HandOver, PreviewHasALineAtEveryEdgeOfATile) {
    startWithPhoto();
    window->cmbTilesWide.userSelect(3);
    window->cmbTilesHigh.userSelect(1);
    frmPreview& preview = openPreview();
    preview.userResize(900, 700);
    const Image& shown = *preview.picPreview.pixels();
    const auto isRed = [&](int x, int y) {
        const std::uint8_t* pixel = shown.row(y) + std::ptrdiff_t{3} * x;
        return pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 0;
    };
    int across = 0;
    for (int x = 0; x < shown.width(); ++x) {
        across += isRed(x, 1) ? 1 : 0;
    }
    int down = 0;
    for (int y = 0; y < shown.height(); ++y) {
        down += isRed(1, y) ? 1 : 0;
    }
    EXPECT_EQ(across, 5);
    EXPECT_EQ(down, 3);
}

TEST_F(HandOver, PreviewThatIsResizedWhenThePhotoHasGoneKeepsItsPicture) {
    startWithPhoto();
    frmPreview& preview = openPreview();
    preview.userResize(900, 700);
    const auto shown = preview.picPreview.pixels();
    ASSERT_NE(shown, nullptr);
    window->Dir1.setPath("/");
    ASSERT_FALSE(window->bImgSelected);
    preview.userResize(800, 600);
    EXPECT_EQ(preview.picPreview.pixels(), shown);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(HandOver, PreviewWithAnInvalidTileSizeSaysSo) {
    startWithPhoto();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(0.5, 8);
    window->cmdLargePreview.setEnabled(true);
    window->cmdLargePreview.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid information",
                       "Invalid tile configuration.  Please valid tile print size values"));
}

TEST_F(HandOver, ClosingTheMainWindowTakesThePreviewDown) {
    startWithPhoto();
    window->cmdLargePreview.userClick();
    window->userClose();
    EXPECT_THAT(fakes.screen.log,
                ElementsAre("show frmMain", "show frmPreview", "hide frmPreview", "hide frmMain"));
}

// Saving

TEST_F(HandOver, SaveDialogIsPrefilledFromTheMainWindow) {
    addPhoto("IMG_0001.JPG", 3000, 2000);
    start();
    clickFile("IMG_0001.JPG");
    whenShown<frmSaveTiles>("frmSaveTiles", [](frmSaveTiles& dialog) {
        EXPECT_EQ(dialog.drvTile.drive(), "/");
        EXPECT_EQ(dialog.dirTile.path(), "/photos");
        EXPECT_EQ(dialog.txtBaseFileName.text(), "IMG_0001");
        EXPECT_EQ(dialog.txtNewFolderName.text(), "IMG_0001_poster_images");
        EXPECT_TRUE(dialog.opbJpg.selected());
        dialog.cmdClose.userClick();
    });
    window->cmdSaveNow.userClick();
    EXPECT_TRUE(fakes.screen.allUsersPlayed());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(HandOver, APosterOfOneTileIsOneToLookAtAndToSave) {
    startWithPhoto();
    window->cmbTilesWide.userSelect(0);
    window->cmbTilesHigh.userSelect(0);
    frmPreview& preview = openPreview();
    preview.userResize(900, 700);
    EXPECT_NE(preview.picPreview.pixels(), nullptr);
    whenShown<frmSaveTiles>("frmSaveTiles",
                            [](frmSaveTiles& dialog) { dialog.cmdClose.userClick(); });
    window->cmdSaveNow.userClick();
    EXPECT_TRUE(fakes.screen.allUsersPlayed());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(HandOver, SavingWithAnInvalidTileSizeOnlyComplains) {
    startWithPhoto();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(0.5, 8);
    window->cmdSaveNow.setEnabled(true);
    window->cmdSaveNow.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage().title, "Invalid Tile Print Size Entered");
    EXPECT_THAT(fakes.screen.log, ElementsAre("show frmMain"));
}

TEST_F(HandOver, SavingWithoutTilesIsRefused) {
    start().cmdSaveNow.setEnabled(true);
    window->cmdSaveNow.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Can not continue", "Invalid image/tile information.  Can not continue."));
}

TEST_F(HandOver, SavingMoreTilesThanPixelsIsRefused) {
    startWithPhoto(30, 30);
    setTileInches(8, 8);
    window->cmbTilesWide.userSelect(24);
    window->cmbTilesHigh.userSelect(24);
    window->scrZoom.userSetValue(400); // 6 x 6 pixels are left for 25 x 25 tiles
    window->cmdSaveNow.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Can not continue", "Invalid image/tile information.  Can not continue."));
    EXPECT_THAT(fakes.screen.log, ElementsAre("show frmMain"));
}

TEST_F(HandOver, SavingAPhotoThatHasGoneIsRefused) {
    startWithPhoto();
    window->Dir1.setPath("/");
    ASSERT_FALSE(window->bImgSelected);
    window->cmdSaveNow.setEnabled(true);
    window->cmdSaveNow.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage().title, "Can not continue");
}

TEST_F(HandOver, SavingAfterTheListWasRefilledIsRefused) {
    startWithPhoto();
    window->FillFileList(); // nothing is chosen in the list any more
    window->cmdSaveNow.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Problem", "Invalid file chosen.  Can not continue."));
}

TEST_F(HandOver, SaveButtonIsOffWithoutAPhoto) {
    start().cmdSaveNow.userClick();
    EXPECT_TRUE(fakes.dialogs.quiet());
}

// Help

class Help : public HandOver {
  protected:
    Message missing() const {
        return critical("Can not find help file",
                        "The help file (omra.chm) is missing.  Please reinstall this software.");
    }
};

TEST_F(Help, OpensFromTheApplicationFolderFirst) {
    store("app_dir", "/app");
    fakes.tree.addFile("/app/index.html");
    fakes.tree.addFile("/share/veldara/help/index.html");
    start().mnuContent.userClick();
    EXPECT_THAT(fakes.launcher.log, ElementsAre("help /app/index.html"));
}

TEST_F(Help, ApplicationFolderMayEndInASeparator) {
    store("app_dir", "/app/");
    fakes.tree.addFile("/app/index.html");
    start().mnuContent.userClick();
    EXPECT_THAT(fakes.launcher.log, ElementsAre("help /app/index.html"));
}

TEST_F(Help, OpensFromTheProgramsFolderWithoutAnApplicationFolder) {
    fakes.tree.addFile("/share/veldara/help/index.html");
    start().mnuContent.userClick();
    EXPECT_THAT(fakes.launcher.log, ElementsAre("help /share/veldara/help/index.html"));
}

TEST_F(Help, OpensFromTheProgramsFolderWhenTheApplicationFolderHasNone) {
    store("app_dir", "/app");
    fakes.tree.addFile("/share/veldara/help/index.html");
    start().OpenHelpFile();
    EXPECT_THAT(fakes.launcher.log, ElementsAre("help /share/veldara/help/index.html"));
}

TEST_F(Help, MissingFileIsNamed) {
    start().mnuContent.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), missing());
    EXPECT_THAT(fakes.launcher.log, IsEmpty());
}

TEST_F(Help, FileThatHasGoneSinceTheStartIsMissing) {
    fakes.tree.addFile("/share/veldara/help/index.html");
    start();
    fakes.tree.remove("/share/veldara/help/index.html");
    window->mnuContent.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), missing());
}

TEST_F(Help, FileThatCannotBeAskedForIsMissing) {
    fakes.tree.addFile("/share/veldara/help/index.html");
    start();
    fakes.fileSystem.faults.fileExistsFails = true;
    window->mnuContent.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), missing());
}

TEST_F(Help, ViewerThatCannotBeStartedIsReported) {
    fakes.tree.addFile("/share/veldara/help/index.html");
    fakes.launcher.fails = true;
    start().mnuContent.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage().icon, MessageIcon::critical);
}

class LetteredHelp : public LetteredMainWindowTest {};

TEST_F(LetteredHelp, IsTheCompiledFile) {
    fakes.tree.addFile("c:\\program\\omra.chm");
    start().mnuContent.userClick();
    EXPECT_THAT(fakes.launcher.log, ElementsAre("help c:\\program\\omra.chm"));
}

// About, and the end

TEST_F(HandOver, AboutBoxOpensModally) {
    start();
    whenShown<frmAbout>("frmAbout", [](frmAbout& dialog) {
        EXPECT_EQ(dialog.lblVersion.caption(), "Version " VELDARA_VERSION);
        dialog.cmdOk.userClick();
    });
    window->mnuAbout.userClick();
    EXPECT_TRUE(fakes.screen.allUsersPlayed());
}

class EndingAtOnce : public HandOver,
                     public ::testing::WithParamInterface<std::function<void(frmMain&)>> {};

TEST_P(EndingAtOnce, SavesNothingAndUnloadsNothing) {
    start().cmbTilesWide.userSelect(9);
    GetParam()(*window);
    EXPECT_TRUE(fakes.screen.programEnded);
    EXPECT_THAT(fakes.screen.log, ElementsAre("show frmMain", "end program"));
    EXPECT_TRUE(window->loaded());
    EXPECT_FALSE(saved());
}

INSTANTIATE_TEST_SUITE_P(All, EndingAtOnce,
                         ::testing::Values([](frmMain& main) { main.cmdQuit.userClick(); },
                                           [](frmMain& main) { main.mnuExit.userClick(); },
                                           [](frmMain& main) { main.EndNow(); },
                                           [](frmMain& main) { main.EndAppNow(); }));

TEST_F(HandOver, ClosingSavesOnceAndHides) {
    start().userClose();
    EXPECT_EQ(namesWritten(), fullWrite());
    EXPECT_FALSE(fakes.screen.programEnded);
    window->userClose();
    EXPECT_EQ(namesWritten(), fullWrite());
}

// Printing

TEST_F(HandOver, PrintsThePosterWithTheStoredChoices) {
    startWithPhoto();
    store("sheet_guide", 0);
    fakes.printing.form = FakePrintSystem::Form::drawn;
    fakes.printing.choice = PrintChoice{{"office", {}, false}, {}};
    window->mnuPrint.userClick();
    ASSERT_EQ(fakes.printing.requests.size(), 1U);
    EXPECT_EQ(fakes.printing.requests[0].title, "photo.jpg");
    EXPECT_EQ(fakes.printing.requests[0].highestSheet, 4);
    EXPECT_EQ(fakes.printing.printed, std::vector<std::string>{"photo.jpg"});
    EXPECT_EQ(fakes.printing.drawn.size(), 4U);
    EXPECT_EQ(storedText("printer"), "office");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(HandOver, PrintingNeedsAPhotoAndAValidTile) {
    start();
    EXPECT_EQ(window->mnuPrint.caption(), "&Print Poster...");
    EXPECT_FALSE(window->mnuPrint.enabled());
    addPhoto("photo.jpg", 3000, 2000);
    window->RefreshFolder();
    clickFile("photo.jpg");
    EXPECT_TRUE(window->mnuPrint.enabled());
    int done = 0;
    window->setNewTileVals("Paper", 0, 0.1, 0.1, 0.1, 0.1, "line", done);
    EXPECT_EQ(window->mnuPrint.enabled(), window->cmdSaveNow.enabled());
}

TEST_F(HandOver, WithoutAPrinterThePosterIsOfferedAsADocument) {
    startWithPhoto();
    fakes.printing.printersThere = false;
    window->mnuPrint.userClick();
    ASSERT_EQ(fakes.dialogs.saveRequests.size(), 1U);
    EXPECT_EQ(fakes.dialogs.saveRequests[0].title, "Save Poster as PDF");
    fakes.dialogs.answers = {Answer::no};
    window->mnuPrint.userClick();
    EXPECT_EQ(fakes.dialogs.saveRequests.size(), 1U);
}

TEST_F(HandOver, AJobThatStopsLaterIsSaid) {
    startWithPhoto();
    const std::string figures = window->FiguresText();
    fakes.printing.onStopped("office", "Paper jam.");
    const Message message = fakes.dialogs.onlyMessage();
    EXPECT_NE(message.text.find("\"office\" has stopped"), std::string::npos);
    EXPECT_NE(message.text.find("Paper jam."), std::string::npos);
    EXPECT_EQ(window->FiguresText(), figures);
}

TEST_F(HandOver, PrintsTheTestImageOnThePaperOfTheTiles) {
    start();
    fakes.printing.form = FakePrintSystem::Form::drawn;
    fakes.printing.choice = PrintChoice{{"office", {}, false}, {}};
    EXPECT_FALSE(
        window->printTestImage(std::make_shared<const Image>(Image::filled(768, 512, 1, 2, 3))));
    EXPECT_EQ(fakes.printing.printed, std::vector<std::string>{"Edge_Test_Image"});
    EXPECT_EQ(fakes.printing.drawn.size(), 1U);
    EXPECT_EQ(fakes.printing.width, 6 * 72);
    EXPECT_EQ(fakes.printing.height, 4 * 72);
}

} // namespace
} // namespace veldara::test
