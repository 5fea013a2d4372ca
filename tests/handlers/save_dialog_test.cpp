// The save dialog: how it is filled, its lists and its label.
#include "save_support.h"

namespace veldara::test {
namespace {

TEST(SaveDialog, HasItsTexts) {
    const SaveWindows windows;
    const frmSaveTiles& dialog = windows.dialog;
    EXPECT_EQ(dialog.name(), "frmSaveTiles");
    EXPECT_EQ(dialog.caption(), "Save Image Tiles");
    EXPECT_EQ(dialog.lblStep1.caption(), "Step (1) Select where save files, file names and format");
    EXPECT_EQ(dialog.lblStep2.caption(), "Step (2) Click to Save Files Now");
    EXPECT_EQ(dialog.fraFileFormat.caption(), "File Type");
    EXPECT_EQ(dialog.fraSaveInfo.caption(), "File Save Info");
    EXPECT_EQ(dialog.lblNewFolderName.caption(), "New Folder Name:");
    EXPECT_EQ(dialog.lblBaseFileName.caption(), "Base Filename:");
    EXPECT_EQ(dialog.lblLocation.caption(), "New Folder  Location");
    EXPECT_EQ(dialog.lblPathCaption.caption(), "Files currently set to be saved in:");
    EXPECT_EQ(dialog.opbBmp.caption(), "Bitmap (.bmp)");
    EXPECT_EQ(dialog.opbTif.caption(), "Tiff (.tif)");
    EXPECT_EQ(dialog.opbJpg.caption(), "JPEG (.jpg)");
    EXPECT_EQ(dialog.cmdSaveNow.caption(), "Save Images Now");
    EXPECT_EQ(dialog.cmdClose.caption(), "Close");
}

TEST(SaveDialog, IsFilledFromThePhotoWhateverTheCaseOfItsEnding) {
    SaveWindows windows;
    bool opened = false;
    windows.open(
        [&] {
            opened = true;
            EXPECT_EQ(windows.dialog.drvTile.drive(), "c");
            EXPECT_EQ(windows.dialog.dirTile.path(), "c:\\photos");
            EXPECT_EQ(windows.dialog.txtBaseFileName.text(), "IMG_0001");
            EXPECT_EQ(windows.dialog.txtNewFolderName.text(), "IMG_0001_poster_images");
            EXPECT_TRUE(windows.dialog.opbJpg.selected());
            EXPECT_FALSE(windows.dialog.opbBmp.selected());
            EXPECT_FALSE(windows.dialog.opbTif.selected());
            EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\photos\\IMG_0001_poster_images\\");
        },
        "IMG_0001.JPG");
    EXPECT_TRUE(opened);
    EXPECT_TRUE(windows.fakes.dialogs.quiet());
}

TEST(SaveDialog, TakesTheFileTypeOfThePhoto) {
    SaveWindows windows;
    windows.open([&] { EXPECT_TRUE(windows.dialog.opbBmp.selected()); }, "a.bmp");
    windows.open([&] { EXPECT_TRUE(windows.dialog.opbTif.selected()); }, "a.TIF");
    windows.open([&] { EXPECT_TRUE(windows.dialog.opbJpg.selected()); }, "a.Jpg");
    EXPECT_TRUE(windows.fakes.screen.allUsersPlayed());
}

TEST(SaveDialog, NameBoxesTakeNoCharacterThatNoNameCanHave) {
    SaveWindows windows;
    windows.open([&] {
        for (TextBox* box : {&windows.dialog.txtNewFolderName, &windows.dialog.txtBaseFileName}) {
            int refusals = 0;
            box->observe([&](Property property) { refusals += property == Property::refused; });
            box->userSetText(R"(a\b/c:d*e?f"g<h>i|j)");
            EXPECT_EQ(box->text(), "abcdefghij");
            EXPECT_EQ(refusals, 1);
            EXPECT_EQ(box->refusal(),
                      R"(A name cannot contain any of these characters: \ / : * ? " < > |)");
            box->observe({});
        }
        EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\photos\\abcdefghij\\");
    });
}

TEST(SaveDialog, RefusesANameOfFourCharacters) {
    SaveWindows windows;
    windows.dialog.OpenForPhoto("c", windows.photos, "a.jp");
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage(),
              critical("Problem", "Invalid file chosen.  Can not continue."));
    EXPECT_TRUE(windows.fakes.screen.log.empty());
}

TEST(SaveDialog, RefusesNoNameAtAll) {
    SaveWindows windows;
    windows.dialog.OpenForPhoto("c", windows.photos, "");
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage().title, "Problem");
    EXPECT_FALSE(windows.dialog.visible());
}

TEST(SaveDialog, RefusesAnEndingOfFourLetters) {
    SaveWindows windows;
    windows.dialog.OpenForPhoto("c", windows.photos, "holiday.jpeg");
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage(),
              critical("Error", "Unable to save - invalid image file type"));
    EXPECT_FALSE(windows.dialog.visible());
    EXPECT_EQ(windows.dialog.txtBaseFileName.text(), "holiday.");
}

TEST(SaveDialog, IsNotShownWhenThePhotosFolderHasGone) {
    SaveWindows windows;
    windows.fakes.tree.remove(windows.photos);
    windows.dialog.OpenForPhoto("c", windows.photos, "a.jpg");
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage().title, "Invalid Drive");
    EXPECT_FALSE(windows.dialog.visible());
}

TEST(SaveDialog, RemembersNothingBetweenUses) {
    SaveWindows windows;
    windows.fakes.tree.addFolder("c:\\elsewhere");
    windows.open([&] {
        windows.dialog.dirTile.setPath("c:\\elsewhere");
        windows.dialog.txtBaseFileName.userSetText("mine");
        windows.dialog.txtNewFolderName.userSetText("");
        windows.dialog.opbTif.userSelect();
    });
    windows.open([&] {
        EXPECT_EQ(windows.dialog.dirTile.path(), windows.photos);
        EXPECT_EQ(windows.dialog.txtBaseFileName.text(), "IMG_0001");
        EXPECT_EQ(windows.dialog.txtNewFolderName.text(), "IMG_0001_poster_images");
        EXPECT_TRUE(windows.dialog.opbBmp.selected());
    });
}

TEST(SaveDialog, ShowsFoldersMadeSinceItWasLastOpen) {
    SaveWindows windows;
    windows.open([] {});
    windows.fakes.tree.addFolder(windows.photos + "\\new");
    windows.open([&] { EXPECT_EQ(windows.dialog.dirTile.entries().back().name, "new"); });
}

TEST(SaveDialog, LabelFollowsTheNewFolderName) {
    SaveWindows windows;
    windows.open([&] {
        windows.dialog.txtNewFolderName.userSetText("x");
        EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\photos\\x\\");
        windows.dialog.txtNewFolderName.userSetText("");
        EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\photos\\");
    });
}

TEST(SaveDialog, LabelHasOneSeparatorBehindADrivesRoot) {
    SaveWindows windows;
    windows.photos = "c:\\";
    windows.open([&] {
        EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\IMG_0001_poster_images\\");
        windows.dialog.txtNewFolderName.userSetText("");
        EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\");
    });
}

TEST(SaveDialog, LabelFollowsTheFolderList) {
    SaveWindows windows;
    windows.fakes.tree.addFolder(windows.photos + "\\sub");
    windows.open([&] {
        const int sub = static_cast<int>(windows.dialog.dirTile.entries().size()) - 1;
        windows.dialog.dirTile.userOpen(sub);
        EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\photos\\sub\\IMG_0001_poster_images\\");
    });
}

TEST(SaveDialog, LabelIsCutAtFiftyFiveCharacters) {
    SaveWindows windows;
    windows.open([&] {
        // "c:\photos\" has 10 characters, the separator at the end is one more.
        windows.dialog.txtNewFolderName.userSetText(std::string(109, 'n'));
        EXPECT_EQ(windows.dialog.lblPath.caption(), "c:\\photos\\" + std::string(45, 'n') + "\r\n" +
                                                        std::string(55, 'n') + "\r\n" +
                                                        std::string(9, 'n') + "\\");
    });
}

TEST(SaveDialog, FolderListGoesToTheChosenDrive) {
    SaveWindows windows;
    windows.fakes.drives.plug("d");
    windows.open([&] {
        windows.dialog.drvTile.userSelect(1);
        EXPECT_EQ(windows.dialog.drvTile.drive(), "d");
        EXPECT_EQ(windows.dialog.dirTile.path(), "d:\\");
        EXPECT_EQ(windows.dialog.lblPath.caption(), "d:\\IMG_0001_poster_images\\");
    });
    EXPECT_TRUE(windows.fakes.dialogs.quiet());
}

TEST(SaveDialog, ADriveWithoutMediumIsReportedAndTheLastOneKept) {
    SaveWindows windows;
    windows.fakes.drives.plug("d");
    windows.fakes.drives.takeMediumOut("d");
    windows.open([&] {
        windows.dialog.drvTile.userSelect(1);
        EXPECT_EQ(windows.fakes.dialogs.onlyMessage(),
                  critical("Invalid Drive", "The drive you chose could not be accessed."));
        EXPECT_EQ(windows.dialog.drvTile.drive(), "c");
        EXPECT_EQ(windows.dialog.dirTile.path(), windows.photos);
    });
}

TEST(SaveDialog, DriveFollowsTheFolderIntoAMountedVolume) {
    SaveWindows windows('/');
    windows.fakes.tree.addFolder("/photos/stick/deep");
    windows.fakes.drives.plug("/photos/stick");
    windows.open([&] {
        EXPECT_EQ(windows.dialog.drvTile.drive(), "/");
        windows.dialog.dirTile.setPath("/photos/stick/deep");
        EXPECT_EQ(windows.dialog.drvTile.drive(), "/photos/stick");
        EXPECT_EQ(windows.dialog.dirTile.path(), "/photos/stick/deep");
        windows.dialog.dirTile.setPath("/photos");
        EXPECT_EQ(windows.dialog.drvTile.drive(), "/");
    });
}

TEST(SaveDialog, CloseSavesNothing) {
    SaveWindows windows;
    windows.fakes.screen.whenModal("frmSaveTiles",
                                   [&](Window&) { windows.dialog.cmdClose.userClick(); });
    windows.dialog.OpenForPhoto("c", windows.photos, "a.jpg");
    EXPECT_FALSE(windows.dialog.loaded());
    EXPECT_TRUE(windows.written.empty());
    EXPECT_TRUE(windows.fakes.tree.foldersIn(windows.photos).empty());
}

TEST(SaveDialog, CloseBoxUnloads) {
    SaveWindows windows;
    windows.open([] {});
    EXPECT_FALSE(windows.dialog.loaded());
    EXPECT_EQ(windows.fakes.screen.log,
              (std::vector<std::string>{"modal frmSaveTiles", "hide frmSaveTiles"}));
}

TEST(SaveDialog, TheThreeFileTypesExcludeEachOther) {
    SaveWindows windows;
    windows.open([&] {
        windows.dialog.opbTif.userSelect();
        EXPECT_FALSE(windows.dialog.opbBmp.selected());
        windows.dialog.opbJpg.userSelect();
        EXPECT_FALSE(windows.dialog.opbTif.selected());
    });
}

} // namespace
} // namespace veldara::test
