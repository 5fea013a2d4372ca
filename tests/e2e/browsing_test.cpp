// Finding a photo, with the mouse and with the keyboard alone.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

namespace {

using testing::HasSubstr;

TEST(Browsing, FolderAndPhotoArePickedByClicking) {
    Stage stage;
    stage.home().addFolder("photos/summer");
    writeBitmap(stage.photos() / "summer" / "lake.bmp", 300, 200, smoothColour);
    stage.start();
    Driver& user = stage.user();
    EXPECT_EQ(user.title("frmMain"), "Veldara v" VELDARA_VERSION);
    EXPECT_FALSE(user.isEnabled("frmMain", "cmdSaveNow"));
    EXPECT_FALSE(user.isEnabled("frmMain", "cmdLargePreview"));

    stage.openFolder("summer");
    stage.pickPhoto("lake.bmp");

    EXPECT_TRUE(user.isEnabled("frmMain", "cmdSaveNow"));
    EXPECT_TRUE(user.isEnabled("frmMain", "cmdLargePreview"));
    EXPECT_EQ(user.text("frmMain", "lblMPixVal"), "0.06");
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.lImgWidth; }), 300);
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.lImgHeight; }), 200);
    EXPECT_EQ(stage.stored("last_folder"), stage.home() / "photos/summer");
}

TEST(Browsing, TheListShowsTheFoldersAbove) {
    Stage stage;
    stage.home().addFolder("photos/summer/beach");
    stage.start();
    stage.openFolder("summer");
    stage.openFolder("photos");
    EXPECT_TRUE(std::filesystem::equivalent(
        stage.ask([](frmMain& main) { return main.Dir1.path(); }), stage.photos()));
}

TEST(Browsing, PhotoIsPickedByKeyboardAlone) {
    Stage stage;
    writeBitmap(stage.photos() / "a.bmp", 60, 40, smoothColour);
    writeBitmap(stage.photos() / "b.bmp", 90, 30, smoothColour);
    stage.start();
    Driver& user = stage.user();
    user.key('C', wxMOD_ALT);
    EXPECT_TRUE(user.hasFocus("frmMain", "lstFiles"));
    user.key(WXK_HOME);
    user.key(WXK_DOWN);
    stage.waitFor("the second photo is shown", [](frmMain& main) {
        return main.bImgSelected && main.lstFiles.listIndex() == 1 && main.lImgWidth == 90;
    });
    EXPECT_EQ(user.text("frmMain", "lstFiles"), "b.bmp");
    EXPECT_TRUE(user.isEnabled("frmMain", "cmdSaveNow"));
}

TEST(Browsing, FolderIsOpenedByKeyboardAlone) {
    Stage stage;
    stage.home().addFolder("photos/summer");
    stage.start();
    Driver& user = stage.user();
    user.onWindowThread([] { Driver::widget("frmMain", "Dir1")->SetFocus(); });
    user.key(WXK_DOWN);
    user.key(WXK_RETURN);
    stage.waitForFolder("summer");
    user.key(WXK_BACK);
    stage.waitForFolder("photos");
}

TEST(Browsing, BrokenPhotoIsReportedAndTheWindowStaysUsable) {
    Stage stage;
    std::ofstream(stage.photos() / "broken.jpg") << "this is no photo";
    writeBitmap(stage.photos() / "good.bmp", 60, 40, smoothColour);
    stage.start();
    Driver& user = stage.user();
    user.clickListEntry("frmMain", "lstFiles", "broken.jpg");
    EXPECT_THAT(user.waitForMessage(), HasSubstr("broken.jpg"));
    user.answerByMouse(Answer::ok);
    EXPECT_FALSE(user.isEnabled("frmMain", "cmdSaveNow"));
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.picCur.drawing(); }), Drawing::error);

    stage.pickPhoto("good.bmp");
    EXPECT_TRUE(user.isEnabled("frmMain", "cmdSaveNow"));
}

TEST(Browsing, DesktopAndDocumentsButtonsGoThere) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    const std::string start = stage.ask([](frmMain& main) { return main.Dir1.path(); });
    user.click("frmMain", "cmdDesktop");
    const std::string desktop = stage.ask([](frmMain& main) { return main.Dir1.path(); });
    EXPECT_NE(desktop, start);
    user.click("frmMain", "cmdMyDoc");
    const std::string documents = stage.ask([](frmMain& main) { return main.Dir1.path(); });
    EXPECT_NE(documents, start);
    EXPECT_NE(documents, desktop);
}

TEST(Browsing, FilterIsChosenInTheDropDownList) {
    Stage stage;
    writeBitmap(stage.photos() / "a.bmp", 60, 40, smoothColour);
    stage.home().addFile("photos/notes.text", "words");
    stage.start();
    Driver& user = stage.user();
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.lstFiles.count(); }), 1);
    user.choose("frmMain", "cmbFileType", 1);
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.lstFiles.count(); }), 0);
    user.choose("frmMain", "cmbFileType", 4);
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.lstFiles.count(); }), 2);
}

TEST(Browsing, AFilterWithoutThePhotoLetsItGoAndAnotherKeepsIt) {
    Stage stage;
    writeBitmap(stage.photos() / "a.bmp", 60, 40, smoothColour);
    stage.start();
    stage.pickPhoto("a.bmp");
    Driver& user = stage.user();
    user.choose("frmMain", "cmbFileType", 4); // all files
    EXPECT_EQ(user.text("frmMain", "lstFiles"), "a.bmp");
    EXPECT_TRUE(user.isEnabled("frmMain", "cmdSaveNow"));
    user.choose("frmMain", "cmbFileType", 1);
    stage.waitFor("the photo has gone",
                  [](frmMain& main) { return !main.bImgSelected && main.lstFiles.count() == 0; });
    EXPECT_FALSE(user.isEnabled("frmMain", "cmdSaveNow"));
    EXPECT_FALSE(user.isEnabled("frmMain", "cmdLargePreview"));
}

} // namespace

} // namespace veldara::test
