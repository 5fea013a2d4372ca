// Random use of the save dialog.
#include "monkey.h"
#include "save_support.h"

#include <random>

namespace veldara::test {
namespace {

class SaveMonkey : public ::testing::Test {
  protected:
    SaveMonkey() {
        windows.fakes.tree.addFolder("c:\\photos\\deep\\deeper");
        windows.fakes.drives.plug("d");
        windows.fakes.drives.plug("e");
        windows.fakes.drives.takeMediumOut("e");
        windows.owner.tiles = {{0, 0, 9, 9}, {10, 0, 19, 9}};
        windows.fakes.eventPump.whileServing = [this] { actDuringRun(); };
    }

    int pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    bool rarely() { return pick(8) == 0; }

    void actDuringRun() {
        if (rarely()) {
            windows.progress.cmdCancel.userClick();
        }
        windows.progress.userClose();
        if (rarely()) {
            windows.progress.cmdCancel.userClick();
        } else {
            windows.progress.bCancel = false;
        }
        windows.dialog.cmdSaveNow.userClick();
        windows.dialog.userClose();
        windows.writeFails = rarely();
    }

    void breakThings() {
        windows.fakes.fileSystem.faults.creationFails = rarely();
        windows.fakes.fileSystem.faults.createFolderFails = rarely();
        windows.fakes.fileSystem.faults.freeSpaceFails = rarely();
        windows.fakes.fileSystem.space = rarely() ? 10 : 1'000'000;
        windows.tileImageFails = rarely();
        windows.owner.sizesOk = !rarely();
        windows.owner.tableOk = !rarely();
        windows.owner.rotated = pick(2) == 0;
        windows.owner.compensated = pick(2) == 0;
        windows.owner.trims[0] = pick(8) / 64.0 - (rarely() ? 0.5 : 0);
        windows.owner.widthInches = rarely() ? 0 : 0.1 + pick(5);
        windows.writeFails = rarely();
    }

    void act() {
        frmSaveTiles& dialog = windows.dialog;
        switch (pick(8)) {
        case 0:
            dialog.drvTile.userSelect(pick(4));
            break;
        case 1:
            dialog.dirTile.userOpen(pick(5));
            break;
        case 2:
            dialog.txtNewFolderName.userSetText(
                std::string(static_cast<std::size_t>(pick(70)), 'x'));
            break;
        case 3:
            dialog.txtBaseFileName.userSetText("b" + std::to_string(pick(9)));
            break;
        case 4:
            dialog.opbBmp.userSelect();
            break;
        case 5:
            dialog.opbTif.userSelect();
            break;
        case 6:
            dialog.opbJpg.userSelect();
            break;
        default:
            breakThings();
        }
    }

    SaveWindows windows;
    std::mt19937 random{7};
};

TEST_F(SaveMonkey, SurvivesRandomUse) {
    const int steps = monkeySteps();
    for (int done = 0; done < steps;) {
        windows.written.clear();
        windows.fakes.dialogs.messages.clear();
        windows.fakes.screen.log.clear();
        windows.fakes.fileSystem.spaceAskedOf.clear();
        windows.fakes.dialogs.answers.clear();
        std::size_t complaints = 0;
        windows.open([&] {
            for (const int end = done + 1 + pick(20); done < end; ++done) {
                act();
                frmSaveTiles& dialog = windows.dialog;
                ASSERT_EQ(windows.fakes.drives.driveOf(dialog.dirTile.path()),
                          dialog.drvTile.drive());
                ASSERT_EQ(int{dialog.opbBmp.selected()} + int{dialog.opbTif.selected()} +
                              int{dialog.opbJpg.selected()},
                          1);
                ASSERT_NE(dialog.dirTile.path(), "e:\\");
                ASSERT_FALSE(dialog.lblPath.caption().empty());
            }
            complaints = windows.fakes.dialogs.messages.size();
            if (pick(2) == 0) {
                windows.dialog.cmdSaveNow.userClick();
                // A run ends with its tiles and the result window, or with a box that says why not.
                const bool saved = windows.written.size() == 2 && windows.result.visible();
                ASSERT_TRUE(saved || windows.fakes.dialogs.messages.size() > complaints);
                ASSERT_FALSE(windows.dialog.loaded());
            }
        });
        ++done;
        ASSERT_FALSE(windows.dialog.visible());
        windows.fakes.clock.advance(200);
        ASSERT_FALSE(windows.progress.visible());
        windows.result.cmdOk.userClick();
    }
}

} // namespace
} // namespace veldara::test
