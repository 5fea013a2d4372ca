// What is dropped on the main window, or named when the program is started.
#include "main_fixture.h"

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OpeningAPath : public MainWindowTest {
  protected:
    // The one message box of a refusal; the photo that was there before is still there.
    void expectRefused(const std::string& text) {
        EXPECT_EQ(fakes.dialogs.onlyMessage(), critical("Invalid Image File Selected", text));
        EXPECT_TRUE(window->bImgSelected);
        EXPECT_EQ(window->lImgWidth, 3000);
        EXPECT_EQ(window->lstFiles.selectedText(), "photo.jpg");
        EXPECT_EQ(window->Dir1.path(), "/photos");
    }
};

TEST_F(OpeningAPath, PhotoIsChosenInItsFolderAndLoaded) {
    fakes.tree.addFile("/far/away/lake.tif");
    fakes.tree.addFile("/far/away/other.tif");
    sizes["lake.tif"] = {400, 300};
    startWithPhoto().openPath("/far/away/lake.tif");
    EXPECT_EQ(window->Dir1.path(), "/far/away");
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("lake.tif", "other.tif"));
    EXPECT_EQ(window->lstFiles.selectedText(), "lake.tif");
    EXPECT_EQ(loaded.back(), "/far/away/lake.tif");
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_EQ(window->lImgWidth, 400);
    EXPECT_EQ(storedText("last_folder"), "/far/away");
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(OpeningAPath, PhotoOfTheSameFolderNeedsNoNewFolder) {
    addPhoto("b.jpg", 400, 300);
    startWithPhoto().openPath("/photos/b.jpg");
    EXPECT_EQ(window->lstFiles.selectedText(), "b.jpg");
    EXPECT_EQ(window->lImgWidth, 400);
    EXPECT_FALSE(saved());
}

TEST_F(OpeningAPath, PhotoYoungerThanTheListIsFound) {
    startWithPhoto();
    addPhoto("new.jpg", 400, 300);
    window->openPath("/photos/new.jpg");
    EXPECT_EQ(window->lstFiles.selectedText(), "new.jpg");
    EXPECT_EQ(window->lImgWidth, 400);
}

TEST_F(OpeningAPath, TheFolderIsListedOnceWhetherItIsANewOneOrNot) {
    fakes.tree.addFile("/far/away/lake.tif");
    sizes["lake.tif"] = {400, 300};
    addPhoto("b.jpg", 400, 300);
    startWithPhoto();
    const auto objectsFor = [this](const std::string& path) { // each listing makes one
        const int before = fakes.fileSystem.objectsMade;
        window->openPath(path);
        return fakes.fileSystem.objectsMade - before;
    };
    const int inTheSameFolder = objectsFor("/photos/b.jpg");
    EXPECT_EQ(objectsFor("/far/away/lake.tif"), inTheSameFolder);
}

TEST_F(OpeningAPath, PhotoThatIsShownIsReadAgain) {
    startWithPhoto();
    sizes["photo.jpg"] = {400, 300};
    window->openPath("/photos/photo.jpg");
    EXPECT_EQ(window->lImgWidth, 400);
}

TEST_F(OpeningAPath, PhotoInTheRootIsOpened) {
    fakes.tree.addFile("/a.jpg");
    sizes["a.jpg"] = {400, 300};
    start().openPath("/a.jpg");
    EXPECT_EQ(window->Dir1.path(), "/");
    EXPECT_EQ(loaded.back(), "/a.jpg");
}

TEST_F(OpeningAPath, PhotoOnAnotherDriveChangesTheDrive) {
    fakes.drives.plug("/media/stick");
    fakes.tree.addFile("/media/stick/trip/a.jpg");
    sizes["a.jpg"] = {400, 300};
    start().openPath("/media/stick/trip/a.jpg");
    EXPECT_EQ(window->Drive1.drive(), "/media/stick");
    EXPECT_EQ(window->sCurDrive, "/media/stick");
    EXPECT_EQ(window->Dir1.path(), "/media/stick/trip");
    EXPECT_EQ(window->lImgWidth, 400);
}

TEST_F(OpeningAPath, FilterThatHidesThePhotoIsWidened) {
    addPhoto("a.bmp", 400, 300);
    start().cmbFileType.userSelect(1);
    window->openPath("/photos/a.bmp");
    EXPECT_EQ(window->cmbFileType.listIndex(), 0);
    EXPECT_EQ(window->lstFiles.selectedText(), "a.bmp");
}

TEST_F(OpeningAPath, FilterThatShowsThePhotoStays) {
    addPhoto("a.bmp", 400, 300);
    start().cmbFileType.userSelect(3);
    window->openPath("/photos/a.bmp");
    EXPECT_EQ(window->cmbFileType.listIndex(), 3);
    EXPECT_EQ(window->lstFiles.selectedText(), "a.bmp");
}

TEST_F(OpeningAPath, FolderIsOpened) {
    fakes.tree.addFile("/far/away/lake.tif");
    startWithPhoto().openPath("/far/away");
    EXPECT_EQ(window->Dir1.path(), "/far/away");
    EXPECT_THAT(window->lstFiles.items(), ElementsAre("lake.tif"));
    EXPECT_EQ(window->lstFiles.listIndex(), -1);
    EXPECT_FALSE(window->bImgSelected);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(OpeningAPath, SeparatorBehindAFolderIsNotPartOfIt) {
    fakes.tree.addFolder("/far/away");
    start().openPath("/far/away/");
    EXPECT_EQ(window->Dir1.path(), "/far/away");
}

TEST_F(OpeningAPath, FileThatIsNoPhotoIsRefused) {
    fakes.tree.addFile("/far/away/notes.text");
    startWithPhoto().openPath("/far/away/notes.text");
    expectRefused("The file \"notes.text\" can not be used: the names of image files end in .jpg, "
                  ".tif or .bmp.");
}

// Such a name never stands in the list, so that the photo could not be chosen there.
TEST_F(OpeningAPath, NameOfFourCharactersIsRefused) {
    addPhoto(".jpg", 400, 300);
    startWithPhoto().openPath("/photos/.jpg");
    expectRefused("The file \".jpg\" can not be used: the names of image files end in .jpg, "
                  ".tif or .bmp.");
}

TEST_F(OpeningAPath, MissingFileIsRefused) {
    startWithPhoto().openPath("/photos/gone.jpg");
    expectRefused("Could not read \"/photos/gone.jpg\": the file does not exist.");
}

TEST_F(OpeningAPath, FolderThatCannotBeReadIsRefused) {
    fakes.tree.addFile("/secret/a.jpg");
    fakes.tree.unreadable.insert("/secret");
    startWithPhoto().openPath("/secret/a.jpg");
    expectRefused("The folder \"/secret\" cannot be read.");
    fakes.dialogs.messages.clear();
    window->openPath("/secret");
    expectRefused("The folder \"/secret\" cannot be read.");
}

TEST_F(OpeningAPath, DriveThatCannotBeReadIsReportedOnce) {
    fakes.drives.plug("/media/stick");
    fakes.tree.addFile("/media/stick/trip/a.jpg");
    startWithPhoto();
    fakes.drives.takeMediumOut("/media/stick");
    window->openPath("/media/stick/trip/a.jpg");
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Drive", "The drive you chose could not be accessed."));
    EXPECT_EQ(window->Drive1.drive(), "/");
    EXPECT_EQ(window->Dir1.path(), "/photos");
    EXPECT_THAT(loaded, ElementsAre("/photos/photo.jpg"));
}

TEST_F(OpeningAPath, MissingFileSystemObjectIsReported) {
    startWithPhoto();
    fakes.fileSystem.faults.creationFails = true;
    window->openPath("/photos/photo.jpg");
    EXPECT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(OpeningAPath, FolderWhoseFilesCannotBeListedIsReported) {
    startWithPhoto();
    fakes.fileSystem.faults.listingFails = true;
    window->openPath("/photos/photo.jpg");
    EXPECT_EQ(
        fakes.dialogs.onlyMessage(),
        critical("Invalid Image File Selected",
                 "Could not read \"/photos/photo.jpg\": it is not in the list of its folder."));
}

TEST_F(OpeningAPath, BrokenPhotoIsReportedLikeOneThatWasClicked) {
    fakes.tree.addFile("/photos/broken.jpg");
    start().openPath("/photos/broken.jpg");
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Image File Selected", "The file \"broken.jpg\" is no picture."));
    EXPECT_EQ(window->picCur.drawing(), Drawing::error);
}

TEST_F(OpeningAPath, TheLaterOfTwoPhotosWins) {
    addPhoto("first.jpg", 400, 300);
    fakes.tree.addFile("/far/away/second.jpg");
    sizes["second.jpg"] = {500, 300};
    start();
    whileLoading = [this](const std::string& name) {
        if (name == "first.jpg") {
            window->openPath("/far/away/second.jpg");
        }
    };
    window->openPath("/photos/first.jpg");
    EXPECT_EQ(window->lstFiles.selectedText(), "second.jpg");
    EXPECT_EQ(window->lImgWidth, 500);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

class OpeningALetteredPath : public LetteredMainWindowTest {};

TEST_F(OpeningALetteredPath, PhotoIsChosenInItsFolder) {
    fakes.drives.plug("d");
    fakes.tree.addFile(R"(d:\trip\a.jpg)");
    // what the loader of the fakes takes for the name: only one of the two systems parts it so
    sizes["a.jpg"] = sizes[R"(d:\trip\a.jpg)"] = {400, 300};
    start().openPath(R"(d:\trip\a.jpg)");
    EXPECT_EQ(window->Drive1.drive(), "d");
    EXPECT_EQ(window->lstFiles.selectedText(), "a.jpg");
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(OpeningALetteredPath, PhotoOfAnotherMachineIsRefused) {
    fakes.tree.addFile(R"(\\server\share\a.jpg)");
    start().openPath(R"(\\server\share\a.jpg)");
    EXPECT_EQ(fakes.dialogs.onlyMessage(),
              critical("Invalid Image File Selected",
                       R"(The folder "\\server\share" lies on none of the drives in the list.)"));
    EXPECT_THAT(loaded, IsEmpty());
}

} // namespace
} // namespace veldara::test
