// A run that writes tiles, and every way in which it can end before its last one.
#include "save_support.h"
#include "support/temp_folder.h"

#include <map>
#include <string>
#include <system_error>

namespace veldara::test {
namespace {

// A run that ends early, with the dialog unloaded.
class SaveFailure : public ::testing::Test {
  protected:
    // Runs and expects exactly this message and nothing after it.
    void expectEnd(const Message& message, std::size_t filesWritten = 0) {
        windows.save(before);
        EXPECT_EQ(windows.fakes.dialogs.onlyMessage(), message);
        EXPECT_EQ(windows.written.size(), filesWritten);
        EXPECT_FALSE(windows.dialog.loaded());
        EXPECT_FALSE(windows.result.loaded());
        windows.fakes.clock.advance(1000);
        EXPECT_FALSE(windows.progress.loaded());
        EXPECT_FALSE(windows.progress.visible());
    }
    bool progressWasShown() const {
        for (const std::string& line : windows.fakes.screen.log) {
            if (line == "show frmMsg") {
                return true;
            }
        }
        return false;
    }

    SaveWindows windows;
    std::function<void()> before = [] {};
};

TEST_F(SaveFailure, NoTiles) {
    windows.owner.tableOk = false;
    expectEnd(critical("Error", "Error calculating tile coordinates"));
    EXPECT_FALSE(progressWasShown());
    EXPECT_EQ(windows.fakes.fileSystem.objectsMade, 0);
}

TEST_F(SaveFailure, NoFileSystemObject) {
    windows.fakes.fileSystem.faults.creationFails = true;
    expectEnd(critical("Error", "Error creating FileSystemObject - Windows component missing"));
    EXPECT_FALSE(progressWasShown());
}

Message folderQuestion(const std::string& folder) {
    return {"The folder \"" + folder +
                "\" already exists.  Some files could be overwritten.  Do you want to continue?",
            "Folder Exists", MessageIcon::none, MessageButtons::yesNoCancel, Answer::no};
}

TEST_F(SaveFailure, FolderQuestionAnsweredNo) {
    windows.fakes.tree.addFolder(windows.folder());
    windows.fakes.dialogs.answers = {Answer::no};
    expectEnd(folderQuestion(windows.folder()));
    EXPECT_FALSE(progressWasShown());
}

TEST_F(SaveFailure, FolderQuestionCanceled) {
    windows.fakes.tree.addFolder(windows.folder());
    windows.fakes.dialogs.answers = {Answer::cancel};
    expectEnd(folderQuestion(windows.folder()));
    EXPECT_FALSE(progressWasShown());
}

TEST(SaveRun, FolderQuestionAnsweredYesWritesIntoTheFolder) {
    SaveWindows windows;
    windows.fakes.tree.addFolder(windows.folder());
    windows.fakes.dialogs.answers = {Answer::yes};
    windows.save();
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage(), folderQuestion(windows.folder()));
    EXPECT_EQ(windows.written.size(), 4U);
    EXPECT_TRUE(windows.fakes.fileSystem.foldersMade.empty());
}

// A disk on which another program makes every folder a moment earlier.
class ContestedDisk : public FileSystem, public FileSystemObject {
  public:
    explicit ContestedDisk(FolderTree& tree) : tree_(tree) {}

    std::unique_ptr<FileSystemObject> create() override {
        return std::make_unique<ContestedDisk>(tree_);
    }
    std::vector<std::string> files(const std::string& folder) override {
        return tree_.filesIn(folder);
    }
    bool fileExists(const std::string& path) override { return tree_.hasFile(path); }
    bool folderExists(const std::string& path) override { return tree_.hasFolder(path); }
    void createFolder(const std::string& path) override {
        tree_.addFolder(path);
        throw Error("It is there already.");
    }
    std::uint64_t freeSpace(const std::string&) override { return 1'000'000'000; }
    std::unique_ptr<TextReader> openTextFile(const std::string&) override { throw Error("No."); }
    std::unique_ptr<TextWriter> createTextFile(const std::string&) override { throw Error("No."); }
    void keepCopy(const std::string&) override { throw Error("No."); }

  private:
    FolderTree& tree_;
};

TEST_F(SaveFailure, FolderMadeByAnotherAMomentEarlierIsOneThatExists) {
    ContestedDisk disk(windows.fakes.tree);
    Platform platform = windows.fakes.withDisk(disk, windows.fakes.drives);
    frmSaveTiles dialog(platform, windows.fakes.screen, windows.owner, windows.progress,
                        windows.result);
    windows.fakes.dialogs.answers = {Answer::no};
    windows.fakes.screen.whenModal("frmSaveTiles", [&](Window&) {
        dialog.cmdSaveNow.userClick();
        dialog.userClose();
    });
    dialog.OpenForPhoto(windows.drive, windows.photos, "IMG_0001.BMP");
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage(), folderQuestion(windows.folder()));
}

Message folderNotMade(const std::string& folder) {
    return critical("Error", "Could not create the folder \"" + folder +
                                 "\" to save your poster tile images into.  Possible causes of "
                                 "this are that you do not have access rights to the drive "
                                 "that you selected, the disk drive is full, or that you "
                                 "provided an invalid folder name.  Can not continue.");
}

TEST_F(SaveFailure, FolderCannotBeMade) {
    windows.fakes.fileSystem.faults.createFolderFails = true;
    expectEnd(folderNotMade(windows.folder()));
    EXPECT_FALSE(progressWasShown());
}

TEST_F(SaveFailure, FolderCannotBeLookedFor) {
    windows.fakes.fileSystem.faults.folderExistsFails = true;
    expectEnd(folderNotMade(windows.folder()));
    EXPECT_FALSE(progressWasShown());
}

TEST_F(SaveFailure, NamesThatTheSystemWouldChangeOrTakeForDevices) {
    const std::string dropped = "ends with a blank or a dot, which Windows drops";
    const std::map<std::string, std::string> problems = {
        {"poster ", dropped},
        {"poster.", dropped},
        {"con.poster", "is the name of a device in Windows"},
    };
    for (const auto& problem : problems) {
        const std::string& name = problem.first;
        SaveWindows other;
        other.save([&] { other.dialog.txtNewFolderName.setText(name); });
        std::string text = "Problem: The folder name \"";
        text.append(name).append("\" ").append(problem.second);
        EXPECT_EQ(other.fakes.dialogs.onlyMessage(), critical("Error", text));
        EXPECT_TRUE(other.written.empty());
        EXPECT_FALSE(other.fakes.tree.folders.contains(other.photos + "\\" + name));
    }
}

TEST_F(SaveFailure, FolderWithinAFolderThatIsNotThere) {
    before = [&] { windows.dialog.txtNewFolderName.setText("a\\b"); };
    windows.save(before);
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage().text.substr(0, 43),
              "Could not create the folder \"c:\\photos\\a\\b\"");
}

TEST(SaveRun, MemoryIsTakenForTheWidestAndTheHighestTile) {
    SaveWindows windows;
    windows.owner.tiles = {{0, 0, 9, 19}, {0, 0, 29, 9}, {0, 0, 4, 4}};
    windows.save();
    EXPECT_EQ(windows.tileImagesMade, (std::vector<std::pair<int, int>>{{30, 20}}));
    EXPECT_EQ(windows.written.size(), 3U);
}

TEST_F(SaveFailure, NoTileImage) {
    windows.tileImageFails = true;
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_EQ(windows.progress.curStatus, closeAtNextTick);
        EXPECT_TRUE(windows.progress.loaded());
        EXPECT_TRUE(windows.dialog.loaded());
    };
    expectEnd(critical("Error", "Error creating imgX object"));
    EXPECT_TRUE(progressWasShown());
}

TEST_F(SaveFailure, NoThreadForTheRun) {
    windows.fakes.eventPump.whileServing = [&] {
        if (windows.written.size() == 1) {
            throw std::system_error(
                std::make_error_code(std::errc::resource_unavailable_try_again));
        }
    };
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_EQ(windows.progress.curStatus, closeAtNextTick);
        EXPECT_TRUE(windows.dialog.loaded());
    };
    expectEnd(critical("Error", "Error creating imgX object"), 1);
    // The dialog can be used again.
    windows.fakes.eventPump.whileServing = nullptr;
    windows.fakes.dialogs.whileMessageShown = nullptr;
    windows.fakes.dialogs.answers = {Answer::yes};
    windows.save();
    EXPECT_EQ(windows.written.size(), 1U + 4U);
}

TEST_F(SaveFailure, InvalidTileSizes) {
    windows.owner.sizesOk = false;
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_EQ(windows.progress.curStatus, closeAtNextTick);
    };
    expectEnd(critical("Error", "Can not continue - Invalid tile print sizes entered"));
}

TEST_F(SaveFailure, TrimsLeaveNothingOfATile) {
    windows.owner.widthInches = 0;
    expectEnd(critical("Error", "Can not continue - Invalid tile print sizes entered"));
}

TEST_F(SaveFailure, NoFileType) {
    before = [&] {
        windows.dialog.opbBmp.setSelected(false);
        windows.dialog.opbTif.setSelected(false);
        windows.dialog.opbJpg.setSelected(false);
    };
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_EQ(windows.progress.curStatus, closeAtNextTick);
    };
    expectEnd(critical("Error", "Problem: File extension not selected"));
}

TEST(SaveRun, WithoutAPlaceThereAreNoFileNames) {
    SaveWindows windows;
    windows.fakes.tree.folders.insert(""); // where a name without a place is made
    windows.dialog.opbBmp.setSelected(true);
    windows.dialog.txtNewFolderName.setText("new");
    windows.dialog.processSaveNow();
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage(),
              critical("Error", "Problem: You must select the location where the new poster tile "
                                "image folder will be created"));
    EXPECT_EQ(windows.progress.curStatus, closeAtNextTick);
    EXPECT_TRUE(windows.written.empty());
}

TEST(SaveRun, ATileNeverTakesThePhotosPlace) {
    const TempFolder disk;
    const std::string photo = disk.addFile("h002.bmp", "the photo");
    SaveWindows windows(platformSeparator);
    windows.photos = disk.text();
    windows.drive = windows.fakes.drives.names.front();
    windows.fakes.tree.addFolder(disk.text());
    windows.fakes.dialogs.answers = {Answer::yes}; // the folder is there
    windows.save(
        [&] {
            windows.dialog.txtNewFolderName.userSetText("");
            windows.dialog.txtBaseFileName.userSetText("h");
        },
        "h002.bmp");
    EXPECT_EQ(
        windows.fakes.dialogs.messages.back(),
        critical("Error", "Problem: The tile \"" + photo + "\" would take the photo's place"));
    EXPECT_TRUE(windows.written.empty()) << "not even the tile before it";
}

TEST_F(SaveFailure, CompensationFails) {
    windows.owner.compensated = true;
    windows.owner.trims = {0, -0.5, 0, 0}; // as a count edited by hand can have it
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_EQ(windows.progress.curStatus, closeAtNextTick);
    };
    expectEnd(critical("Error", "Error applying printer edge clipping compensation"));
}

TEST(SaveRun, ARunThatFailedInCompensationLeavesTheDialogToItsCaller) {
    SaveWindows windows;
    windows.owner.compensated = true;
    windows.owner.trims = {0, -0.5, 0, 0};
    windows.open([&] {
        windows.dialog.processSaveNow();
        EXPECT_TRUE(windows.dialog.loaded());
    });
}

// The same of runs that take the dialog down themselves.
TEST(SaveRun, ARunWithoutTilesTakesTheDialogDownItself) {
    SaveWindows windows;
    windows.owner.tableOk = false;
    windows.open([&] {
        windows.dialog.processSaveNow();
        EXPECT_FALSE(windows.dialog.loaded());
    });
}

TEST_F(SaveFailure, NoSpaceForTheFirstTile) {
    windows.fakes.fileSystem.space = 100;
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_TRUE(windows.progress.loaded());
        EXPECT_EQ(windows.progress.curStatus, progressRunning);
    };
    expectEnd(critical("Out of disk space",
                       "Not enough disk space on selected drive.  Can not save images."));
    EXPECT_FALSE(windows.progress.loaded());
}

TEST_F(SaveFailure, NoSpaceForTheThirdTile) {
    windows.fakes.eventPump.whileServing = [&] {
        if (windows.written.size() == 2) {
            windows.fakes.fileSystem.space = 0;
        }
    };
    expectEnd(critical("Out of disk space",
                       "Not enough disk space on selected drive.  Can not save images."),
              2);
}

TEST(SaveRun, SpaceForExactlyTheTileIsEnough) {
    SaveWindows first;
    first.save();
    const std::size_t size = first.written.front().bytes.size();

    SaveWindows enough;
    enough.fakes.fileSystem.space = size;
    enough.save();
    EXPECT_EQ(enough.written.size(), 4U);

    SaveWindows short1;
    short1.fakes.fileSystem.space = size - 1;
    short1.save();
    EXPECT_TRUE(short1.written.empty());
}

TEST(SaveRun, SpaceThatCannotBeMeasuredIsEnough) {
    SaveWindows windows;
    windows.fakes.fileSystem.faults.freeSpaceFails = true;
    windows.save();
    EXPECT_EQ(windows.written.size(), 4U);
    EXPECT_TRUE(windows.fakes.dialogs.quiet());
}

TEST(SaveRun, SpaceIsAskedOfTheDriveLetterForEveryTile) {
    SaveWindows letters;
    letters.save();
    EXPECT_EQ(letters.fakes.fileSystem.spaceAskedOf, std::vector<std::string>(4, "c"));
}

TEST(SaveRun, SpaceIsAskedOfTheTilesFolderWhereDrivesHaveNoLetters) {
    SaveWindows volumes('/');
    volumes.save();
    EXPECT_EQ(volumes.fakes.fileSystem.spaceAskedOf, std::vector<std::string>(4, volumes.folder()));
}

TEST_F(SaveFailure, FileCannotBeWritten) {
    windows.writeFails = true;
    expectEnd(critical("Error", "Error saving tile image file to disk.  Possible cause is that "
                                "the disk is full.  Can not continue."));
    EXPECT_FALSE(windows.progress.loaded());
}

TEST_F(SaveFailure, SecondFileCannotBeWritten) {
    windows.fakes.eventPump.whileServing = [&] {
        windows.writeFails = windows.written.size() == 1;
    };
    expectEnd(critical("Error", "Error saving tile image file to disk.  Possible cause is that "
                                "the disk is full.  Can not continue."),
              1);
}

TEST_F(SaveFailure, TileIsTooWideForItsFileType) {
    windows.owner.photo = std::make_shared<const Image>(patternedImage(65501, 1));
    windows.owner.tiles = {{0, 0, 65500, 0}};
    windows.owner.compensated = true;
    windows.owner.widthInches = 50;
    before = [&] { windows.dialog.opbJpg.userSelect(); };
    expectEnd(critical("Error", "Error saving tile image file to disk.  Possible cause is that "
                                "the disk is full.  Can not continue."));
}

void expectCanceledAfter(std::size_t tiles) {
    SaveWindows windows;
    windows.fakes.eventPump.whileServing = [&] {
        if (windows.written.size() + 1 == tiles) {
            windows.progress.cmdCancel.userClick();
        }
    };
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_EQ(windows.progress.curStatus, closeAtNextTick);
        EXPECT_TRUE(windows.progress.loaded());
        EXPECT_TRUE(windows.dialog.loaded());
        EXPECT_EQ(windows.progress.lblMsg.caption(), "canceling...");
    };
    windows.save();
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage(), critical("Canceled", "Canceled by user"));
    EXPECT_EQ(windows.written.size(), tiles);
    EXPECT_FALSE(windows.dialog.loaded());
    EXPECT_FALSE(windows.result.loaded());
    windows.fakes.clock.advance(1000);
    EXPECT_FALSE(windows.progress.loaded());
}

TEST(SaveRun, CanceledAtTheFirstTile) {
    expectCanceledAfter(1);
}

TEST(SaveRun, CanceledInTheMiddle) {
    expectCanceledAfter(2);
}

TEST(SaveRun, CanceledAtTheLastTileAfterItIsWritten) {
    expectCanceledAfter(4);
}

TEST(SaveRun, CancelClickedBetweenTilesIsSeenAfterTheNextOne) {
    SaveWindows windows;
    windows.fakes.eventPump.whileEventsRun = [&] {
        if (windows.written.size() == 1) {
            windows.progress.cmdCancel.userClick();
        }
    };
    windows.save();
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage().text, "Canceled by user");
    EXPECT_EQ(windows.written.size(), 2U);
}

TEST(SaveRun, CancelClickedWhileATileIsWrittenIsSeenWhenItIs) {
    SaveWindows windows;
    windows.whileWriting = [&] {
        if (windows.written.size() == 1) {
            windows.progress.cmdCancel.userClick();
        }
    };
    windows.save();
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage().text, "Canceled by user");
    EXPECT_EQ(windows.written.size(), 2U);
}

TEST(SaveRun, ACanceledRunDoesNotCancelTheNext) {
    SaveWindows windows;
    windows.fakes.eventPump.whileServing = [&] { windows.progress.cmdCancel.userClick(); };
    windows.save();
    windows.fakes.eventPump.whileServing = nullptr;
    windows.fakes.dialogs.answers = {Answer::yes}; // the folder is there already
    windows.save();                                // before the progress window's next tick
    EXPECT_EQ(windows.written.size(), 1U + 4U);
    EXPECT_TRUE(windows.result.visible());
}

} // namespace
} // namespace veldara::test
