// The window "Sheets for Printing", opened from the button and from the menu's key, and its
// pictures.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <gtest/gtest.h>
#include <wx/choice.h>

namespace veldara::test {
namespace {

TEST(SheetsWindow, OpensForAPhotoAndRemembersTheChoices) {
    Stage stage;
    Driver& user = stage.user();
    writeBitmap(stage.photos() / "square.bmp", 600, 600, smoothColour);
    stage.store("paperRegLine", letterLine);
    stage.store("prefs_numTiles", "w02h01");
    stage.start();
    EXPECT_FALSE(user.isEnabled("frmMain", "cmdSheets"));
    stage.pickPhoto("square.bmp");
    user.click("frmMain", "cmdSheets");
    user.waitForWindow("frmSheets");
    EXPECT_EQ(user.title("frmSheets"), "Sheets for Printing");
    EXPECT_EQ(user.text("frmSheets", "cmbShown"), "Guide");
    user.click("frmSheets", "cmdNext");
    user.waitUntil("the first sheet is shown", [] {
        const auto* shown = dynamic_cast<wxChoice*>(Driver::widget("frmSheets", "cmbShown"));
        return shown != nullptr && shown->GetStringSelection() == "Sheet 1: row 1, column 1";
    });
    user.click("frmSheets", "chkLabels");
    EXPECT_FALSE(user.isChecked("frmSheets", "chkLabels"));
    user.click("frmSheets", "cmdClose");
    user.waitForWindowToGo("frmSheets");
    EXPECT_EQ(stage.stored("sheet_labels"), "0");
}

} // namespace
} // namespace veldara::test
