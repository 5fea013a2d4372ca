// What the tests of the paper dialog share.
#pragma once

#include "paper/frmTileSize.h"
#include "support/test_platform.h"

#include <string>
#include <vector>

namespace veldara::test {

class FakePaperOwner : public PaperOwner {
  public:
    struct Accepted {
        std::string name;
        int units = -1;
        double tileWidth = 0;
        double tileHeight = 0;
        double paperWidth = 0;
        double paperHeight = 0;
        std::string line;
        bool operator==(const Accepted&) const = default;
    };

    std::vector<Accepted> accepted;
    std::vector<int> locks;
    std::vector<std::string> calls; // in the order they came

    double getConstMinTileSize() const override { return 0.75; }
    double getConstMaxTileSize() const override { return 50.0; }
    void setNewTileVals(const std::string& name, int units, double tileWidth, double tileHeight,
                        double paperWidth, double paperHeight, const std::string& line,
                        int& newVal) override {
        calls.emplace_back("values");
        accepted.push_back({name, units, tileWidth, tileHeight, paperWidth, paperHeight, line});
        newVal = 1;
    }
    void setWhMarginLockedVal(int locked) override {
        calls.emplace_back("lock");
        locks.push_back(locked);
    }
};

constexpr int inchCustom = 6;
constexpr int mmCustom = 7;
constexpr int letter = 3;
constexpr int a4 = 4;

class PaperWindow {
  public:
    explicit PaperWindow(NumberStyle style = {}) { fakes.numberStyle = style; }

    TestPlatform fakes;
    FakePaperOwner owner;
    Platform platform = fakes.platform();
    frmTileSize dialog{platform, fakes.screen, owner};

    void useStyle(NumberStyle style) { platform.numberStyle = style; }

    // The dialog as the main window opens it; a user plays, and it is closed.
    template <typename User>
    void open(User user, const std::string& line = {}, bool locked = false) {
        fakes.screen.whenModal("frmTileSize", [&, user](Window&) {
            user();
            dialog.userClose();
        });
        dialog.OpenWith(line, locked);
    }

    void choose(int paper) { dialog.lstPaperSize.userClick(paper); }
    void enterMargins(const std::string& top, const std::string& right, const std::string& bottom,
                      const std::string& left) {
        dialog.cmbMargins[0].userSetText(top);
        dialog.cmbMargins[1].userSetText(right);
        dialog.cmbMargins[2].userSetText(bottom);
        dialog.cmbMargins[3].userSetText(left);
    }
    std::vector<std::string> margins() const {
        std::vector<std::string> texts;
        for (const ComboBox& box : dialog.cmbMargins) {
            texts.push_back(box.text());
        }
        return texts;
    }
    using Texts = std::vector<std::string>;

    // The text of the box that refuses to apply; empty when it is applied.
    std::string refusal() {
        fakes.dialogs.messages.clear();
        dialog.cmdApply.userClick();
        if (fakes.dialogs.messages.empty()) {
            return {};
        }
        EXPECT_EQ(fakes.dialogs.messages.size(), 1U);
        EXPECT_EQ(fakes.dialogs.messages[0].title, "Invalid Values Entered");
        EXPECT_EQ(fakes.dialogs.messages[0].icon, MessageIcon::critical);
        EXPECT_EQ(fakes.dialogs.messages[0].buttons, MessageButtons::ok);
        return fakes.dialogs.messages[0].text;
    }
    std::string paperResult() const { return dialog.lblSizeWithBorders.caption(); }
    std::string tileResult() const { return dialog.lblSizeWithoutBorders.caption(); }
};

inline std::string letterLine() {
    return "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|1|1.25|1|1.25|";
}
inline std::string a4Line() {
    return "|1|A4 - 210 x 297|210|297|25|25|25|25|25|25|25|25|";
}

// What the dialog tells the main window, under names.
struct Whu {
    explicit Whu(const frmTileSize& dialog) {
        dialog.getWhuValues(tileWidth, tileHeight, paperWidth, paperHeight, units, name);
    }
    double tileWidth = 0;
    double tileHeight = 0;
    double paperWidth = 0;
    double paperHeight = 0;
    int units = -1;
    std::string name;
};

} // namespace veldara::test
