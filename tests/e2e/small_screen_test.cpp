// On a screen of 640 x 480: what a window cannot show is scrolled to by the keyboard.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <gtest/gtest.h>
#include <wx/display.h>

namespace veldara::test {

namespace {

class SmallScreen : public testing::Test {
  protected:
    SmallScreen() {
        writeBitmap(stage.photos() / "wide.bmp", 1200, 600, smoothColour);
        stage.start();
        stage.pickPhoto("wide.bmp");
    }

    // On the screen, in its window, and not scrolled away. For the window thread only.
    static bool inSight(const std::string& window, const std::string& name) {
        const wxWindow* widget = Driver::widget(window, name);
        const wxRect place = widget->GetScreenRect();
        bool all = wxDisplay(0u).GetGeometry().Contains(place);
        for (const wxWindow* around = widget->GetParent(); around != nullptr && all;
             around = around->IsTopLevel() ? nullptr : around->GetParent()) {
            all = around->GetScreenRect().Contains(place);
        }
        return all;
    }

    // Goes to the widget with Tab, and waits until it is seen.
    void tabTo(const std::string& window, const std::string& name) {
        for (int i = 0; i < 40 && user.focused() != name; ++i) {
            user.key(WXK_TAB);
        }
        ASSERT_EQ(user.focused(), name);
        user.waitUntil(name + " is in sight", [&] { return inSight(window, name); });
    }

    // Opens a dialog and works its last button with the keyboard; Escape closes it another time.
    void visit(const std::string& window, const std::function<void()>& open,
               const std::string& button) {
        open();
        user.waitForWindow(window);
        tabTo(window, button);
        user.key(WXK_SPACE);
        user.waitForWindowToGo(window);
        user.waitForWindow("frmMain");
        open();
        user.waitForWindow(window);
        user.key(WXK_ESCAPE);
        user.waitForWindowToGo(window);
        user.waitForWindow("frmMain");
    }

    std::function<void()> byLetter(int letter) {
        return [this, letter] { user.key(letter, wxMOD_ALT); };
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST_F(SmallScreen, EveryButtonOfTheMainWindowIsReached) {
    tabTo("frmMain", "cmdSaveNow");
    tabTo("frmMain", "cmdQuit");
    tabTo("frmMain", "cmdLargePreview");
}

TEST_F(SmallScreen, ThePaperDialogIsWorked) {
    visit("frmTileSize", byLetter('E'), "cmdCancel");
}

TEST_F(SmallScreen, TheCalibrationDialogIsWorked) {
    visit("frmBtm", byLetter('I'), "cmdOk");
}

TEST_F(SmallScreen, TheSaveDialogIsWorked) {
    visit("frmSaveTiles", byLetter('S'), "cmdClose");
}

TEST_F(SmallScreen, TheSheetsWindowIsWorked) {
    visit(
        "frmSheets", [this] { user.key('S', wxMOD_CONTROL | wxMOD_SHIFT); }, "cmdClose");
}

TEST_F(SmallScreen, ThePosterSizeDialogIsWorked) {
    visit(
        "frmPosterSize", [this] { user.clickMenu("frmMain", 1, 2); }, "cmdCancel");
}

} // namespace

} // namespace veldara::test
