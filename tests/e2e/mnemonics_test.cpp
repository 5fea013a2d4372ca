// Every button, box and option of every window has a letter of its own.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <map>

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>

namespace veldara::test {

namespace {

// The letter behind the first single "&"; 0: none.
int letterOf(const wxString& label) {
    for (std::size_t i = 0; i + 1 < label.length(); ++i) {
        if (label[i] != '&') {
            continue;
        }
        if (label[i + 1] != '&') {
            return wxToupper(label[i + 1]);
        }
        ++i;
    }
    return 0;
}

class Letters {
  public:
    void addAll(const wxWindow& parent) {
        for (const wxWindow* one : parent.GetChildren()) {
            if (one->IsTopLevel()) {
                continue;
            }
            if (dynamic_cast<const wxButton*>(one) != nullptr ||
                dynamic_cast<const wxCheckBox*>(one) != nullptr ||
                dynamic_cast<const wxRadioButton*>(one) != nullptr) {
                EXPECT_NE(letterOf(one->GetLabel()), 0) << one->GetLabel();
                add(one->GetLabel());
            } else if (dynamic_cast<const wxStaticText*>(one) != nullptr) {
                add(one->GetLabel());
            }
            addAll(*one);
        }
    }
    void add(const wxString& label) {
        const int letter = letterOf(label);
        if (letter != 0) {
            const auto [known, isNew] = owners_.emplace(letter, label);
            EXPECT_TRUE(isNew) << label << " and " << known->second;
        }
    }
    std::size_t count() const { return owners_.size(); }

  private:
    std::map<int, wxString> owners_;
};

TEST(Dialogs, EveryWindowsLettersAreItsOwn) {
    Stage stage;
    writeBitmap(stage.photos() / "wide.bmp", 300, 200, smoothColour);
    stage.start();
    stage.pickPhoto("wide.bmp");
    Driver& user = stage.user();
    const auto check = [&](const std::string& name, std::size_t least) {
        user.waitForWindow(name);
        user.onWindowThread([&] {
            SCOPED_TRACE(name);
            wxTopLevelWindow* window = Driver::window(name);
            Letters letters;
            letters.addAll(*window);
            const auto* frame = dynamic_cast<const wxFrame*>(window);
            if (frame != nullptr && frame->GetMenuBar() != nullptr) {
                for (std::size_t i = 0; i < frame->GetMenuBar()->GetMenuCount(); ++i) {
                    letters.add(frame->GetMenuBar()->GetMenuLabel(i));
                }
            }
            EXPECT_GE(letters.count(), least);
        });
    };
    const auto leave = [&](const std::string& name) {
        user.key(WXK_ESCAPE);
        user.waitForWindowToGo(name);
        user.waitForWindow("frmMain");
    };
    check("frmMain", 18);
    const std::tuple<int, const char*, std::size_t> byLetter[] = {{'E', "frmTileSize", 14},
                                                                  {'I', "frmBtm", 11},
                                                                  {'N', "frmSheets", 10},
                                                                  {'P', "frmPreview", 1}};
    for (const auto& [letter, name, least] : byLetter) {
        user.key(letter, wxMOD_ALT);
        check(name, least);
        leave(name);
    }
    user.clickMenu("frmMain", 1, 2);
    check("frmPosterSize", 8);
    leave("frmPosterSize");
    user.clickMenu("frmMain", 3, 1);
    check("frmAbout", 1);
    leave("frmAbout");
    user.key('S', wxMOD_ALT);
    check("frmSaveTiles", 8);
    user.key('S', wxMOD_ALT);
    check("frmSimpleMsg", 1);
    user.key('O', wxMOD_ALT);
    user.waitForWindowToGo("frmSimpleMsg");
}

} // namespace

} // namespace veldara::test
