// Finding a photo, with the mouse and with the keyboard alone.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef __linux__
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace veldara::test {

namespace {

using testing::HasSubstr;

#ifdef __linux__
// Whether the thread opens folders without regard to their rights, as an administrator's may.
void disregardRights(bool disregard) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct sets[2] = {};
    syscall(SYS_capget, &header, sets);
    const std::uint32_t rights =
        (1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH) & sets[0].permitted;
    sets[0].effective = disregard ? sets[0].effective | rights : sets[0].effective & ~rights;
    syscall(SYS_capset, &header, sets);
}

// The window thread without what an administrator may do.
class OrdinaryUser {
  public:
    explicit OrdinaryUser(Driver& user) : user_(user) {
        user_.onWindowThread([] { disregardRights(false); });
    }
    ~OrdinaryUser() {
        try {
            user_.onWindowThread([] { disregardRights(true); });
        } catch (...) {
            std::abort(); // the tests behind it would run without the rights
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    Driver& user_;
};

TEST(Browsing, AFolderWithoutRightsIsEnteredAndShowsNothing) {
    namespace fs = std::filesystem;
    Stage stage;
    stage.home().addFolder("photos/private/inner");
    writeBitmap(stage.photos() / "a.bmp", 60, 40, smoothColour);
    writeBitmap(stage.photos() / "private" / "b.bmp", 60, 40, smoothColour);
    stage.start();
    stage.pickPhoto("a.bmp");
    const OrdinaryUser ordinary(stage.user());
    fs::permissions(stage.photos() / "private", fs::perms::none);
    stage.openFolder("private");
    stage.waitFor("no file is listed", [](frmMain& main) { return main.lstFiles.count() == 0; });
    const auto below = [](frmMain& main) {
        return static_cast<int>(main.Dir1.entries().size()) - 1 - main.Dir1.currentEntry();
    };
    EXPECT_EQ(stage.ask(below), 0);
    EXPECT_FALSE(stage.user().isShown("message"));
    EXPECT_FALSE(stage.user().isEnabled("frmMain", "cmdSaveNow"));
    stage.openFolder("photos");
    fs::permissions(stage.photos() / "private", fs::perms::owner_all);
    stage.pickPhoto("a.bmp");
    stage.openFolder("private");
    EXPECT_EQ(stage.ask(below), 1);
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.lstFiles.count(); }), 1);
}
#endif

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

TEST(Browsing, AChosenPhotoIsReadAgainByAnotherClick) {
    Stage stage;
    std::ofstream(stage.photos() / "wide.bmp") << "this is no photo";
    stage.start();
    Driver& user = stage.user();
    user.clickListEntry("frmMain", "lstFiles", "wide.bmp");
    EXPECT_THAT(user.waitForMessage(), HasSubstr("wide.bmp"));
    user.answerByMouse(Answer::ok);
    user.waitForWindow("frmMain");
    writeBitmap(stage.photos() / "wide.bmp", 60, 40, smoothColour);
    user.clickListEntry("frmMain", "lstFiles", "wide.bmp");
    stage.waitFor("the photo is loaded", [](frmMain& main) { return main.bImgSelected; });
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
