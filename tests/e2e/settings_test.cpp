// What the program remembers when it is closed, and what it forgets when it is left by Exit.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <fstream>

#include <gtest/gtest.h>

namespace veldara::test {

namespace {

TEST(Settings, AreBackAfterClosingAndStartingAgain) {
    Stage stage;
    stage.home().addFolder("photos/summer");
    stage.store("paperRegLine", letterLine);
    stage.start();
    Driver& user = stage.user();
    user.choose("frmMain", "cmbTilesWide", 4);
    user.choose("frmMain", "cmbTilesHigh", 3);
    user.click("frmMain", "chkPreviewTiles");
    stage.openFolder("summer");
    user.closeByCloseBox("frmMain");
    stage.waitForEnd();
    stage.stop();
    EXPECT_EQ(stage.stored("prefs_numTiles"), "w04h03");

    stage.start();
    EXPECT_EQ(user.text("frmMain", "cmbTilesWide"), "5");
    EXPECT_EQ(user.text("frmMain", "cmbTilesHigh"), "4");
    EXPECT_FALSE(user.isChecked("frmMain", "chkPreviewTiles"));
    EXPECT_EQ(user.text("frmMain", "lblPaperName"), "Letter 8.5\" x 11\"");
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.Dir1.path(); }),
              stage.home() / "photos/summer");
}

TEST(Settings, AreNotSavedByExit) {
    Stage stage;
    stage.store("prefs_numTiles", "w02h02");
    stage.start();
    Driver& user = stage.user();
    user.choose("frmMain", "cmbTilesWide", 4);
    user.click("frmMain", "cmdQuit");
    stage.waitForEnd();
    stage.stop();
    EXPECT_EQ(stage.stored("prefs_numTiles"), "w02h02");

    stage.start();
    EXPECT_EQ(user.text("frmMain", "cmbTilesWide"), "3");
}

TEST(Settings, AreNotSavedByTheMenusExit) {
    Stage stage;
    stage.store("prefs_numTiles", "w02h02");
    stage.start();
    stage.user().choose("frmMain", "cmbTilesHigh", 5);
    stage.user().key('F', wxMOD_ALT);
    stage.user().key('X');
    stage.waitForEnd();
    stage.stop();
    EXPECT_EQ(stage.stored("prefs_numTiles"), "w02h02");
}

#ifndef __WXMSW__
TEST(Settings, TheFirstStartIsInThePicturesFolder) {
    Stage stage;
    const std::string pictures = stage.home().addFolder("My Pictures");
    writeBitmap(stage.home().path() / "My Pictures" / "a.bmp", 60, 40, smoothColour);
    stage.home().addFolder("Pictures"); // another one that only looks like it
    stage.home().addFolder(".config");
    std::ofstream(stage.home().path() / ".config" / "user-dirs.dirs")
        << "XDG_PICTURES_DIR=\"$HOME/My Pictures\"\n";
    stage.startAsStored();
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.Dir1.path(); }), pictures);
    stage.pickPhoto("a.bmp");
}

TEST(Settings, TheFirstStartIsInTheHomeFolderWhereThereAreNoPictures) {
    Stage stage;
    stage.startAsStored();
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.Dir1.path(); }), stage.home().text());
}
#endif

} // namespace

} // namespace veldara::test
