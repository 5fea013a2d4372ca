// The dialog that chooses the poster by its size, by the mouse and by the keyboard alone.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/listbox.h>

namespace veldara::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* dialog = "frmPosterSize";

// A photo of 3 to 2 and tiles of 6 by 9 inches: sheets on their side show all of it.
class WishedPoster {
  public:
    WishedPoster() {
        writeBitmap(stage.photos() / "wide.bmp", 1200, 800, smoothColour);
        stage.store("paperRegLine", letterLine);
        stage.store("prefs_numTiles", "w02h02");
        stage.start();
        stage.pickPhoto("wide.bmp");
    }

    void open() {
        user.clickMenu("frmMain", 1, 2);
        user.waitForWindow(dialog);
    }

    int chosen() {
        return user.onWindowThread([] {
            const auto* list = dynamic_cast<wxListBox*>(Driver::widget(dialog, "lstChoices"));
            return list == nullptr ? wxNOT_FOUND : list->GetSelection();
        });
    }

    void tabTo(const std::string& name) {
        for (int i = 0; i < 10 && !user.hasFocus(dialog, name); ++i) {
            user.key(WXK_TAB);
        }
        ASSERT_TRUE(user.hasFocus(dialog, name));
    }

    std::string choice() { return user.text(dialog, "lstChoices"); }

    std::string tiles() {
        return user.text("frmMain", "cmbTilesWide") + " x " + user.text("frmMain", "cmbTilesHigh");
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST(PosterSize, ByMouse) {
    WishedPoster poster;
    poster.open();
    EXPECT_EQ(poster.user.title(dialog), "Choose by Poster Size");
    poster.user.click(dialog, "txtWidth");
    poster.user.retype("18");
    EXPECT_EQ(poster.user.text(dialog, "txtHeight"), "12");
    EXPECT_THAT(poster.choice(), StartsWith("1.  2 x 2 sheets, on their side: 18 x 12 inches"));
    EXPECT_THAT(poster.user.text(dialog, "lblResult"), HasSubstr("4 sheets"));

    // The second picture of the first row stands for the second line.
    const wxSize gallery = poster.user.sizeOf(dialog, "picChoices");
    poster.user.clickAt(dialog, "picChoices", {gallery.x * 3 / 8, gallery.y / 4});
    EXPECT_EQ(poster.chosen(), 1);
    EXPECT_THAT(poster.choice(), StartsWith("2.  "));
    poster.user.clickListEntry(dialog, "lstChoices", poster.user.onWindowThread([] {
        const auto* list = dynamic_cast<wxListBox*>(Driver::widget(dialog, "lstChoices"));
        return list == nullptr ? std::string() : list->GetString(0).ToStdString();
    }));
    EXPECT_EQ(poster.chosen(), 0);
    poster.user.click(dialog, "cmdOk");
    poster.user.waitForWindowToGo(dialog);
    EXPECT_EQ(poster.tiles(), "2 x 2");
    EXPECT_TRUE(poster.user.isChecked("frmMain", "chkRotateTiles"));
    EXPECT_EQ(poster.user.text("frmMain", "lblFinalSize"), "18 x 12 inches");
}

TEST(PosterSize, UprightSheetsTakeTheLockOff) {
    WishedPoster poster;
    poster.user.click("frmMain", "chkLockWh");
    poster.open();
    poster.user.click(dialog, "chkOnTheirSide");
    poster.user.click(dialog, "txtWidth");
    poster.user.retype("18");
    EXPECT_THAT(poster.choice(), StartsWith("1.  3 x 1 sheets: 18 x 9 inches"));
    poster.user.click(dialog, "cmdOk");
    poster.user.waitForWindowToGo(dialog);
    EXPECT_EQ(poster.tiles(), "3 x 1");
    EXPECT_FALSE(poster.user.isChecked("frmMain", "chkLockWh"));
    EXPECT_FALSE(poster.user.isChecked("frmMain", "chkRotateTiles"));
}

TEST(PosterSize, ByKeyboard) {
    WishedPoster poster;
    poster.open();
    poster.user.key('H', wxMOD_ALT);
    EXPECT_TRUE(poster.user.isChecked(dialog, "opbHeight"));
    poster.tabTo("txtHeight"); // where a group of buttons is one stop, others come before it
    poster.user.retype("12");
    EXPECT_EQ(poster.user.text(dialog, "txtWidth"), "18");
    EXPECT_THAT(poster.choice(), StartsWith("1.  2 x 2 sheets, on their side"));
    poster.tabTo("lstChoices");
    poster.user.key(WXK_DOWN);
    EXPECT_EQ(poster.chosen(), 1);
    poster.user.key(WXK_UP);
    EXPECT_EQ(poster.chosen(), 0);
    poster.user.key('O', wxMOD_ALT);
    poster.user.waitForWindowToGo(dialog);
    EXPECT_EQ(poster.tiles(), "2 x 2");
    EXPECT_TRUE(poster.user.isChecked("frmMain", "chkRotateTiles"));

    poster.open();
    poster.user.key('L', wxMOD_ALT);
    EXPECT_TRUE(poster.user.isChecked(dialog, "opbQuality"));
    poster.user.key('A', wxMOD_ALT);
    EXPECT_TRUE(poster.user.isChecked(dialog, "opbAnyPaper"));
    EXPECT_THAT(poster.choice(), HasSubstr(", Good, "));
    poster.user.key(WXK_ESCAPE);
    poster.user.waitForWindowToGo(dialog);
    EXPECT_EQ(poster.tiles(), "2 x 2") << "nothing was accepted";

    poster.open();
    poster.tabTo("txtHeight");
    poster.user.retype("25");
    poster.user.key(WXK_RETURN);
    poster.user.waitForWindowToGo(dialog);
    EXPECT_NE(poster.tiles(), "2 x 2") << "Enter accepts";
}

TEST(PosterSize, AWishThatCannotBeHadSaysWhy) {
    WishedPoster poster;
    poster.open();
    poster.user.click(dialog, "txtWidth");
    poster.user.retype("1000");
    EXPECT_THAT(poster.user.text(dialog, "lblResult"),
                HasSubstr("25 by 25 sheets are too few for that"));
    EXPECT_FALSE(poster.user.isEnabled(dialog, "cmdOk"));
    poster.user.click(dialog, "cmdCancel");
    poster.user.waitForWindowToGo(dialog);
    EXPECT_EQ(poster.tiles(), "3 x 3") << "as before";
}

} // namespace
} // namespace veldara::test
