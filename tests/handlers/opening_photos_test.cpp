// "Open Photo..." and "Open Recent" in the File menu.
#include "main_fixture.h"

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OpeningPhotos : public MainWindowTest {};

TEST_F(OpeningPhotos, ChosenFileIsOpenedLikeADroppedOne) {
    addPhoto("photo.jpg", 100, 100);
    fakes.tree.addFolder("/home/user");
    store("last_folder", "/home/user");
    start();
    fakes.dialogs.openFilePaths.push_back("/photos/photo.jpg");
    window->mnuOpenPhoto.userClick();
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_EQ(window->Dir1.path(), "/photos");
    EXPECT_EQ(window->lstFiles.selectedText(), "photo.jpg");
    ASSERT_EQ(fakes.dialogs.openRequests.size(), 1U);
    EXPECT_EQ(fakes.dialogs.openRequests[0].folder, "/home/user");
}

TEST_F(OpeningPhotos, CancelChangesNothing) {
    startWithPhoto().mnuOpenPhoto.userClick();
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_EQ(loaded.size(), 1U);
}

TEST_F(OpeningPhotos, LoadedPhotosAreRemembered) {
    addPhoto("a.jpg", 100, 100);
    addPhoto("b.jpg", 100, 100);
    start();
    EXPECT_FALSE(window->mnuOpenRecent.enabled());
    clickFile("a.jpg");
    clickFile("b.jpg");
    EXPECT_THAT(window->mnuOpenRecent.items(), ElementsAre("/photos/b.jpg", "/photos/a.jpg"));
    EXPECT_TRUE(window->mnuOpenRecent.enabled());
    start();
    EXPECT_THAT(window->mnuOpenRecent.items(), ElementsAre("/photos/b.jpg", "/photos/a.jpg"));
}

TEST_F(OpeningPhotos, PhotoThatCannotBeReadIsNotRemembered) {
    fakes.tree.addFile(pathOf("bad.jpg"));
    start();
    clickFile("bad.jpg");
    EXPECT_THAT(window->mnuOpenRecent.items(), IsEmpty());
}

TEST_F(OpeningPhotos, RecentPhotoIsOpenedInItsFolder) {
    addPhoto("a.jpg", 100, 100);
    fakes.tree.addFolder("/home/user");
    startWithPhoto();
    clickFile("a.jpg");
    window->Dir1.setPath("/home/user");
    EXPECT_FALSE(window->bImgSelected);
    window->mnuOpenRecent.userOpen();
    window->mnuOpenRecent.userClick(1);
    EXPECT_EQ(window->Dir1.path(), "/photos");
    EXPECT_EQ(window->lstFiles.selectedText(), "photo.jpg");
    EXPECT_TRUE(window->bImgSelected);
}

TEST_F(OpeningPhotos, MissingPhotosAreLeftOutAndComeBack) {
    addPhoto("a.jpg", 100, 100);
    startWithPhoto();
    clickFile("a.jpg");
    fakes.tree.remove(pathOf("a.jpg"));
    window->mnuOpenRecent.userOpen();
    EXPECT_THAT(window->mnuOpenRecent.items(), ElementsAre("/photos/photo.jpg"));
    fakes.tree.addFile(pathOf("a.jpg"));
    window->mnuOpenRecent.userOpen();
    EXPECT_THAT(window->mnuOpenRecent.items(), ElementsAre("/photos/a.jpg", "/photos/photo.jpg"));
}

TEST_F(OpeningPhotos, WithoutARegistryTheyAreRememberedForTheRun) {
    fakes.registry.createFails = 5;
    fakes.registry.setFails = 5;
    addPhoto("a.jpg", 100, 100);
    start();
    window->openPath(pathOf("a.jpg"));
    EXPECT_THAT(window->mnuOpenRecent.items(), ElementsAre("/photos/a.jpg"));
    EXPECT_TRUE(fakes.dialogs.quiet());
}

} // namespace
} // namespace veldara::test
