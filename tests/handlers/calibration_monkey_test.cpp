// Random use of the calibration dialog.
#include "calibration_support.h"
#include "monkey.h"

#include <random>

namespace veldara::test {
namespace {

class CalibrationMonkey : public ::testing::Test {
  protected:
    int pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

    std::string name() {
        const std::string names[] = {"", "default", "my, printer", "t\tab", "\xc3\xa9", "x"};
        return names[pick(6)];
    }

    // What a person does, and whether it changes the profiles.
    bool act() {
        frmBtm& dialog = window.dialog;
        ComboBox* const edges[] = {&dialog.cmbTopEdge, &dialog.cmbRightEdge, &dialog.cmbBottomEdge,
                                   &dialog.cmbLeftEdge};
        const int count = dialog.lstConfigurations.count();
        switch (pick(8)) {
        case 0:
        case 1:
            dialog.lstConfigurations.userClick(pick(count + 1));
            return false;
        case 2:
        case 3: {
            ComboBox& edge = *edges[pick(4)];
            const int choice = pick(18);
            const bool isNew = choice != edge.listIndex() && choice < 17;
            edge.userSelect(choice);
            return isNew;
        }
        case 4:
            window.fakes.dialogs.texts = {count < 40 ? name() : ""};
            return press(dialog.cmdNew);
        case 5:
            window.fakes.dialogs.texts = {name()};
            return press(dialog.cmdRename);
        case 6:
            window.fakes.dialogs.answers.clear();
            if (count > 1) {
                window.fakes.dialogs.answers = {pick(3) == 0 ? Answer::no : Answer::yes};
            }
            return deleted(dialog);
        default:
            window.owner.active = pick(count);
            return false;
        }
    }

    bool press(Button& button) {
        const bool named = !window.fakes.dialogs.texts.front().empty();
        button.userClick();
        return named;
    }

    bool deleted(frmBtm& dialog) {
        const int before = dialog.lstConfigurations.count();
        dialog.cmdDel.userClick();
        return dialog.lstConfigurations.count() < before;
    }

    void expectConsistent() {
        const frmBtm& dialog = window.dialog;
        ASSERT_GE(dialog.lstConfigurations.count(), 1);
        ASSERT_GE(dialog.lstConfigurations.listIndex(), 0);
        ASSERT_EQ(window.owner.names, dialog.lstConfigurations.items());
        ASSERT_GE(window.owner.active, 0);
        ASSERT_LT(window.owner.active, dialog.lstConfigurations.count());
        const std::vector<int> shown = window.choices();
        for (std::size_t edge = 0; edge < 4; ++edge) {
            ASSERT_EQ(window.descriptions()[edge], edgeDescription(shown[edge], Units::inches));
        }
        if (window.owner.active == dialog.lstConfigurations.listIndex()) {
            for (std::size_t edge = 0; edge < 4; ++edge) {
                double trim = -1;
                dialog.GetCurEdgeTrimInches(static_cast<int>(edge) + 1, trim);
                ASSERT_DOUBLE_EQ(trim, shown[edge] / 64.0);
            }
        }
    }

    CalibrationWindow window;
    std::mt19937 random{11};
};

TEST_F(CalibrationMonkey, SurvivesRandomUse) {
    const int steps = monkeySteps();
    for (int done = 0; done < steps;) {
        window.fakes.screen.log.clear();
        window.open([&] {
            for (const int end = done + 1 + pick(30); done < end; ++done) {
                window.removeFile();
                const bool changed = act();
                expectConsistent();
                // Written after each change, and never otherwise.
                if (HasFatalFailure() || window.file().has_value() != changed) {
                    ADD_FAILURE() << "after step " << done;
                    done = steps;
                }
            }
        });
        window.fakes.dialogs.messages.clear();
        window.fakes.dialogs.textRequests.clear();
    }
}

} // namespace
} // namespace veldara::test
