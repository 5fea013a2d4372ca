// On the smallest usual screen, and with large text on a usual one, every window shows all that it
// holds: nothing is cut, nothing lies upon another, nothing has to be scrolled to.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <vector>

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dcclient.h>
#include <wx/display.h>
#include <wx/listbox.h>
#include <wx/radiobut.h>
#include <wx/scrolwin.h>
#include <wx/stattext.h>

namespace veldara::test {

namespace {

class Fitting : public testing::Test {
  protected:
    Fitting() {
        writeBitmap(stage.photos() / "wide.bmp", 1200, 600, smoothColour);
        stage.store("paperRegLine", letterLine);
        stage.store("prefs_numTiles", "w02h01");
        stage.start();
        stage.pickPhoto("wide.bmp");
    }

    static void expectRoomForText(wxWindow& widget, const wxString& text) {
        wxClientDC dc(&widget);
        dc.SetFont(widget.GetFont());
        const wxSize needed = dc.GetMultiLineTextExtent(text);
        const wxSize room = widget.GetClientSize();
        EXPECT_LE(needed.x, room.x) << widget.GetName() << ": " << text;
        EXPECT_LE(needed.y, room.y + 1) << widget.GetName() << ": " << text;
    }

    static void expectNothingCut(wxWindow& parent) {
        std::vector<wxWindow*> before;
        for (wxWindow* one : parent.GetChildren()) {
            if (one->IsTopLevel() || !one->IsShown()) {
                continue;
            }
            for (const wxWindow* other : before) {
                EXPECT_FALSE(one->GetRect().Intersects(other->GetRect()))
                    << one->GetName().ToStdString() << " on " << other->GetName().ToStdString();
            }
            before.push_back(one);
            EXPECT_TRUE(wxRect(parent.GetSize()).Contains(one->GetRect()))
                << one->GetName().ToStdString() << " in " << parent.GetName().ToStdString();
            if (const auto* area = dynamic_cast<const wxScrolledWindow*>(one)) {
                EXPECT_LE(area->GetVirtualSize().x, area->GetClientSize().x);
                EXPECT_LE(area->GetVirtualSize().y, area->GetClientSize().y);
            }
            if (const auto* text = dynamic_cast<const wxStaticText*>(one)) {
                expectRoomForText(*one, text->GetLabelText());
            }
            if (const auto* list = dynamic_cast<const wxListBox*>(one)) {
                for (const wxString& entry : list->GetStrings()) {
                    expectRoomForText(*one, entry);
                }
            }
            const bool hasOwnText = dynamic_cast<const wxButton*>(one) != nullptr ||
                                    dynamic_cast<const wxCheckBox*>(one) != nullptr ||
                                    dynamic_cast<const wxRadioButton*>(one) != nullptr;
            if (hasOwnText) {
                expectRoomForText(*one, static_cast<wxControl*>(one)->GetLabelText());
            }
            expectNothingCut(*one);
        }
    }

    void expectFits(const std::string& name) {
        user.waitForWindow(name);
        user.onWindowThread([&] {
            SCOPED_TRACE(name);
            wxTopLevelWindow& window = *Driver::window(name);
            EXPECT_TRUE(wxDisplay(0u).GetGeometry().Contains(window.GetRect()));
            expectNothingCut(window);
        });
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST_F(Fitting, TheMainWindow) {
    expectFits("frmMain");
}

TEST_F(Fitting, TheMainWindowWithTheLongestValues) {
    user.drag("frmMain", "picCur", {0, 0}, {0, 0}); // the keyboard is there
    stage.ask([](frmMain& main) {
        main.cmbTilesWide.userSelect(24);
        main.cmbTilesHigh.userSelect(24);
        main.scrZoom.userSetValue(400);
        return 0;
    });
    expectFits("frmMain");
}

TEST_F(Fitting, TheDialogs) {
    const std::pair<int, const char*> byLetter[] = {
        {'E', "frmTileSize"}, {'I', "frmBtm"}, {'N', "frmSheets"}};
    for (const auto& [letter, name] : byLetter) {
        user.key(letter, wxMOD_ALT);
        expectFits(name);
        user.leaveByEscape(name);
    }
    user.clickMenu("frmMain", 1, 2);
    expectFits("frmPosterSize");
    user.leaveByEscape("frmPosterSize");
    user.clickMenu("frmMain", 3, 1);
    expectFits("frmAbout");
    user.leaveByEscape("frmAbout");
}

TEST_F(Fitting, SavingAndItsResult) {
    user.key('S', wxMOD_ALT);
    expectFits("frmSaveTiles");
    user.key('S', wxMOD_ALT);
    expectFits("frmSimpleMsg");
    user.key('O', wxMOD_ALT);
    user.waitForWindowToGo("frmSimpleMsg");
}

} // namespace

} // namespace veldara::test
