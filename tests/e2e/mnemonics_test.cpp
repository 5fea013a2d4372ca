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

// How strict: where the desktop's own dialogs have no letters for OK and Cancel, ours have none.
enum class Own { everyButton, asTheSystem };

class Letters {
  public:
    explicit Letters(Own own = Own::everyButton) : own_(own) {}

    void addAll(const wxWindow& parent) {
        for (const wxWindow* one : parent.GetChildren()) {
            if (one->IsTopLevel()) {
                continue;
            }
            if (dynamic_cast<const wxButton*>(one) != nullptr ||
                dynamic_cast<const wxCheckBox*>(one) != nullptr ||
                dynamic_cast<const wxRadioButton*>(one) != nullptr) {
                EXPECT_TRUE(own_ == Own::asTheSystem || letterOf(one->GetLabel()) != 0)
                    << one->GetLabel();
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
    Own own_;
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
    check("frmMain", 18);
    const std::tuple<int, const char*, std::size_t> byLetter[] = {{'E', "frmTileSize", 14},
                                                                  {'I', "frmBtm", 11},
                                                                  {'N', "frmSheets", 10},
                                                                  {'P', "frmPreview", 1}};
    for (const auto& [letter, name, least] : byLetter) {
        user.key(letter, wxMOD_ALT);
        check(name, least);
        user.leaveByEscape(name);
    }
    user.clickMenu("frmMain", 1, 2);
    check("frmPosterSize", 8);
    user.leaveByEscape("frmPosterSize");
    user.clickMenu("frmMain", 3, 1);
    check("frmAbout", 1);
    user.leaveByEscape("frmAbout");
    user.key('S', wxMOD_ALT);
    check("frmSaveTiles", 8);
    user.key('S', wxMOD_ALT);
    check("frmSimpleMsg", 1);
    user.key('O', wxMOD_ALT);
    user.waitForWindowToGo("frmSimpleMsg");
}

TEST(Dialogs, TheInputBoxesLettersAreItsOwn) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    user.key('I', wxMOD_ALT);
    user.waitForWindow("frmBtm");
    user.key('N', wxMOD_ALT);
    user.waitForWindow("input");
    user.onWindowThread([] {
#ifdef __WXMSW__
        Letters letters(Own::asTheSystem);
        letters.addAll(*Driver::window("input"));
#else
        Letters letters;
        letters.addAll(*Driver::window("input"));
        EXPECT_EQ(letters.count(), 2U);
#endif
    });
    user.leaveByEscape("input", "frmBtm");
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmBtm");
}

TEST(Dialogs, AMessageBoxesLettersAreItsOwn) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    for (const MessageButtons buttons : {MessageButtons::ok, MessageButtons::okCancel,
                                         MessageButtons::yesNo, MessageButtons::yesNoCancel}) {
        // Shown as the program shows it, and answered meanwhile.
        auto done = std::make_shared<std::promise<void>>();
        wxTheApp->CallAfter([done, buttons] {
            WxDialogs dialogs([] { return Driver::window("frmMain"); });
            dialogs.showMessage({"Black & white?", "", MessageIcon::question, buttons});
            done->set_value();
        });
        EXPECT_EQ(user.waitForMessage(), "Black & white?");
        Letters letters;
        const std::vector<std::string> labels = user.messageButtons();
        for (const std::string& label : labels) {
            letters.add(label);
        }
#ifndef __WXMSW__
        EXPECT_EQ(letters.count(), labels.size());
#endif
        const bool onlyOk = buttons == MessageButtons::ok;
        const bool noCancel = buttons == MessageButtons::yesNo;
        user.answerByKey(onlyOk ? Answer::ok : noCancel ? Answer::no : Answer::cancel);
        done->get_future().wait();
    }
}

TEST(Dialogs, TheProgressWindowsLettersAreItsOwn) {
    Stage stage;
    writeJpeg(stage.photos() / "large.jpg", 3000, 3000);
    stage.store("prefs_numTiles", "w24h24"); // so many that the window is there for a while
    stage.start();
    stage.pickPhoto("large.jpg");
    Driver& user = stage.user();
    user.key('S', wxMOD_ALT);
    user.waitForWindow("frmSaveTiles");
    user.key('S', wxMOD_ALT);
    Letters letters;
    user.waitUntil("the progress window is up", [&] {
        const wxWindow* window = Driver::window("frmMsg");
        if (window == nullptr) {
            return false;
        }
        letters.addAll(*window);
        return true;
    });
    EXPECT_EQ(letters.count(), 1U);
    user.key('C', wxMOD_ALT);
    EXPECT_EQ(user.waitForMessage(), "Canceled by user");
    user.answerByKey(Answer::ok);
    user.waitForWindowToGo("frmMsg");
}

} // namespace

} // namespace veldara::test
