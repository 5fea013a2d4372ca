// Random use of the paper dialog.
#include "monkey.h"
#include "paper_support.h"

#include <random>

namespace veldara::test {
namespace {

class PaperMonkey : public ::testing::Test {
  protected:
    int pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

    std::string number() {
        switch (pick(8)) {
        case 0:
            return "";
        case 1:
            return "-" + std::to_string(pick(5));
        case 2:
            return "rubbish";
        case 3:
            return std::to_string(pick(2000));
        default:
            return std::to_string(pick(60)) + "." + std::to_string(pick(100));
        }
    }

    void act() {
        frmTileSize& dialog = window.dialog;
        switch (pick(13)) {
        case 0:
            dialog.opbInches.userSelect();
            break;
        case 1:
            dialog.opbMm.userSelect();
            break;
        case 2:
        case 3:
            dialog.lstPaperSize.userClick(pick(9));
            break;
        case 4:
            dialog.txtWidth.userSetText(number());
            break;
        case 5:
            dialog.txtHeight.userSetText(number());
            break;
        case 6:
            dialog.cmbMargins[static_cast<std::size_t>(pick(4))].userSetText(number());
            break;
        case 7:
            dialog.cmbMargins[static_cast<std::size_t>(pick(4))].userSelect(pick(600));
            break;
        case 8:
            dialog.chkLock.userSetChecked(pick(2) == 0);
            break;
        case 9:
            dialog.chkBorderless.userSetChecked(pick(2) == 0);
            break;
        case 10:
            dialog.cmdBorderless.userClick();
            break;
        case 11:
            dialog.cmdReset.userClick();
            break;
        default:
            apply();
        }
    }

    void apply() {
        const std::size_t before = window.owner.accepted.size();
        const bool valid = window.paperResult() != "Invalid Paper size entered" &&
                           window.tileResult() != "Invalid margin size selected";
        window.fakes.dialogs.messages.clear();
        window.dialog.cmdApply.userClick();
        // What the results call valid can be applied, and nothing else.
        ASSERT_EQ(window.owner.accepted.size(), before + (valid ? 1 : 0));
        ASSERT_EQ(window.fakes.dialogs.messages.size(), valid ? 0U : 1U);
        ASSERT_EQ(window.owner.locks.size(), window.owner.accepted.size());
        if (valid) {
            const FakePaperOwner::Accepted& accepted = window.owner.accepted.back();
            const double factor = accepted.units == 1 ? 25.4 : 1;
            ASSERT_GE(accepted.tileWidth, 0.75 * factor - 1e-6);
            ASSERT_LE(accepted.paperHeight, 50 * factor + 1e-6);
        }
    }

    void expectConsistent() {
        const frmTileSize& dialog = window.dialog;
        const bool inches = dialog.opbInches.selected();
        ASSERT_NE(inches, dialog.opbMm.selected());
        ASSERT_EQ(dialog.lstPaperSize.count(), inches ? 7 : 8);
        ASSERT_EQ(dialog.cmbMargins[0].count(), inches ? 201 : 501);
        ASSERT_EQ(dialog.txtWidth.enabled(),
                  dialog.lstPaperSize.listIndex() == dialog.lstPaperSize.count() - 1);
        ASSERT_EQ(dialog.lblUnits[0].caption(), inches ? "Inches" : "mm");
        ASSERT_FALSE(window.tileResult().empty());
    }

    PaperWindow window;
    std::mt19937 random{42};
};

TEST_F(PaperMonkey, SurvivesRandomUse) {
    const int steps = monkeySteps();
    std::string line;
    for (int done = 0; done < steps;) {
        window.fakes.screen.log.clear();
        window.owner.accepted.clear();
        window.owner.locks.clear();
        window.open(
            [&] {
                for (const int end = done + 1 + pick(30); done < end; ++done) {
                    act();
                    expectConsistent();
                    if (HasFatalFailure()) {
                        done = steps;
                    }
                }
                if (pick(2) == 0) {
                    window.dialog.cmdOk.userClick();
                }
            },
            line, pick(2) == 0);
        if (!window.owner.accepted.empty()) {
            line = window.owner.accepted.back().line;
        }
        // Closed, it stands on what was applied last.
        double tileWidth = 0;
        double other = 0;
        int units = 0;
        std::string name;
        window.dialog.getWhuValues(tileWidth, other, other, other, units, name);
        if (!window.owner.accepted.empty()) {
            ASSERT_EQ(window.owner.accepted.back().name, name);
            ASSERT_DOUBLE_EQ(window.owner.accepted.back().tileWidth, tileWidth);
        }
        ASSERT_FALSE(window.dialog.visible());
        window.fakes.dialogs.messages.clear();
    }
}

} // namespace
} // namespace veldara::test
