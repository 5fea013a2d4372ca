// The buttons that accept and that cancel stand in the system's order in every dialog: the one that
// accepts at the left on Windows, at the right on other desktops.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <algorithm>

#include <gtest/gtest.h>
#include <wx/button.h>

namespace veldara::test {

namespace {

using Row = std::vector<std::string>; // the one that accepts first

Row inSystemOrder(Row row) {
#ifndef __WXMSW__
    std::reverse(row.begin(), row.end());
#endif
    return row;
}

void collectButtons(const wxWindow& parent, std::vector<const wxButton*>& found) {
    for (const wxWindow* one : parent.GetChildren()) {
        if (one->IsTopLevel()) {
            continue;
        }
        collectButtons(*one, found);
        if (const auto* button = dynamic_cast<const wxButton*>(one)) {
            found.push_back(button);
        }
    }
}

// The labels of a window's lowest row of buttons, from left to right, as Tab goes through them.
Row lowestButtons(const std::string& window) {
    std::vector<const wxButton*> buttons;
    collectButtons(*Driver::window(window), buttons);
    const auto place = [](const wxButton* button) { return button->GetScreenPosition(); };
    int lowest = 0;
    for (const wxButton* button : buttons) {
        lowest = std::max(lowest, place(button).y);
    }
    std::erase_if(buttons, [&](const wxButton* button) { return place(button).y != lowest; });
    const auto leftOf = [&](const wxButton* one, const wxButton* other) {
        return place(one).x < place(other).x;
    };
    EXPECT_TRUE(std::is_sorted(buttons.begin(), buttons.end(), leftOf)) << window;
    std::sort(buttons.begin(), buttons.end(), leftOf);
    Row labels;
    for (const wxButton* button : buttons) {
        labels.push_back(button->GetLabelText().ToStdString());
    }
    return labels;
}

Row withoutLetters(Row labels) {
    for (std::string& label : labels) {
        std::erase(label, '&');
    }
    return labels;
}

class Buttons : public testing::Test {
  protected:
    Buttons() {
        writeBitmap(stage.photos() / "wide.bmp", 300, 200, smoothColour);
        stage.start();
        stage.pickPhoto("wide.bmp");
    }
    void expectRow(const std::string& window, const Row& row) {
        user.waitForWindow(window);
        EXPECT_EQ(user.onWindowThread([&] { return lowestButtons(window); }), inSystemOrder(row))
            << window;
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST_F(Buttons, OfEveryDialogStandInTheSystemsOrder) {
    user.key('E', wxMOD_ALT);
    expectRow("frmTileSize", {"OK", "Apply", "Cancel"});
    user.leaveByEscape("frmTileSize");
    user.clickMenu("frmMain", 1, 2);
    expectRow("frmPosterSize", {"OK", "Cancel"});
    user.leaveByEscape("frmPosterSize");
    user.key('S', wxMOD_ALT);
    expectRow("frmSaveTiles", {"Save Images Now", "Close"});
    user.leaveByEscape("frmSaveTiles");
    user.key('N', wxMOD_ALT);
    expectRow("frmSheets", {"Print...", "Save PDF...", "Close"});
    user.leaveByEscape("frmSheets");
    user.key('I', wxMOD_ALT);
    user.waitForWindow("frmBtm");
    user.key('N', wxMOD_ALT);
    expectRow("input", {"OK", "Cancel"});
    user.leaveByEscape("input", "frmBtm");
    user.leaveByEscape("frmBtm");
}

TEST_F(Buttons, OfMessageBoxesStandInTheSystemsOrder) {
    const std::pair<MessageButtons, Row> boxes[] = {
        {MessageButtons::okCancel, {"OK", "Cancel"}},
        {MessageButtons::yesNo, {"Yes", "No"}},
        {MessageButtons::yesNoCancel, {"Yes", "No", "Cancel"}}};
    for (const auto& [buttons, row] : boxes) {
        // Shown as the program shows it, and answered meanwhile.
        auto done = std::make_shared<std::promise<void>>();
        wxTheApp->CallAfter([done, buttons = buttons] {
            WxDialogs dialogs([] { return Driver::window("frmMain"); });
            dialogs.showMessage({"Shall it be?", "", MessageIcon::question, buttons});
            done->set_value();
        });
        user.waitForMessage();
        EXPECT_EQ(withoutLetters(user.messageButtons()), inSystemOrder(row));
        user.answerByKey(row.back() == "No" ? Answer::no : Answer::cancel);
        done->get_future().wait();
    }
}

} // namespace

} // namespace veldara::test
