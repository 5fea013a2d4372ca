// The file browser: drives, folders, the filter, and the two shortcut buttons.
#include "main_fixture.h"

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Browsing : public MainWindowTest {
  protected:
    void addFiles(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            fakes.tree.addFile(pathOf(name));
        }
    }
    void openFolder(const std::string& name) {
        const auto& entries = window->Dir1.entries();
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i].name == name) {
                window->Dir1.userOpen(static_cast<int>(i));
                return;
            }
        }
        FAIL() << "no folder " << name;
    }
};

TEST_F(Browsing, ImagesFilterShowsTheThreeEndings) {
    addFiles({"a.bmp", "b.JPG", "c.Tif", "d.jpeg", "e.tiff", "f.png", "notes.txt"});
    EXPECT_THAT(start().lstFiles.items(), ElementsAre("a.bmp", "b.JPG", "c.Tif"));
}

struct FilterCase {
    int filter;
    std::vector<std::string> shown;
};

class FileFilterOfTheList : public Browsing, public ::testing::WithParamInterface<FilterCase> {};

TEST_P(FileFilterOfTheList, ShowsOnlyWhatItAccepts) {
    addFiles({"a.bmp", "b.jpg", "c.tif", "d.jpeg"});
    start().cmbFileType.userSelect(4);
    window->cmbFileType.userSelect(GetParam().filter);
    EXPECT_EQ(window->lstFiles.items(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(All, FileFilterOfTheList,
                         ::testing::Values(FilterCase{0, {"a.bmp", "b.jpg", "c.tif"}},
                                           FilterCase{1, {"b.jpg"}}, FilterCase{2, {"c.tif"}},
                                           FilterCase{3, {"a.bmp"}},
                                           FilterCase{4, {"a.bmp", "b.jpg", "c.tif", "d.jpeg"}}));

TEST_F(Browsing, NamesOfFourCharactersAreNeverListed) {
    addFiles({"jpg", ".jpg", "a.jpg"});
    start().cmbFileType.userSelect(4);
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpg"));
}

TEST_F(Browsing, NamesAreCountedInCharacters) {
    addFiles({"äjpg", "ä.jpg"}); // four and five characters
    EXPECT_THAT(start().lstFiles.items(), ElementsAre("ä.jpg"));
}

TEST_F(Browsing, EndingNeedsNoDot) {
    addFiles({"holidayjpg"});
    EXPECT_THAT(start().lstFiles.items(), ElementsAre("holidayjpg"));
}

TEST_F(Browsing, FolderOfLongEndingsIsEmptyUnderEveryFilterButTheLast) {
    addFiles({"a.jpeg", "b.jpeg"});
    start();
    for (int filter : {0, 1, 2, 3}) {
        window->cmbFileType.userSelect(filter);
        EXPECT_THAT(window->lstFiles.items(), IsEmpty());
        EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    }
    window->cmbFileType.userSelect(4);
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpeg", "b.jpeg"));
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickImage);
}

TEST_F(Browsing, FilesKeepTheOrderOfTheFolder) {
    addFiles({"b.jpg", "a.jpg"});
    start();
    EXPECT_EQ(window->lstFiles.items(), fakes.tree.filesIn("/photos"));
}

TEST_F(Browsing, FilterDoesNotRememberTheFolder) {
    start().cmbFileType.userSelect(1);
    EXPECT_FALSE(saved());
}

TEST_F(Browsing, RefillStoresTheFolderUnlessSkipped) {
    start().FillFileList(true);
    EXPECT_FALSE(saved());
    window->FillFileList();
    EXPECT_THAT(namesWritten(), ElementsAre("last_folder"));
}

TEST_F(Browsing, RefillClearsTheChoice) {
    startWithPhoto().FillFileList();
    EXPECT_EQ(window->lstFiles.listIndex(), -1);
}

TEST_F(Browsing, OpeningAFolderRefillsAndRemembersIt) {
    fakes.tree.addFile("/photos/summer/x.jpg");
    start();
    openFolder("summer");
    EXPECT_EQ(window->Dir1.path(), "/photos/summer");
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("x.jpg"));
    EXPECT_EQ(storedText("last_folder"), "/photos/summer");
    EXPECT_THAT(namesWritten(), ElementsAre("last_folder"));
}

TEST_F(Browsing, FoldersAboveAreInTheList) {
    fakes.tree.addFolder("/photos/summer");
    store("last_folder", "/photos/summer");
    start();
    openFolder("photos");
    EXPECT_EQ(window->Dir1.path(), "/photos");
}

TEST_F(Browsing, ChangingTheFolderUnloadsThePhoto) {
    fakes.tree.addFolder("/photos/summer");
    startWithPhoto();
    openFolder("summer");
    EXPECT_FALSE(window->bImgSelected);
    EXPECT_EQ(window->lblLrValue.caption(), "---");
    EXPECT_EQ(window->lblTbValue.caption(), "---");
    EXPECT_EQ(window->lblResolution.caption(), "---");
    EXPECT_FALSE(window->cmdSaveNow.enabled());
    EXPECT_FALSE(window->cmdLargePreview.enabled());
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    EXPECT_TRUE(window->currentPhoto()->empty());
}

TEST_F(Browsing, FolderWithoutRightsIsEnteredAndShowsNothing) {
    fakes.tree.addFolder("/photos/secret");
    start();
    fakes.tree.unreadable.insert("/photos/secret");
    openFolder("secret");
    EXPECT_EQ(window->Dir1.path(), "/photos/secret");
    EXPECT_THAT(window->lstFiles.items(), IsEmpty());
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    EXPECT_TRUE(fakes.dialogs.quiet());
    openFolder("photos");
    EXPECT_EQ(window->Dir1.path(), "/photos");
}

TEST_F(Browsing, ListIsFilledAgainAfterADriveThatCannotBeRead) {
    addFiles({"a.jpg"});
    fakes.drives.plug("/media/stick");
    start();
    fakes.drives.takeMediumOut("/media/stick");
    addFiles({"b.jpg"}); // younger than the list
    window->Drive1.userSelect(1);
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpg", "b.jpg"));
}

TEST_F(Browsing, DriveFollowsTheFolderIntoAMountedVolume) {
    fakes.drives.plug("/photos/stick");
    fakes.tree.addFile("/photos/stick/a.jpg");
    start();
    EXPECT_EQ(window->sCurDrive, "/");
    openFolder("stick");
    EXPECT_EQ(window->Dir1.path(), "/photos/stick") << "the drive's own change moves nothing";
    EXPECT_EQ(window->Drive1.drive(), "/photos/stick");
    EXPECT_EQ(window->sCurDrive, "/photos/stick");
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpg"));
    window->Dir1.setPath("/photos");
    EXPECT_EQ(window->Drive1.drive(), "/");
    EXPECT_EQ(window->sCurDrive, "/");
}

TEST_F(Browsing, NeitherButtonIsOfferedInAnotherFolderWhateverTheTileSize) {
    fakes.tree.addFolder("/photos/summer");
    startWithPhoto();
    window->chkPreviewTiles.userSetChecked(false);
    setTileInches(60, 60); // out of range: the figures are not refreshed
    window->cmdSaveNow.setEnabled(true);
    window->cmdLargePreview.setEnabled(true);
    openFolder("summer");
    EXPECT_FALSE(window->cmdSaveNow.enabled());
    EXPECT_FALSE(window->cmdLargePreview.enabled());
}

// The list follows its folder

class FollowingTheFolder : public Browsing {
  protected:
    void SetUp() override {
        startWithPhoto();
        window->scrZoom.userSetValue(100);
        window->picCur.userMouseDown(MouseButton::left, 150, 100);
        window->picCur.userMouseMove(160, 100);
        window->picCur.userMouseUp(MouseButton::left, 160, 100);
        crop_ = window->lblLrValue.caption();
        EXPECT_NE(crop_, "(center)");
        picture_ = window->picCur.pixels();
    }
    void expectAsBefore(int index) const {
        EXPECT_EQ(window->lstFiles.listIndex(), index);
        EXPECT_EQ(window->lstFiles.selectedText(), "photo.jpg");
        EXPECT_TRUE(window->bImgSelected);
        EXPECT_TRUE(window->cmdSaveNow.enabled());
        EXPECT_EQ(window->lblLrValue.caption(), crop_);
        EXPECT_EQ(window->picCur.pixels(), picture_);
        EXPECT_EQ(loaded.size(), 1U);
    }
    void expectGone() const {
        EXPECT_FALSE(window->bImgSelected);
        EXPECT_FALSE(window->bPreviewOn);
        EXPECT_EQ(window->lstFiles.listIndex(), -1);
        EXPECT_EQ(window->lblLrValue.caption(), "---");
        EXPECT_EQ(window->lblResolution.caption(), "---");
        EXPECT_FALSE(window->cmdSaveNow.enabled());
        EXPECT_TRUE(window->currentPhoto()->empty());
    }

  private:
    std::string crop_;
    std::shared_ptr<const Image> picture_;
};

TEST_F(FollowingTheFolder, NewAndDeletedFilesLeaveThePhotoAndItsCrop) {
    addFiles({"another.jpg"});
    window->RefreshFolder();
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("another.jpg", "photo.jpg"));
    expectAsBefore(1);
    fakes.tree.remove(pathOf("another.jpg"));
    window->RefreshFolder();
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("photo.jpg"));
    expectAsBefore(0);
    EXPECT_FALSE(saved());
}

TEST_F(FollowingTheFolder, NewFoldersAreListedAsWell) {
    fakes.tree.addFolder("/photos/tiles");
    window->RefreshFolder();
    openFolder("tiles");
    EXPECT_EQ(window->Dir1.path(), "/photos/tiles");
}

TEST_F(FollowingTheFolder, PhotoWhoseFileIsDeletedIsUnloaded) {
    fakes.tree.remove(pathOf("photo.jpg"));
    window->RefreshFolder();
    expectGone();
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(FollowingTheFolder, UnchangedFolderChangesNothing) {
    int notified = 0;
    window->lstFiles.observe([&](Property) { ++notified; });
    window->RefreshFolder();
    EXPECT_EQ(notified, 0);
}

TEST_F(FollowingTheFolder, FilterThatStillListsThePhotoKeepsIt) {
    addFiles({"other.tif"});
    window->cmbFileType.userSelect(1);
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("photo.jpg"));
    expectAsBefore(0);
}

TEST_F(FollowingTheFolder, FilterThatNoLongerListsThePhotoUnloadsIt) {
    window->cmbFileType.userSelect(2);
    expectGone();
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    EXPECT_FALSE(saved());
}

TEST_F(Browsing, FolderWhoseFilesCannotBeListedIsEmptyWithoutAMessage) {
    addFiles({"a.jpg"});
    start();
    fakes.fileSystem.faults.listingFails = true;
    window->FillFileList();
    EXPECT_THAT(window->lstFiles.items(), IsEmpty());
    EXPECT_EQ(window->picCur.drawing(), Drawing::pickFolder);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(Browsing, MissingFileSystemObjectEmptiesTheListWithoutAMessage) {
    addFiles({"a.jpg"});
    start();
    fakes.fileSystem.faults.creationFails = true;
    window->FillFileList();
    EXPECT_THAT(window->lstFiles.items(), IsEmpty());
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(Browsing, WithoutTheSystemsComponentFilesAreListedBySubstitute) {
    addFiles({"a.jpg"});
    fakes.fileSystem.faults.creationFails = true;
    fakes.fileSystem.faults.substituteWorks = true;
    start();
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpg"));
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(Browsing, ChangingTheDriveGoesToItsRoot) {
    fakes.drives.plug("/media/stick");
    fakes.tree.addFile("/media/stick/a.jpg");
    start().Drive1.userSelect(1);
    EXPECT_EQ(window->sCurDrive, "/media/stick");
    EXPECT_EQ(window->Dir1.path(), "/media/stick");
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpg"));
    EXPECT_EQ(storedText("last_folder"), "/media/stick");
}

TEST_F(Browsing, DriveThatCannotBeReadIsPutBack) {
    addFiles({"a.jpg"});
    fakes.drives.plug("/media/stick");
    start();
    fakes.drives.takeMediumOut("/media/stick");
    window->Drive1.userSelect(1);
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Drive", "The drive you chose could not be accessed."));
    EXPECT_EQ(window->Drive1.drive(), "/");
    EXPECT_EQ(window->sCurDrive, "/");
    EXPECT_EQ(window->Dir1.path(), "/photos") << "the folder stays as well";
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpg"));
}

TEST_F(Browsing, DriveCanBeChosenAgainAfterAFailure) {
    fakes.drives.plug("/media/stick");
    start();
    fakes.drives.takeMediumOut("/media/stick");
    window->Drive1.userSelect(1);
    fakes.tree.unreadable.clear();
    window->Drive1.userSelect(1);
    EXPECT_EQ(window->Dir1.path(), "/media/stick");
    EXPECT_EQ(fakes.dialogs.messages.size(), 1U);
}

TEST_F(Browsing, DriveThatWasPulledOutTogetherWithTheOldOneIsReported) {
    fakes.drives.plug("/media/one");
    fakes.drives.plug("/media/two");
    start().Drive1.userSelect(1);
    fakes.drives.takeMediumOut("/media/two");
    fakes.drives.unplug("/media/one");
    window->Drive1.userSelect(2);
    EXPECT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_THAT(window->lstFiles.items(), IsEmpty());
}

TEST_F(Browsing, ShortcutsGoToTheirFolders) {
    fakes.tree.addFile("/home/desktop/a.jpg");
    fakes.tree.addFile("/home/documents/b.jpg");
    start().cmdDesktop.userClick();
    EXPECT_EQ(window->Dir1.path(), "/home/desktop");
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("a.jpg"));
    EXPECT_EQ(storedText("last_folder"), "/home/desktop");
    window->cmdMyDoc.userClick();
    EXPECT_EQ(window->Dir1.path(), "/home/documents");
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("b.jpg"));
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(Browsing, ShortcutChangesTheDriveAsWell) {
    fakes.drives.plug("/media/stick");
    start().Drive1.userSelect(1);
    window->cmdDesktop.userClick();
    EXPECT_EQ(window->Drive1.drive(), "/");
    EXPECT_EQ(window->sCurDrive, "/");
    EXPECT_EQ(window->Dir1.path(), "/home/desktop");
}

Message problem(const std::string& folder) {
    return critical("Problem",
                    "Could not determine the location of the " + folder +
                        " folder.  Please navigate there manually using the folder listbox below "
                        "here.");
}

class ShortcutsWithout : public Browsing {
  protected:
    void expectBothProblems() {
        start();
        window->cmdDesktop.userClick();
        window->cmdMyDoc.userClick();
        EXPECT_THAT(fakes.dialogs.messages,
                    ElementsAre(problem("Desktop"), problem("My Documents")));
        EXPECT_EQ(window->Dir1.path(), "/photos");
        EXPECT_EQ(window->Drive1.drive(), "/");
    }
};

TEST_F(ShortcutsWithout, DesktopReportForBoth) {
    fakes.tree.remove("/home/desktop");
    expectBothProblems();
    EXPECT_THAT(fakes.specialFolders.asked, ElementsAre(0)) << "documents are not looked up";
}

TEST_F(ShortcutsWithout, DocumentsReportForBoth) {
    fakes.tree.remove("/home/documents");
    expectBothProblems();
    EXPECT_THAT(fakes.specialFolders.asked, ElementsAre(0, 5));
}

TEST_F(ShortcutsWithout, AnyAnswerReportForBoth) {
    fakes.specialFolders.paths.clear();
    expectBothProblems();
}

TEST_F(ShortcutsWithout, FileSystemObjectReportForBoth) {
    fakes.fileSystem.faults.creationFails = true;
    expectBothProblems();
}

TEST_F(Browsing, ShortcutToAFolderThatHasGoneSinceIsReported) {
    start();
    fakes.tree.remove("/home/desktop");
    window->cmdDesktop.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), problem("Desktop"));
    EXPECT_EQ(window->Dir1.path(), "/photos");
}

TEST_F(Browsing, ShortcutToAFolderOnNoDriveIsReported) {
    fakes.tree.addFolder("//server/desktop");
    fakes.specialFolders.paths[0] = "server:desktop";
    fakes.tree.folders.insert("server:desktop");
    start().cmdDesktop.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), problem("Desktop"));
}

class LetteredBrowsing : public LetteredMainWindowTest {};

TEST_F(LetteredBrowsing, ShortcutTakesTheDriveLetterInLowerCase) {
    fakes.drives.plug("d");
    fakes.specialFolders.paths[0] = "D:\\Desktop";
    fakes.tree.folders.insert("D:\\Desktop");
    start().cmdDesktop.userClick();
    EXPECT_EQ(window->Drive1.drive(), "d");
    EXPECT_EQ(window->sCurDrive, "d");
    EXPECT_EQ(window->Dir1.path(), "D:\\Desktop");
}

TEST_F(LetteredBrowsing, WithoutAnswersTheOldFixedFoldersAreTried) {
    fakes.specialFolders.paths.clear();
    fakes.tree.addFolder(R"(c:\windows\desktop)");
    fakes.tree.addFolder(R"(c:\My Documents)");
    start().cmdDesktop.userClick();
    EXPECT_EQ(window->Dir1.path(), R"(c:\windows\desktop)");
    window->cmdMyDoc.userClick();
    EXPECT_EQ(window->Dir1.path(), R"(c:\My Documents)");
}

TEST_F(LetteredBrowsing, NetworkFolderIsReported) {
    fakes.specialFolders.paths[0] = R"(\\server\desktop)";
    fakes.tree.folders.insert(R"(\\server\desktop)");
    start().cmdDesktop.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), problem("Desktop"));
}

TEST_F(LetteredBrowsing, DriveWithoutAMediumIsReported) {
    fakes.drives.plug("a");
    start();
    fakes.drives.takeMediumOut("a");
    window->Drive1.userSelect(1);
    EXPECT_EQ(fakes.dialogs.onlyMessage().title, "Invalid Drive");
    EXPECT_EQ(window->sCurDrive, "c");
    EXPECT_EQ(window->Dir1.path(), R"(c:\photos)");
}

} // namespace
} // namespace veldara::test
