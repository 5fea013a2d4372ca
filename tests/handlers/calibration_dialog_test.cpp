// The calibration dialog: its profile list, its edge lists, and the profile file.
#include "calibration/profile_list.h"
#include "calibration_support.h"

#include <algorithm>

namespace veldara::test {
namespace {

using Names = CalibrationWindow::Names;

const Names builtIn{"default", "Kodak photo lab default", "Fuji photo lab default"};
const char* const nothingClipped = "None of the image is clipped";

TEST(CalibrationDialog, HasItsTexts) {
    const CalibrationWindow window;
    const frmBtm& dialog = window.dialog;
    EXPECT_EQ(dialog.name(), "frmBtm");
    EXPECT_EQ(dialog.caption(), "Edge Calibration");
    EXPECT_EQ(dialog.lblStep1.caption(), "Step (1) Create and print test image");
    EXPECT_EQ(dialog.lblStep2.caption(),
              "Step (2) Input how much the printer trims from each image edge");
    EXPECT_EQ(dialog.lblStep2Desc.caption(),
              "Select how many of the 4 test image lines are visible at each edge of your test "
              "print.  This tells the software how much of the image the printer trims (and loses) "
              "from each edge of images that it prints.");
    EXPECT_EQ(dialog.lblConfigurations.caption(), "Edge Calibration Profiles");
    EXPECT_EQ(dialog.cmdNew.caption(), "New");
    EXPECT_EQ(dialog.cmdRename.caption(), "Rename");
    EXPECT_EQ(dialog.cmdDel.caption(), "Delete");
    EXPECT_EQ(dialog.cmdNew.toolTip(), "Create a new Edge Calibration Profile");
    EXPECT_EQ(dialog.cmdRename.toolTip(), "Rename the currently selected Edge Calibration Profile");
    EXPECT_EQ(dialog.cmdDel.toolTip(), "Delete the currently selected Edge Calibration Profile");
    EXPECT_EQ(dialog.cmdGenerateTest.caption(), "Create Edge Calibration Test Image");
    EXPECT_EQ(dialog.cmdPrintTest.caption(), "Print Test Image...");
    EXPECT_EQ(dialog.cmdPrintTest.toolTip(), "Print the test image on a printer of this computer");
    EXPECT_EQ(dialog.cmdOk.caption(), "Close");
    const auto toolTip = [](const std::string& edge) {
        return "For the selected Edge Calibration Profile, indicates how many of the four test "
               "lines are visible on the " +
               edge + " edge of your test print";
    };
    EXPECT_EQ(dialog.cmbTopEdge.toolTip(), toolTip("TOP"));
    EXPECT_EQ(dialog.cmbRightEdge.toolTip(), toolTip("RIGHT"));
    EXPECT_EQ(dialog.cmbBottomEdge.toolTip(), toolTip("BOTTOM"));
    EXPECT_EQ(dialog.cmbLeftEdge.toolTip(), toolTip("LEFT"));
}

TEST(CalibrationDialog, EdgeListsHaveSeventeenChoices) {
    const CalibrationWindow window;
    const ComboBox* const lists[] = {&window.dialog.cmbTopEdge, &window.dialog.cmbRightEdge,
                                     &window.dialog.cmbBottomEdge, &window.dialog.cmbLeftEdge};
    for (const ComboBox* list : lists) {
        ASSERT_EQ(list->count(), 17);
        EXPECT_EQ(list->items()[0], "see all 4 lines");
        EXPECT_EQ(list->items()[1], "see 3.75 lines");
        EXPECT_EQ(list->items()[15], "see 0.25 lines");
        EXPECT_EQ(list->items()[16], "see no lines!");
    }
}

TEST(CalibrationDialog, StepOneNamesTheStripesInTheCurrentUnits) {
    CalibrationWindow window;
    window.dialog.SetStep1DescUnits();
    EXPECT_NE(window.dialog.lblStep1Desc.caption().find("1/16 inch"), std::string::npos);
    window.owner.units = 1;
    window.open([&] {
        EXPECT_NE(window.dialog.lblStep1Desc.caption().find("1.59 mm"), std::string::npos);
    });
}

// Reading

TEST(CalibrationDialog, WithoutAFileThereAreTheBuiltInProfilesAndNoFileIsMade) {
    CalibrationWindow window;
    window.dialog.initControls();
    EXPECT_EQ(window.dialog.lstConfigurations.items(), builtIn);
    EXPECT_EQ(window.dialog.lstConfigurations.listIndex(), 0);
    EXPECT_EQ(window.owner.names, builtIn);
    EXPECT_EQ(window.owner.active, 0);
    EXPECT_EQ(window.choices(), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(window.descriptions(), Names(4, nothingClipped));
    EXPECT_FALSE(window.file().has_value());
}

TEST(CalibrationDialog, ReadsTheFile) {
    CalibrationWindow window;
    window.haveFile("mine, with comma\t01,02,03,16,\r\nother \t00,00,00,00,\r\n");
    window.dialog.initControls();
    EXPECT_EQ(window.owner.names, (Names{"mine, with comma", "other "}));
    EXPECT_EQ(window.choices(), (std::vector<int>{1, 2, 3, 16}));
}

TEST(CalibrationDialog, LoadingReadsTheFile) {
    CalibrationWindow window;
    window.haveFile("mine\t01,02,03,16,\r\n");
    window.dialog.load();
    EXPECT_EQ(window.owner.names, Names{"mine"});
}

TEST(CalibrationDialog, ReturnsWhatItRead) {
    CalibrationWindow window;
    EXPECT_EQ(window.dialog.ReadBorderPrefs(), 0);
    window.haveFile("");
    EXPECT_EQ(window.dialog.ReadBorderPrefs(), -33);
    window.haveFile(builtInFile());
    EXPECT_EQ(window.dialog.ReadBorderPrefs(), 3);
    window.haveFile("no tab in this line\r\n");
    EXPECT_EQ(window.dialog.ReadBorderPrefs(), 0);
    std::string many;
    for (int i = 0; i < 250; ++i) {
        many += std::to_string(i) + "\t00,00,00,00,\r\n";
    }
    window.haveFile(many);
    EXPECT_EQ(window.dialog.ReadBorderPrefs(), 199);
}

TEST(CalibrationDialog, WhatCannotBeReadLeavesTheProfilesThatAreThere) {
    CalibrationWindow window;
    window.haveFile("mine\t01,01,01,01,\r\n");
    window.dialog.initControls();
    for (const char* text : {"", "no tab in this line\r\n"}) {
        window.haveFile(text);
        EXPECT_LT(window.dialog.ReadBorderPrefs(), 1);
        window.dialog.initControls();
        EXPECT_EQ(window.owner.names, Names{"mine"});
    }
}

void expectBuiltIn(CalibrationWindow& window) {
    window.dialog.initControls();
    EXPECT_EQ(window.owner.names, builtIn);
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

TEST(CalibrationDialog, AnEmptyFileGivesTheBuiltInProfiles) {
    CalibrationWindow window;
    window.haveFile("");
    expectBuiltIn(window);
    EXPECT_EQ(window.file(), "");
}

TEST(CalibrationDialog, OneBadLineLosesTheFile) {
    CalibrationWindow window;
    window.haveFile("good\t01,01,01,01,\r\nbad line\r\n");
    expectBuiltIn(window);
}

TEST(CalibrationDialog, ACountThatIsNoNumberLosesTheFile) {
    CalibrationWindow window;
    window.haveFile("good\t01,01,0x,01,\r\n");
    expectBuiltIn(window);
}

TEST(CalibrationDialog, EveryReadFailureGivesTheBuiltInProfiles) {
    for (int fault = 0; fault < 4; ++fault) {
        CalibrationWindow window;
        window.haveFile("mine\t01,02,03,16,\r\n");
        FileSystemFaults& faults = window.fakes.fileSystem.faults;
        faults.creationFails = fault == 0;
        faults.fileExistsFails = fault == 1;
        faults.openTextFileFails = fault == 2;
        faults.readLineFails = fault == 3;
        expectBuiltIn(window);
    }
}

TEST(CalibrationDialog, LooksIntoTheApplicationFolderOfThePreferences) {
    CalibrationWindow window;
    window.owner.folder = "c:\\tools\\";
    window.fakes.tree.addFile("c:\\tools\\printer_edge_config", "there\t00,00,00,01,\r\n");
    window.dialog.initControls();
    EXPECT_EQ(window.owner.names, Names{"there"});
    window.dialog.cmbTopEdge.userSelect(2);
    EXPECT_EQ(window.fakes.tree.files.at("c:\\tools\\printer_edge_config"),
              "there\t02,00,00,01,\r\n");
}

TEST(CalibrationDialog, TheFileIsReadOnce) {
    CalibrationWindow window;
    window.haveFile("first\t01,02,03,04,\r\n");
    window.dialog.initControls();
    window.haveFile("second\t01,02,03,04,\r\n");
    window.open([&] { EXPECT_EQ(window.owner.names, Names{"first"}); });
    window.dialog.unload();
    window.open([&] { EXPECT_EQ(window.owner.names, Names{"first"}); });
}

TEST(CalibrationDialog, ADeletedFileIsWrittenAgainByTheNextChange) {
    CalibrationWindow window;
    window.haveFile(builtInFile());
    window.open([&] {
        window.removeFile();
        window.dialog.lstConfigurations.userClick(1);
        EXPECT_FALSE(window.file().has_value());
        window.dialog.cmbTopEdge.userSelect(5);
        EXPECT_EQ(window.file(), "default\t00,00,00,00,\r\n"
                                 "Kodak photo lab default\t05,04,03,02,\r\n"
                                 "Fuji photo lab default\t02,06,03,06,\r\n");
    });
}

// Opening and closing

TEST(CalibrationDialog, OpensOnTheFirstProfileAndIsHiddenByClose) {
    CalibrationWindow window;
    window.open([&] {
        window.dialog.lstConfigurations.userClick(2);
        window.dialog.cmdOk.userClick();
        EXPECT_FALSE(window.dialog.visible());
        EXPECT_TRUE(window.dialog.loaded());
    });
    window.open([&] { EXPECT_EQ(window.dialog.lstConfigurations.listIndex(), 0); });
    EXPECT_FALSE(window.file().has_value());
}

TEST(CalibrationDialog, ClosingRecomputesTheOutputFigures) {
    CalibrationWindow window;
    window.fakes.screen.whenModal("frmBtm", [&](Window&) { window.dialog.cmdOk.userClick(); });
    window.dialog.Open();
    EXPECT_EQ(window.owner.outputUpdates, 1);
    window.open([] {});
    EXPECT_EQ(window.owner.outputUpdates, 2);
}

TEST(CalibrationDialog, OpeningKeepsTheActiveProfileOfTheMainWindow) {
    CalibrationWindow window;
    window.dialog.initControls();
    window.owner.active = 2;
    window.open([&] { EXPECT_EQ(window.owner.active, 2); });
}

TEST(CalibrationDialog, AnActivePositionOutsideTheListIsBroughtBack) {
    CalibrationWindow window;
    window.owner.active = 77;
    window.dialog.initControls();
    EXPECT_EQ(window.owner.active, 2);
}

// Choosing and editing

TEST(CalibrationDialog, AProfileComesWithItsCounts) {
    CalibrationWindow window;
    window.open([&] {
        window.dialog.lstConfigurations.userClick(1);
        EXPECT_EQ(window.choices(), (std::vector<int>{3, 4, 3, 2}));
        EXPECT_EQ(window.descriptions(), (Names{"Printer cuts off  3/64 inches of image",
                                                "Printer cuts off  1/16 inches of image",
                                                "Printer cuts off  3/64 inches of image",
                                                "Printer cuts off  1/32 inches of image"}));
    });
    EXPECT_FALSE(window.file().has_value());
}

TEST(CalibrationDialog, DescribesInMillimetres) {
    CalibrationWindow window;
    window.owner.units = 1;
    window.open([&] {
        window.dialog.lstConfigurations.userClick(1);
        EXPECT_EQ(window.descriptions()[0], "Printer cuts off  1.2 mm of image");
    });
}

TEST(CalibrationDialog, DescriptionsFollowTheUnitsAtTheNextOpening) {
    CalibrationWindow window;
    window.haveFile("mine\t04,00,00,00,\r\n");
    window.open(
        [&] { EXPECT_EQ(window.descriptions()[0], "Printer cuts off  1/16 inches of image"); });
    window.owner.units = 1;
    window.open([&] { EXPECT_EQ(window.descriptions()[0], "Printer cuts off  1.6 mm of image"); });
}

TEST(CalibrationDialog, AChoiceIsStoredDescribedAndWritten) {
    CalibrationWindow window;
    window.open([&] {
        window.dialog.cmbTopEdge.userSelect(16);
        EXPECT_EQ(window.descriptions()[0], "Printer cuts off  1/4 inches of image");
        EXPECT_EQ(window.file(), "default\t16,00,00,00,\r\n"
                                 "Kodak photo lab default\t03,04,03,02,\r\n"
                                 "Fuji photo lab default\t02,06,03,06,\r\n");
        window.dialog.cmbRightEdge.userSelect(2);
        window.dialog.cmbBottomEdge.userSelect(3);
        window.dialog.cmbLeftEdge.userSelect(4);
        EXPECT_EQ(window.file()->substr(0, 22), "default\t16,02,03,04,\r\n");
        window.dialog.lstConfigurations.userClick(1);
        window.dialog.lstConfigurations.userClick(0);
        EXPECT_EQ(window.choices(), (std::vector<int>{16, 2, 3, 4}));
        window.dialog.cmbTopEdge.userSelect(0);
        EXPECT_EQ(window.descriptions()[0], nothingClipped);
    });
}

TEST(CalibrationDialog, AChoiceIsDescribedByWhatItsWordsMean) {
    CalibrationWindow window;
    const auto choose = [&](const std::string& words) {
        const std::vector<std::string>& choices = window.dialog.cmbTopEdge.items();
        const auto found = std::find(choices.begin(), choices.end(), words);
        window.dialog.cmbTopEdge.userSelect(static_cast<int>(found - choices.begin()));
        return window.dialog.lblTopEdgeDesc.caption();
    };
    window.open([&] {
        EXPECT_EQ(choose("see no lines!"), "Printer cuts off  1/4 inches of image");
        EXPECT_EQ(choose("see 3.50 lines"), "Printer cuts off  1/32 inches of image");
        EXPECT_EQ(choose("see all 4 lines"), nothingClipped);
    });
}

TEST(CalibrationDialog, TheSameChoiceAgainWritesNothing) {
    CalibrationWindow window;
    window.open([&] {
        window.dialog.cmbTopEdge.userSelect(0);
        EXPECT_FALSE(window.file().has_value());
    });
}

TEST(CalibrationDialog, EveryWriteFailureIsSilentAndLeavesTheOldFile) {
    for (int fault = 0; fault < 4; ++fault) {
        CalibrationWindow window;
        window.haveFile(builtInFile());
        window.open([&] {
            FileSystemFaults& faults = window.fakes.fileSystem.faults;
            faults.creationFails = fault == 0;
            faults.createTextFileFails = fault == 1;
            faults.writeLineFails = fault == 2;
            faults.closeFails = fault == 3;
            window.dialog.cmbTopEdge.userSelect(7);
            EXPECT_EQ(window.file(), builtInFile());
            EXPECT_EQ(window.descriptions()[0], "Printer cuts off  7/64 inches of image");
            faults = {};
            window.dialog.cmbLeftEdge.userSelect(1);
            EXPECT_EQ(window.file()->substr(0, 22), "default\t07,00,00,01,\r\n");
        });
        EXPECT_TRUE(window.fakes.dialogs.quiet());
    }
}

TEST(CalibrationDialog, AFileThatCouldNotBeReadIsCopiedBeforeItIsReplaced) {
    const std::string copy = CalibrationWindow::path() + ".unread";
    const std::string text = "mine\t01,02,03,16,\r\n";
    CalibrationWindow window;
    window.haveFile(text);
    window.fakes.fileSystem.faults.openTextFileFails = true;
    window.open([&] {
        window.fakes.fileSystem.faults.keepCopyFails = true;
        window.dialog.cmbTopEdge.userSelect(7);
        EXPECT_EQ(window.file(), text) << "without a copy it stays";
        window.fakes.fileSystem.faults = {};
        window.dialog.cmbTopEdge.userSelect(8);
        EXPECT_EQ(window.fakes.tree.files.at(copy), text);
        EXPECT_EQ(window.file()->substr(0, 22), "default\t08,00,00,00,\r\n");
        window.fakes.tree.files.erase(copy);
        window.dialog.cmbTopEdge.userSelect(9);
        EXPECT_FALSE(window.fakes.tree.hasFile(copy)) << "the second file was our own";
    });
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

TEST(CalibrationDialog, AFileThatWasReadOrIsEmptyNeedsNoCopy) {
    for (const char* text : {"mine\t01,02,03,16,\r\n", ""}) {
        CalibrationWindow window;
        window.haveFile(text);
        window.open([&] {
            window.dialog.cmbTopEdge.userSelect(7);
            EXPECT_FALSE(window.fakes.tree.hasFile(CalibrationWindow::path() + ".unread"));
        });
    }
}

TEST(CalibrationDialog, ACountEditedByHandShowsAsNoChoiceAndIsKept) {
    CalibrationWindow window;
    window.haveFile("mine\t20,00,00,00,\r\n");
    window.open([&] {
        EXPECT_EQ(window.choices(), (std::vector<int>{-1, 0, 0, 0}));
        EXPECT_EQ(window.descriptions()[0], "Printer cuts off  5/16 inches of image");
        window.dialog.cmbLeftEdge.userSelect(1);
        EXPECT_EQ(window.file(), "mine\t20,00,00,01,\r\n");
        EdgeTrims trims{};
        window.dialog.FillCurEdgeTrimInches(trims);
        EXPECT_DOUBLE_EQ(trims[0], 20 / 64.0);
        window.dialog.cmbTopEdge.userSelect(16);
        EXPECT_EQ(window.file(), "mine\t16,00,00,01,\r\n");
    });
}

TEST(CalibrationDialog, TheLeastCountThatHasNoChoiceShowsAsNone) {
    CalibrationWindow window;
    window.haveFile("mine\t17,16,-1,00,\r\n");
    window.open([&] { EXPECT_EQ(window.choices(), (std::vector<int>{-1, 16, -1, 0})); });
}

// New, rename, delete

TEST(CalibrationDialog, ANewProfileIsAppendedAndSelected) {
    CalibrationWindow window;
    window.owner.active = 1;
    window.fakes.dialogs.texts = {"Photo printer"};
    window.open([&] {
        window.dialog.cmdNew.userClick();
        EXPECT_EQ(window.dialog.lstConfigurations.items(),
                  (Names{"default", "Kodak photo lab default", "Fuji photo lab default",
                         "Photo printer"}));
        EXPECT_EQ(window.dialog.lstConfigurations.listIndex(), 3);
        EXPECT_EQ(window.choices(), (std::vector<int>{0, 0, 0, 0}));
        EXPECT_EQ(window.dialog.cmbTopEdge.text(), "see all 4 lines");
        EXPECT_EQ(window.descriptions(), Names(4, nothingClipped));
        EXPECT_EQ(window.file(), builtInFile() + "Photo printer\t00,00,00,00,\r\n");
        EXPECT_EQ(window.owner.names, window.dialog.lstConfigurations.items());
        EXPECT_EQ(window.owner.activeName(), "Kodak photo lab default");
    });
    const ScriptedDialogs::TextRequest asked = window.fakes.dialogs.textRequests.at(0);
    EXPECT_EQ(asked.prompt, "Enter name for new configuration:");
    EXPECT_EQ(asked.title, "New Configuration");
    EXPECT_EQ(asked.proposed, "My New Setting");
}

TEST(CalibrationDialog, NoNameMakesNoProfile) {
    CalibrationWindow window;
    window.open([&] {
        const int fillings = window.owner.listFillings;
        window.dialog.cmdNew.userClick();
        EXPECT_EQ(window.dialog.lstConfigurations.items(), builtIn);
        EXPECT_EQ(window.owner.listFillings, fillings);
        EXPECT_FALSE(window.file().has_value());
    });
}

TEST(CalibrationDialog, ANameMayBeTakenTwice) {
    CalibrationWindow window;
    window.fakes.dialogs.texts = {"default"};
    window.open([&] {
        window.dialog.cmdNew.userClick();
        EXPECT_EQ(window.dialog.lstConfigurations.count(), 4);
        EXPECT_EQ(window.dialog.lstConfigurations.listIndex(), 3);
        EXPECT_EQ(window.owner.active, 0);
    });
}

TEST(CalibrationDialog, ATabInANameBecomesABlank) {
    CalibrationWindow window;
    window.fakes.dialogs.texts = {"a\tb\r\nc"};
    window.open([&] { window.dialog.cmdNew.userClick(); });
    EXPECT_EQ(window.file(), builtInFile() + "a b  c\t00,00,00,00,\r\n");
}

TEST(CalibrationDialog, ATabInANewNameOfAProfileBecomesABlank) {
    CalibrationWindow window;
    window.fakes.dialogs.texts = {"a\tb"};
    window.open([&] { window.dialog.cmdRename.userClick(); });
    EXPECT_EQ(window.file()->substr(0, 17), "a b\t00,00,00,00,\r");
}

TEST(CalibrationDialog, RenameGivesTheSelectedProfileAnotherName) {
    CalibrationWindow window;
    window.fakes.dialogs.texts = {"Minilab"};
    window.owner.active = 1;
    window.open([&] {
        window.dialog.lstConfigurations.userClick(1);
        window.dialog.cmdRename.userClick();
        EXPECT_EQ(window.dialog.lstConfigurations.items(),
                  (Names{"default", "Minilab", "Fuji photo lab default"}));
        EXPECT_EQ(window.dialog.lstConfigurations.listIndex(), 1);
        EXPECT_EQ(window.choices(), (std::vector<int>{3, 4, 3, 2}));
        EXPECT_EQ(window.owner.activeName(), "Minilab");
        EXPECT_EQ(window.file(), "default\t00,00,00,00,\r\n"
                                 "Minilab\t03,04,03,02,\r\n"
                                 "Fuji photo lab default\t02,06,03,06,\r\n");
    });
    const ScriptedDialogs::TextRequest asked = window.fakes.dialogs.textRequests.at(0);
    EXPECT_EQ(asked.prompt, "Enter new name for this configuration setting:");
    EXPECT_EQ(asked.title, "Rename Configuration Settings");
}

TEST(CalibrationDialog, NoNameRenamesNothing) {
    CalibrationWindow window;
    window.open([&] {
        window.dialog.cmdRename.userClick();
        EXPECT_EQ(window.dialog.lstConfigurations.items(), builtIn);
        EXPECT_FALSE(window.file().has_value());
    });
}

Message deleteQuestion(const std::string& name) {
    return {"Are you sure that you want to delete the currently selected Edge Calibration Profile "
            "(" +
                name + ")?",
            "Confirm profile delete", MessageIcon::none, MessageButtons::yesNo};
}

TEST(CalibrationDialog, DeleteAsksAndSelectsTheSuccessor) {
    CalibrationWindow window;
    window.fakes.dialogs.answers = {Answer::yes};
    window.open([&] {
        window.owner.active = 2;
        window.dialog.lstConfigurations.userClick(1);
        window.dialog.cmdDel.userClick();
        EXPECT_EQ(window.fakes.dialogs.onlyMessage(), deleteQuestion("Kodak photo lab default"));
        EXPECT_EQ(window.dialog.lstConfigurations.items(),
                  (Names{"default", "Fuji photo lab default"}));
        EXPECT_EQ(window.dialog.lstConfigurations.listIndex(), 1);
        EXPECT_EQ(window.choices(), (std::vector<int>{2, 6, 3, 6}));
        EXPECT_EQ(window.owner.activeName(), "Fuji photo lab default");
        EXPECT_EQ(window.file(), "default\t00,00,00,00,\r\n"
                                 "Fuji photo lab default\t02,06,03,06,\r\n");
    });
}

TEST(CalibrationDialog, DeletingTheLastOneSelectsTheOneBefore) {
    CalibrationWindow window;
    window.fakes.dialogs.answers = {Answer::yes};
    window.open([&] {
        window.owner.active = 2;
        window.dialog.lstConfigurations.userClick(2);
        window.dialog.cmdDel.userClick();
        EXPECT_EQ(window.dialog.lstConfigurations.listIndex(), 1);
        EXPECT_EQ(window.owner.activeName(), "Kodak photo lab default");
    });
}

TEST(CalibrationDialog, DeletingAnotherKeepsTheActiveProfile) {
    CalibrationWindow window;
    window.fakes.dialogs.answers = {Answer::yes};
    window.open([&] {
        window.owner.active = 0;
        window.dialog.lstConfigurations.userClick(1);
        window.dialog.cmdDel.userClick();
        EXPECT_EQ(window.owner.activeName(), "default");
    });
}

TEST(CalibrationDialog, DeleteAnsweredNoKeepsTheProfile) {
    CalibrationWindow window;
    window.fakes.dialogs.answers = {Answer::no};
    window.open([&] {
        window.dialog.cmdDel.userClick();
        EXPECT_EQ(window.dialog.lstConfigurations.items(), builtIn);
        EXPECT_FALSE(window.file().has_value());
    });
}

TEST(CalibrationDialog, TheOnlyProfileCannotBeDeleted) {
    CalibrationWindow window;
    window.fakes.dialogs.answers = {Answer::yes, Answer::yes};
    window.open([&] {
        window.dialog.cmdDel.userClick();
        window.dialog.cmdDel.userClick();
        const std::optional<std::string> before = window.file();
        window.fakes.dialogs.messages.clear();
        window.dialog.cmdDel.userClick();
        EXPECT_EQ(
            window.fakes.dialogs.onlyMessage(),
            (Message{"You must have at least one edge clipping setting.  You can not delete "
                     "your only one.",
                     "Can not remove only preference", MessageIcon::none, MessageButtons::ok}));
        EXPECT_EQ(window.dialog.lstConfigurations.items(), Names{"Fuji photo lab default"});
        EXPECT_EQ(window.file(), before);
    });
}

TEST(CalibrationDialog, ATooLongFileIsCutByTheNextChange) {
    std::string many;
    for (int i = 0; i < 250; ++i) {
        many += std::to_string(i) + "\t00,00,00,00,\r\n";
    }
    CalibrationWindow window;
    window.haveFile(many);
    window.open([&] {
        EXPECT_EQ(window.dialog.lstConfigurations.count(), 199);
        window.dialog.cmbTopEdge.userSelect(1);
        const std::string text = *window.file();
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 199);
    });
}

TEST(CalibrationDialog, WhatIsWrittenIsReadBackByTheNextRun) {
    CalibrationWindow first;
    first.fakes.dialogs.texts = {"caf\xc3\xa9, two"};
    first.open([&] {
        first.dialog.cmdNew.userClick();
        first.dialog.cmbBottomEdge.userSelect(11);
    });
    CalibrationWindow second;
    second.haveFile(*first.file());
    second.owner.active = 3;
    second.dialog.initControls();
    EXPECT_EQ(second.owner.names, first.owner.names);
    EdgeTrims trims{};
    second.dialog.FillCurEdgeTrimInches(trims);
    EXPECT_EQ(trims, (EdgeTrims{0, 0, 11 / 64.0, 0}));
}

// What the main window asks

TEST(CalibrationDialog, TrimsAreThoseOfTheActiveProfile) {
    CalibrationWindow window;
    window.dialog.initControls();
    window.owner.active = 2;
    double trim = -1;
    for (int edge = 1; edge <= 4; ++edge) {
        const double expected[] = {2 / 64.0, 6 / 64.0, 3 / 64.0, 6 / 64.0};
        window.dialog.GetCurEdgeTrimInches(edge, trim);
        EXPECT_DOUBLE_EQ(trim, expected[edge - 1]);
    }
    EXPECT_THROW(window.dialog.GetCurEdgeTrimInches(0, trim), Error);
    EXPECT_THROW(window.dialog.GetCurEdgeTrimInches(5, trim), Error);
}

TEST(CalibrationDialog, TrimsFollowTheEditedProfileAtOnce) {
    CalibrationWindow window;
    window.open([&] {
        window.dialog.cmbLeftEdge.userSelect(8);
        double trim = 0;
        window.dialog.GetCurEdgeTrimInches(4, trim);
        EXPECT_DOUBLE_EQ(trim, 0.125);
    });
}

TEST(CalibrationDialog, WithoutAnActiveProfileThereAreNoTrims) {
    CalibrationWindow window;
    EdgeTrims trims{};
    double trim = 0;
    EXPECT_THROW(window.dialog.FillCurEdgeTrimInches(trims), Error);
    window.dialog.initControls();
    window.owner.active = -1;
    EXPECT_THROW(window.dialog.FillCurEdgeTrimInches(trims), Error);
    EXPECT_THROW(window.dialog.GetCurEdgeTrimInches(1, trim), Error);
    window.owner.active = 3;
    EXPECT_THROW(window.dialog.FillCurEdgeTrimInches(trims), Error);
}

bool neverCalibrated(const CalibrationWindow& window) {
    bool result = false;
    window.dialog.IsInitialProfile(result);
    return result;
}

TEST(CalibrationDialog, KnowsWhetherTheUserHasEverCalibrated) {
    CalibrationWindow window;
    window.dialog.initControls();
    EXPECT_TRUE(neverCalibrated(window));
    window.owner.active = 1; // clips something
    EXPECT_FALSE(neverCalibrated(window));
    window.owner.active = -1;
    EXPECT_FALSE(neverCalibrated(window));
    window.owner.active = 0;
    window.fakes.dialogs.texts = {"fourth"};
    window.dialog.cmdNew.userClick();
    EXPECT_FALSE(neverCalibrated(window));
}

TEST(ProfileList, PositionAfterADelete) {
    EXPECT_EQ(positionAfterDelete(0, 2, 4), 0);
    EXPECT_EQ(positionAfterDelete(3, 2, 4), 2);
    EXPECT_EQ(positionAfterDelete(2, 2, 4), 2);
    EXPECT_EQ(positionAfterDelete(4, 4, 4), 3);
    EXPECT_EQ(positionAfterDelete(-1, 0, 2), -1);
}

} // namespace
} // namespace veldara::test
