// How the main window comes up: the order of the steps, what is restored, and the defaults.
#include "main_fixture.h"

namespace veldara::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MainStartup : public MainWindowTest {
  protected:
    // Everything that can be seen from outside goes into one log: the registry's calls and the
    // changes of the controls.
    void recordOrder() {
        frmMain& main = create();
        auto& log = fakes.registry.log;
        const auto note = [&log](Control& control, Property which, const std::string& what) {
            control.observe([&log, which, what](Property property) {
                if (property == which) {
                    log.push_back(what);
                }
            });
        };
        note(main.Drive1, Property::value, "drive");
        note(main.Dir1, Property::value, "folder");
        note(main.lblPaperName, Property::caption, "paper labels");
        note(main.chkLockWh, Property::value, "lock");
        note(main.cmbTilesWide, Property::value, "tiles wide");
        note(main.cmbTilesHigh, Property::value, "tiles high");
        note(main.chkPrinterClips, Property::value, "edge compensation");
        note(main.chkPreviewTiles, Property::value, "tile grid");
        note(main.lblLrValue, Property::caption, "placement labels");
        note(main.lblFinalSize, Property::caption, "output figures");
        note(main.lstFiles, Property::items, "file list");
        main.observe([&log](Property property) {
            if (property == Property::caption) {
                log.push_back("caption");
            } else if (property == Property::visible) {
                log.push_back("window shown");
            }
        });
        fakes.eventPump.whileEventsRun = [&log] { log.push_back("events"); };
        main.load();
        std::erase_if(log, [](const std::string& call) { return call.rfind("open ", 0) == 0; });
        for (std::string& call : log) {
            const std::size_t bar = call.find('|');
            if (bar != std::string::npos) {
                call = call.substr(0, call.find(' ') + 1) + call.substr(bar + 1);
            }
        }
    }
};

TEST_F(MainStartup, StepsComeInTheirOrder) {
    store("paperRegLine", "|1|A4 - 210 x 297|210|297|25|25|25|25|25|25|25|25|");
    store("prefs_numTiles", "w03h02");
    store("prefs_heightEqualsWidth", 1);
    store("prefs_edgeAdjust", "1_01");
    store("prefs_showTiles", 1);
    store("cmbMarginLocked", 1);
    recordOrder();
    std::vector<std::string> log = fakes.registry.log;
    // the profile file's folder is asked for whenever the calibration dialog wants to know it
    const auto isDialogsQuestion = [](const std::string& call) { return call == "query app_dir"; };
    std::erase_if(log, isDialogsQuestion);
    EXPECT_THAT(log, ElementsAre("query last_folder", "drive", "folder",             //
                                 "query paperRegLine", "paper labels",               //
                                 "query prefs_printSize",                            //
                                 "query prefs_heightEqualsWidth", "lock",            //
                                 "query prefs_numTiles", "tiles wide", "tiles high", //
                                 "query prefs_edgeAdjust", "edge compensation",      //
                                 "query prefs_edgeAdjust",                           //
                                 "query prefs_showTiles", "tile grid",               //
                                 "query cmbMarginLocked", "query dim_outside",       //
                                 "events", "placement labels",                       //
                                 "query prefs_edgeAdjust", "output figures",         //
                                 "file list", "set last_folder", "caption", "window shown",
                                 "query recent_photos"));
}

TEST_F(MainStartup, HelpFileAndSpecialFoldersAreFoundLast) {
    fakes.tree.addFile("/app/index.html");
    store("app_dir", "/app");
    frmMain& main = create();
    bool shownFirst = false;
    main.observe([&](Property property) {
        if (property == Property::visible) {
            shownFirst = fakes.specialFolders.asked.empty();
        }
    });
    main.load();
    EXPECT_TRUE(shownFirst);
    EXPECT_THAT(fakes.specialFolders.asked, ElementsAre(0, 5));
    EXPECT_THAT(fakes.registry.log.back(), ::testing::HasSubstr("app_dir"));
}

TEST_F(MainStartup, FirstStartShowsTheDefaults) {
    fakes.registry.clear();
    frmMain& main = start();
    EXPECT_EQ(main.sCurDrive, "/");
    EXPECT_EQ(main.Drive1.drive(), "/");
    EXPECT_EQ(main.Dir1.path(), "/");
    EXPECT_EQ(main.cmbRotate.listIndex(), 0);
    EXPECT_EQ(main.cmbFileType.listIndex(), 0);
    EXPECT_EQ(main.GetNumTilesWide(), 2);
    EXPECT_EQ(main.GetNumTilesHigh(), 2);
    EXPECT_FALSE(main.chkLockWh.checked());
    EXPECT_FALSE(main.chkPrinterClips.checked());
    EXPECT_TRUE(main.chkPreviewTiles.checked());
    EXPECT_EQ(main.cmbCurBtm.listIndex(), 0);
    EXPECT_THAT(main.cmbCurBtm.items(),
                ElementsAre("default", "Kodak photo lab default", "Fuji photo lab default"));
    EXPECT_EQ(main.lblPaperName.caption(), "Photo 4\" x 6\"");
    EXPECT_EQ(main.lblPaperSize.caption(), "6.00 x 4.00");
    EXPECT_EQ(main.lblTileSize.caption(), "6.00 x 4.00");
    EXPECT_EQ(main.lblUnits.caption(), "Inches");
    EXPECT_EQ(main.getCurUnits(), 0);
    EXPECT_EQ(main.getPaperRegLine(), "");
    EXPECT_EQ(main.lblFinalSize.caption(), "12 x 8 inches");
    EXPECT_EQ(main.lblResolution.caption(), "---");
    EXPECT_EQ(main.lblQuality.caption(), "---");
    EXPECT_EQ(main.lblMPixVal.caption(), "---");
    EXPECT_EQ(main.lblLrValue.caption(), "---");
    EXPECT_EQ(main.lblTbValue.caption(), "---");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(MainStartup, FirstStartMakesBothKeysForTheLastFolderOnly) {
    fakes.registry.clear();
    create().load();
    EXPECT_TRUE(fakes.registry.hasKey(R"(Software\Korvane)"));
    EXPECT_TRUE(fakes.registry.hasKey(settingsKey));
    EXPECT_THAT(namesWritten(), ElementsAre("last_folder"));
    EXPECT_EQ(storedText("last_folder"), "/");
}

TEST_F(MainStartup, WindowIsUpAndFlagsAreClear) {
    frmMain& main = start();
    EXPECT_TRUE(main.visible());
    EXPECT_TRUE(main.loaded());
    EXPECT_FALSE(main.bSkipSettingWrite);
    EXPECT_FALSE(main.bSkipOutputUpdate);
    EXPECT_FALSE(main.bPreviewOn);
    EXPECT_EQ(main.caption(), "Veldara v" VELDARA_VERSION);
    EXPECT_THAT(fakes.screen.log, ElementsAre("show frmMain"));
}

TEST_F(MainStartup, ShowAfterLoadDoesNotShowTwice) {
    create().show();
    EXPECT_THAT(fakes.screen.log, ElementsAre("show frmMain"));
}

TEST_F(MainStartup, EventsRunOnceWhileTheSettingsStillStandProtected) {
    frmMain& main = create();
    bool skipping = false;
    fakes.eventPump.whileEventsRun = [&] { skipping = main.bSkipSettingWrite; };
    main.load();
    EXPECT_EQ(fakes.eventPump.eventRuns, 1);
    EXPECT_TRUE(skipping);
}

TEST_F(MainStartup, LastFolderIsRestored) {
    addPhoto("photo.jpg", 100, 100);
    const frmMain& main = start();
    EXPECT_EQ(main.sCurDrive, "/");
    EXPECT_EQ(main.Dir1.path(), "/photos");
    EXPECT_THAT(main.lstFiles.items(), ElementsAre("photo.jpg"));
    EXPECT_EQ(main.picCur.drawing(), Drawing::pickImage);
}

TEST_F(MainStartup, CropIsInTheMiddle) {
    addPhoto("tall.jpg", 400, 3000);
    addPhoto("wide.jpg", 3000, 400);
    start();
    clickFile("tall.jpg");
    EXPECT_EQ(window->lblTbValue.caption(), "(center)");
    clickFile("wide.jpg");
    EXPECT_EQ(window->lblLrValue.caption(), "(center)");
}

TEST_F(MainStartup, LastFolderThatHasGoneFallsBackSilently) {
    store("last_folder", "/gone");
    const frmMain& main = start();
    EXPECT_EQ(main.Drive1.drive(), "/");
    EXPECT_EQ(main.Dir1.path(), "/");
    EXPECT_TRUE(fakes.dialogs.quiet());
    EXPECT_EQ(storedText("last_folder"), "/");
}

TEST_F(MainStartup, FirstStartBeginsAmongThePictures) {
    fakes.registry.clear();
    fakes.specialFolders.paths[picturesIdentifier] = "/home/pictures";
    fakes.specialFolders.paths[homeIdentifier] = "/home";
    fakes.tree.addFile("/home/pictures/a.jpg");
    const frmMain& main = start();
    EXPECT_EQ(main.Dir1.path(), "/home/pictures");
    EXPECT_EQ(main.sCurDrive, "/");
    EXPECT_THAT(main.lstFiles.items(), ::testing::ElementsAre("a.jpg"));
}

TEST_F(MainStartup, FirstStartWithoutPicturesBeginsAtHome) {
    fakes.registry.clear();
    fakes.specialFolders.paths[picturesIdentifier] = "/home/gone";
    fakes.specialFolders.paths[homeIdentifier] = "/home";
    EXPECT_EQ(start().Dir1.path(), "/home");
}

TEST_F(MainStartup, EndWindowIsLoadedWithItsTimerAndNeverShown) {
    frmMain& main = start();
    int running = 0;
    for (Timer* timer : main.timers()) {
        running += timer->name() == "Timer1" && timer->enabled() ? 1 : 0;
    }
    EXPECT_EQ(running, 1);
    EXPECT_THAT(fakes.screen.log, ::testing::ElementsAre("show frmMain"));
}

TEST_F(MainStartup, UnreadableLastFolderFallsBackSilently) {
    fakes.tree.unreadable.insert("/photos");
    EXPECT_EQ(start().Dir1.path(), "/");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(MainStartup, LastFolderOnAMountedVolumeIsRestored) {
    fakes.drives.plug("/media/stick");
    fakes.tree.addFolder("/media/stick/holiday");
    store("last_folder", "/media/stick/holiday");
    const frmMain& main = start();
    EXPECT_EQ(main.sCurDrive, "/media/stick");
    EXPECT_EQ(main.Drive1.drive(), "/media/stick");
    EXPECT_EQ(main.Dir1.path(), "/media/stick/holiday");
}

TEST_F(MainStartup, NoReadableDriveAtAllStillComesUp) {
    fakes.registry.clear();
    fakes.drives.takeMediumOut("/");
    const frmMain& main = start();
    EXPECT_TRUE(main.visible());
    EXPECT_THAT(main.lstFiles.items(), IsEmpty());
    EXPECT_EQ(main.picCur.drawing(), Drawing::pickFolder);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

class LetteredMainStartup : public LetteredMainWindowTest {};

TEST_F(LetteredMainStartup, FirstStartShowsDriveC) {
    fakes.registry.clear();
    const frmMain& main = start();
    EXPECT_EQ(main.sCurDrive, "c");
    EXPECT_EQ(main.Drive1.drive(), "c");
    EXPECT_EQ(main.Dir1.path(), "c:\\");
    EXPECT_EQ(storedText("last_folder"), "c:\\");
}

TEST_F(LetteredMainStartup, DriveLetterIsTakenInLowerCase) {
    fakes.drives.plug("d");
    fakes.tree.addFolder("d:\\holiday");
    store("last_folder", "d:\\holiday");
    EXPECT_EQ(start().sCurDrive, "d");
    EXPECT_EQ(window->Dir1.path(), "d:\\holiday");
}

TEST_F(LetteredMainStartup, DriveThatNoLongerExistsFallsBackToC) {
    store("last_folder", "e:\\holiday");
    const frmMain& main = start();
    EXPECT_EQ(main.sCurDrive, "c");
    EXPECT_EQ(main.Dir1.path(), "c:\\");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(LetteredMainStartup, DriveCIsPreferredToAnEarlierLetter) {
    fakes.registry.clear();
    fakes.drives.names.insert(fakes.drives.names.begin(), "a");
    EXPECT_EQ(start().Drive1.drive(), "c");
}

TEST_F(MainStartup, StoredSettingsAreApplied) {
    store("paperRegLine", "|1|A4 - 210 x 297|210|297|25|25|25|25|20|10|20|10|");
    store("prefs_numTiles", "w03h02");
    store("prefs_edgeAdjust", "1_02");
    store("prefs_showTiles", 0);
    const frmMain& main = start();
    EXPECT_EQ(main.GetNumTilesWide(), 4);
    EXPECT_EQ(main.GetNumTilesHigh(), 3);
    EXPECT_TRUE(main.chkPrinterClips.checked());
    EXPECT_TRUE(main.cmbCurBtm.enabled());
    EXPECT_EQ(main.cmbCurBtm.listIndex(), 2);
    EXPECT_FALSE(main.chkPreviewTiles.checked());
    EXPECT_EQ(main.getCurUnits(), 1);
    EXPECT_EQ(main.lblPaperName.caption(), "A4 - 210 x 297");
    EXPECT_EQ(main.lblPaperSize.caption(), "210.0 x 297.0");
    EXPECT_EQ(main.lblTileSize.caption(), "190.0 x 257.0");
    EXPECT_EQ(main.lblUnits.caption(), "Millimeters");
    EXPECT_TRUE(fakes.dialogs.quiet()) << "the introduction is not shown while loading";
}

TEST_F(MainStartup, LockIsAppliedWithoutMakingTheCountsEqual) {
    store("prefs_heightEqualsWidth", 1);
    store("prefs_numTiles", "w01h04");
    const frmMain& main = start();
    EXPECT_TRUE(main.chkLockWh.checked());
    EXPECT_EQ(main.GetNumTilesWide(), 2);
    EXPECT_EQ(main.GetNumTilesHigh(), 5);
}

TEST_F(MainStartup, FiguresWaitUntilAllSettingsStand) {
    create();
    std::string meanwhile;
    window->cmbTilesHigh.observe([&](Property) {
        window->UpdateOutputSize();
        meanwhile = window->lblFinalSize.caption();
    });
    window->load();
    EXPECT_EQ(meanwhile, "---");
    EXPECT_EQ(window->lblFinalSize.caption(), "12 x 8 inches");
}

TEST_F(MainStartup, NothingButTheLastFolderIsWritten) {
    store("prefs_numTiles", "w03h02");
    store("prefs_edgeAdjust", "1_02");
    store("prefs_showTiles", 1);
    create().load();
    EXPECT_THAT(namesWritten(), ElementsAre("last_folder"));
}

TEST_F(LetteredMainStartup, WithoutADriveCTheFirstOneIsTaken) {
    fakes.registry.clear();
    fakes.drives.plug("d");
    fakes.drives.unplug("c");
    EXPECT_EQ(start().Drive1.drive(), "d");
    EXPECT_EQ(window->Dir1.path(), "d:\\");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

struct CountsCase {
    const char* text;
    int wide;
    int high;
};

class StoredCounts : public MainStartup, public ::testing::WithParamInterface<CountsCase> {};

TEST_P(StoredCounts, AreReadOrTakeTheirDefault) {
    store("prefs_numTiles", GetParam().text);
    EXPECT_EQ(start().cmbTilesWide.listIndex(), GetParam().wide);
    EXPECT_EQ(window->cmbTilesHigh.listIndex(), GetParam().high);
}

INSTANTIATE_TEST_SUITE_P(All, StoredCounts,
                         ::testing::Values(CountsCase{"w00h00", 0, 0}, CountsCase{"w24h24", 24, 24},
                                           CountsCase{"w25h02", 1, 2}, CountsCase{"w02h25", 2, 1},
                                           CountsCase{"w-1h02", 1, 2}, CountsCase{"", 1, 1},
                                           CountsCase{"w03", 3, 1}, CountsCase{"nonsense", 1, 1}));

struct AdjustCase {
    const char* text;
    bool on;
    int profile;
};

class StoredAdjust : public MainStartup, public ::testing::WithParamInterface<AdjustCase> {};

TEST_P(StoredAdjust, IsReadOrTakesItsDefault) {
    store("prefs_edgeAdjust", GetParam().text);
    EXPECT_EQ(start().chkPrinterClips.checked(), GetParam().on);
    EXPECT_EQ(window->cmbCurBtm.listIndex(), GetParam().profile);
    EXPECT_EQ(window->cmbCurBtm.enabled(), GetParam().on);
}

INSTANTIATE_TEST_SUITE_P(All, StoredAdjust,
                         ::testing::Values(AdjustCase{"0_00", false, 0},
                                           AdjustCase{"1_02", true, 2}, AdjustCase{"1_03", true, 0},
                                           AdjustCase{"0_-1", false, 0},
                                           AdjustCase{"2_01", false, 1}, AdjustCase{"", false, 0},
                                           AdjustCase{"1_xx", true, 0}));

struct SwitchCase {
    int stored;
    bool grid;
    bool lock;
};

class StoredSwitches : public MainStartup, public ::testing::WithParamInterface<SwitchCase> {};

TEST_P(StoredSwitches, AreReadOrTakeTheirDefault) {
    store("prefs_showTiles", GetParam().stored);
    store("prefs_heightEqualsWidth", GetParam().stored);
    EXPECT_EQ(start().chkPreviewTiles.checked(), GetParam().grid);
    EXPECT_EQ(window->chkLockWh.checked(), GetParam().lock);
}

INSTANTIATE_TEST_SUITE_P(All, StoredSwitches,
                         ::testing::Values(SwitchCase{0, false, false}, SwitchCase{1, true, true},
                                           SwitchCase{2, true, false},
                                           SwitchCase{-1, true, false}));

TEST_F(MainStartup, SettingsOfAnotherTypeTakeTheirDefaults) {
    RegistryValue bytes;
    bytes.type = RegistryType::other;
    bytes.bytes = {0, 0, 0, 0};
    for (const char* name : {"prefs_showTiles", "prefs_heightEqualsWidth", "prefs_numTiles",
                             "prefs_edgeAdjust", "paperRegLine", "last_folder"}) {
        fakes.registry.put(settingsKey, name, bytes);
    }
    const frmMain& main = start();
    EXPECT_TRUE(main.chkPreviewTiles.checked());
    EXPECT_FALSE(main.chkLockWh.checked());
    EXPECT_EQ(main.GetNumTilesWide(), 2);
    EXPECT_EQ(main.Dir1.path(), "/");
}

TEST_F(MainStartup, SwitchesStoredAsTextAreReadAsWell) {
    store("prefs_showTiles", "0");
    EXPECT_FALSE(start().chkPreviewTiles.checked());
}

TEST_F(MainStartup, RejectedPaperLineGivesTheFirstPhotoPaperAndIsKept) {
    store("paperRegLine", "|7|Unknown|1|2|");
    const frmMain& main = start();
    EXPECT_EQ(main.lblPaperName.caption(), "Photo 4\" x 6\"");
    EXPECT_EQ(main.getPaperRegLine(), "|7|Unknown|1|2|");
}

TEST_F(MainStartup, StoredProfileOfAProfileFileIsSelected) {
    fakes.tree.addFile("/data/veldara/printer_edge_config",
                       "first\t00,00,00,00,\r\nsecond\t01,02,03,04,\r\nthird\t00,00,00,00,\r\n"
                       "fourth\t16,16,16,16,\r\n");
    store("prefs_edgeAdjust", "1_03");
    const frmMain& main = start();
    EXPECT_THAT(main.cmbCurBtm.items(), ElementsAre("first", "second", "third", "fourth"));
    EXPECT_EQ(main.activeProfile(), 3);
    std::array<double, 4> trims{};
    main.FillCurEdgeTrimInches(trims);
    EXPECT_DOUBLE_EQ(trims[0], 0.25);
}

TEST_F(MainStartup, ProfileFileIsLookedForInTheApplicationFolder) {
    fakes.tree.addFile("/app/printer_edge_config", "mine\t00,00,00,00,\r\n");
    store("app_dir", "/app");
    EXPECT_THAT(start().cmbCurBtm.items(), ElementsAre("mine"));
    EXPECT_EQ(window->applicationFolder(), "/app");
}

TEST_F(MainStartup, ApplicationFolderOfAnotherMachineIsIgnored) {
    store("app_dir", "/far/app");
    fakes.drives.onNetwork = "/far";
    fakes.tree.addFile("/far/app/" + fakes.platform().helpFileName, "somebody's manual");
    frmMain& main = start();
    EXPECT_EQ(main.applicationFolder(), "");
    main.OpenHelpFile();
    EXPECT_THAT(fakes.launcher.log, ::testing::Not(Contains(::testing::HasSubstr("/far"))));
}

TEST_F(MainStartup, FolderOfAMachineThatDoesNotAnswerIsNotWaitedFor) {
    fakes.tree.addFile("/far/photos/a.jpg");
    store("last_folder", "/far/photos");
    fakes.drives.onNetwork = "/far";
    EXPECT_EQ(start().Dir1.path(), "/");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(MainStartup, RegistryThatCannotBeUsedIsNeverMentioned) {
    fakes.registry.queryFails = 5;
    fakes.registry.openFails = 5;
    fakes.registry.createFails = 5;
    fakes.registry.setFails = 5;
    frmMain& main = start();
    EXPECT_EQ(main.Dir1.path(), "/");
    EXPECT_TRUE(main.chkPreviewTiles.checked());
    main.userClose();
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(MainStartup, WithoutAFileSystemObjectItComesUpWithAnEmptyList) {
    fakes.fileSystem.faults.creationFails = true;
    const frmMain& main = start();
    EXPECT_TRUE(main.visible());
    EXPECT_THAT(main.lstFiles.items(), IsEmpty());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(MainStartup, ComingUpLoadsNoPhoto) {
    addPhoto("photo.jpg", 100, 100);
    start();
    EXPECT_THAT(loaded, IsEmpty());
    EXPECT_EQ(window->lstFiles.listIndex(), -1);
}

} // namespace
} // namespace veldara::test
