// The file list: keys that come faster than photos load, letters, and changes in its folder.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

namespace {

using testing::HasSubstr;

// A stage with so many photos, "photo00.jpg" and on, that take a while to load.
class ManyPhotos {
  public:
    explicit ManyPhotos(int count) {
        for (int i = 0; i < count; ++i) {
            writeJpeg(stage.photos() / nameOf(i), 1600, 1200);
        }
        stage.start();
    }
    static std::string nameOf(int i) {
        return "photo" + std::string(i < 10 ? "0" : "") + std::to_string(i) + ".jpg";
    }
    void waitForPhoto(int index) {
        stage.waitFor("photo " + std::to_string(index) + " is shown", [index](frmMain& main) {
            return main.bImgSelected && main.lstFiles.listIndex() == index;
        });
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST(FileList, TenQuickKeysMoveTenFiles) {
    ManyPhotos many(13);
    many.stage.pickPhoto(ManyPhotos::nameOf(0)); // the window may not have the keyboard yet
    many.waitForPhoto(0);
    many.user.keys(WXK_DOWN, 10);
    many.waitForPhoto(10);
    EXPECT_EQ(many.user.text("frmMain", "lstFiles"), ManyPhotos::nameOf(10));
    many.user.keys(WXK_UP, 4);
    many.waitForPhoto(6);
    EXPECT_EQ(many.user.text("frmMain", "lstFiles"), ManyPhotos::nameOf(6));
}

TEST(FileList, TabIntoTheListChoosesNothing) {
    ManyPhotos many(2);
    many.user.onWindowThread([] { Driver::widget("frmMain", "cmbFileType")->SetFocus(); });
    many.user.key(WXK_TAB);
    EXPECT_TRUE(many.user.hasFocus("frmMain", "lstFiles"));
    EXPECT_EQ(many.stage.ask([](frmMain& main) { return main.lstFiles.listIndex(); }), -1);
    EXPECT_EQ(many.user.text("frmMain", "lstFiles"), "");
    EXPECT_FALSE(many.stage.ask([](frmMain& main) { return main.bImgSelected; }));
    many.user.key(WXK_DOWN);
    many.waitForPhoto(0);
}

TEST(FileList, LettersJumpToAName) {
    Stage stage;
    for (const char* name : {"apple.bmp", "banana.bmp", "berry.bmp", "cherry.bmp"}) {
        writeBitmap(stage.photos() / name, 60, 40, smoothColour);
    }
    stage.start();
    stage.user().key('C', wxMOD_ALT);
    stage.user().type("be");
    stage.waitFor("the berry is chosen",
                  [](frmMain& main) { return main.lstFiles.selectedText() == "berry.bmp"; });
    stage.user().pause(std::chrono::milliseconds(1100));
    stage.user().type("x"); // no such name
    EXPECT_EQ(stage.user().text("frmMain", "lstFiles"), "berry.bmp");
    stage.user().key(WXK_DOWN);
    stage.waitFor("the keys go on from there",
                  [](frmMain& main) { return main.lstFiles.selectedText() == "cherry.bmp"; });
}

TEST(FileList, FollowsItsFolder) {
    ManyPhotos many(2);
    many.stage.pickPhoto(ManyPhotos::nameOf(1));
    const auto photo = many.stage.ask([](frmMain& main) { return main.currentPhoto(); });
    writeBitmap(many.stage.photos() / "another.bmp", 60, 40, smoothColour);
    many.stage.waitFor("the new photo is listed", [](frmMain& main) {
        return main.lstFiles.count() == 3 && main.lstFiles.listIndex() == 2;
    });
    std::filesystem::remove(many.stage.photos() / ManyPhotos::nameOf(0));
    many.stage.waitFor("the deleted photo has gone", [](frmMain& main) {
        return main.lstFiles.count() == 2 && main.lstFiles.listIndex() == 1;
    });
    EXPECT_EQ(many.user.text("frmMain", "lstFiles"), ManyPhotos::nameOf(1));
    EXPECT_EQ(many.stage.ask([](frmMain& main) { return main.currentPhoto(); }), photo);
    many.user.key(WXK_F5);
    EXPECT_EQ(many.stage.ask([](frmMain& main) { return main.currentPhoto(); }), photo);
}

TEST(FileList, RecentPhotosAreOpenedFromTheMenu) {
    Stage stage;
    stage.home().addFolder("photos/summer");
    writeBitmap(stage.photos() / "winter.bmp", 60, 40, smoothColour);
    writeBitmap(stage.photos() / "summer" / "lake.bmp", 90, 40, smoothColour);
    stage.start();
    stage.pickPhoto("winter.bmp");
    stage.openFolder("summer");
    stage.pickPhoto("lake.bmp");
    EXPECT_THAT(stage.stored("recent_photos"), HasSubstr("winter.bmp"));
    stage.user().key('F', wxMOD_ALT);
    stage.user().key('R');
    stage.user().key('2');
    stage.waitFor("the first photo is back", [](frmMain& main) {
        return main.bImgSelected && main.lstFiles.selectedText() == "winter.bmp";
    });
    stage.waitForFolder("photos");
}

} // namespace

} // namespace veldara::test
