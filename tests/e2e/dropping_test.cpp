// Files and folders dragged from the window of another program.
#include "e2e/file_manager.h"
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "platform/text/path_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

namespace {

using testing::HasSubstr;

TEST(Browsing, PhotoIsDroppedOnThePreview) {
    Stage stage;
    const std::filesystem::path away = textPath(stage.home().addFolder("far/Fotos März"));
    writeBitmap(away / "lake.bmp", 90, 30, smoothColour);
    writeBitmap(stage.photos() / "other.bmp", 300, 200, smoothColour);
    stage.start();
    stage.pickPhoto("other.bmp");
    FileManager files(stage.user(), away / "lake.bmp");
    files.dropOn("frmMain", "picCur");
    stage.waitFor("the dropped photo is shown",
                  [](frmMain& main) { return main.bImgSelected && main.lImgWidth == 90; });
    EXPECT_EQ(stage.user().text("frmMain", "lstFiles"), "lake.bmp");
    EXPECT_TRUE(std::filesystem::equivalent(
        stage.ask([](frmMain& main) { return textPath(main.Dir1.path()); }), away));
    EXPECT_TRUE(std::filesystem::exists(away / "lake.bmp")) << "it was not moved away";
}

TEST(Browsing, FolderIsDroppedOnTheFileList) {
    Stage stage;
    const std::filesystem::path away = textPath(stage.home().addFolder("far/away"));
    writeBitmap(away / "lake.bmp", 90, 30, smoothColour);
    stage.start();
    FileManager files(stage.user(), away);
    files.dropOn("frmMain", "lstFiles");
    stage.waitForFolder("away");
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.lstFiles.count(); }), 1);
}

TEST(Browsing, WhatIsNoPhotoIsRefusedWhenItIsDropped) {
    Stage stage;
    stage.home().addFile("photos/notes.text", "words");
    stage.start();
    FileManager files(stage.user(), stage.photos() / "notes.text");
    files.dropOn("frmMain", "picCur");
    EXPECT_THAT(stage.user().waitForMessage(), HasSubstr("notes.text"));
    stage.user().answerByKey(Answer::ok); // the window with the message has the keyboard
}

TEST(Browsing, NothingCanBeDroppedBehindADialog) {
    Stage stage;
    const std::filesystem::path away = textPath(stage.home().addFolder("far/away"));
    stage.start();
    Driver& user = stage.user();
    user.clickMenu("frmMain", 3, 1);
    user.waitForWindow("frmAbout");
    {
        FileManager files(user, away);
        files.dropOn("frmMain", "lstFiles");
        user.pause(std::chrono::milliseconds(300));
    }
    EXPECT_EQ(textPath(stage.ask([](frmMain& main) { return main.Dir1.path(); })), stage.photos());
    user.click("frmAbout", "cmdOk");
    user.waitForWindowToGo("frmAbout");
}

} // namespace

} // namespace veldara::test
