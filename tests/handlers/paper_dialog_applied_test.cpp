// The paper dialog: what it hands back to the main window, and what it remembers.
#include "paper_support.h"

namespace veldara::test {
namespace {

using Texts = PaperWindow::Texts;

TEST(PaperDialog, ApplyHandsTheValuesAndThenTheLockToTheMainWindow) {
    PaperWindow window;
    window.open(
        [&] {
            window.choose(letter);
            window.dialog.cmdApply.userClick();
            EXPECT_TRUE(window.dialog.visible());
        },
        {}, true);
    EXPECT_EQ(window.owner.calls, (Texts{"values", "lock"}));
    EXPECT_EQ(window.owner.accepted.at(0),
              (FakePaperOwner::Accepted{"Letter 8.5\" x 11\"", 0, 6, 9, 8.5, 11, letterLine()}));
    EXPECT_EQ(window.owner.locks, std::vector<int>{1});
}

TEST(PaperDialog, OkAppliesAndCloses) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.cmdOk.userClick();
            EXPECT_FALSE(window.dialog.visible());
        },
        a4Line());
    EXPECT_EQ(window.owner.accepted.at(0),
              (FakePaperOwner::Accepted{"A4 - 210 x 297", 1, 160, 247, 210, 297, a4Line()}));
    EXPECT_EQ(window.owner.locks, std::vector<int>{0});
}

TEST(PaperDialog, OkKeepsTheDialogOpenWhenTheEntriesAreInvalid) {
    PaperWindow window;
    window.open([&] {
        window.dialog.cmbMargins[0].userSetText("-1");
        window.dialog.cmdOk.userClick();
        EXPECT_TRUE(window.dialog.visible());
        EXPECT_EQ(window.fakes.dialogs.onlyMessage().title, "Invalid Values Entered");
    });
    EXPECT_TRUE(window.owner.calls.empty());
}

TEST(PaperDialog, CancelHandsNothingBack) {
    PaperWindow window;
    window.open([&] {
        window.choose(letter);
        window.dialog.cmdCancel.userClick();
        EXPECT_FALSE(window.dialog.visible());
    });
    EXPECT_TRUE(window.owner.calls.empty());
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

TEST(PaperDialog, TheCloseBoxIsACancel) {
    PaperWindow window;
    window.open([&] { window.choose(letter); });
    EXPECT_TRUE(window.owner.calls.empty());
    EXPECT_TRUE(window.dialog.loaded()); // hidden, not destroyed
    EXPECT_FALSE(window.dialog.visible());
}

TEST(PaperDialog, AnAppliedCustomSizeIsKeptInTheLine) {
    PaperWindow window;
    window.open([&] {
        window.choose(inchCustom);
        window.dialog.txtWidth.userSetText("12.125");
        window.dialog.txtHeight.userSetText("20");
        window.dialog.cmbMargins[0].userSetText("0.333");
        window.dialog.cmdOk.userClick();
    });
    EXPECT_EQ(window.owner.accepted.at(0).line,
              "|0|Custom (Inches)|12.125|20|0|0|0|0|0.333|0|0|0|");
    EXPECT_DOUBLE_EQ(window.owner.accepted.at(0).tileHeight, 19.667);
}

TEST(PaperDialog, OpeningAndAcceptingChangesNothingOfALineWithFineValues) {
    PaperWindow window;
    const std::string line = "|0|Custom (Inches)|12.125|20|0|0|0|0|0.333|0|0|0|";
    window.open([&] { window.dialog.cmdOk.userClick(); }, line);
    EXPECT_EQ(window.owner.accepted.at(0).line, line);
}

// Memory

TEST(PaperDialog, WhatWasNotAppliedIsForgotten) {
    PaperWindow window;
    window.open(
        [&] {
            window.enterMargins("0.5", "0.5", "0.5", "0.5");
            window.dialog.cmdCancel.userClick();
        },
        letterLine());
    EXPECT_DOUBLE_EQ(Whu(window.dialog).tileWidth, 6);
    window.open(
        [&] {
            EXPECT_EQ(window.margins(), (Texts{"1.00", "1.25", "1.00", "1.25"}));
        },
        letterLine());
}

TEST(PaperDialog, MarginsOfAPaperThatWasLeftAgainAreNotApplied) {
    PaperWindow window;
    window.open([&] {
        window.choose(letter);
        window.enterMargins("0.5", "0.5", "0.5", "0.5");
        window.choose(0);
        window.choose(letter);
        EXPECT_EQ(window.margins(), (Texts{"0.50", "0.50", "0.50", "0.50"}));
        window.choose(0);
        window.dialog.cmdOk.userClick();
    });
    window.open(
        [&] {
            window.choose(letter);
            EXPECT_EQ(window.margins(), (Texts{"1.00", "1.25", "1.00", "1.25"}));
        },
        window.owner.accepted.at(0).line);
}

TEST(PaperDialog, AppliedMarginsOfEveryPaperAreKeptForTheRun) {
    PaperWindow window;
    window.open([&] {
        window.choose(letter);
        window.enterMargins("0.5", "0.6", "0.7", "0.8");
        window.dialog.cmdApply.userClick();
        window.choose(1);
        window.enterMargins("0.1", "0.1", "0.1", "0.1");
        window.dialog.cmdOk.userClick();
    });
    window.open(
        [&] {
            EXPECT_EQ(window.dialog.lstPaperSize.listIndex(), 1);
            EXPECT_EQ(window.margins(), (Texts{"0.10", "0.10", "0.10", "0.10"}));
            window.choose(letter);
            EXPECT_EQ(window.margins(), (Texts{"0.50", "0.60", "0.70", "0.80"}));
        },
        window.owner.accepted.back().line);
}

TEST(PaperDialog, OpensWithTheLineOfTheMainWindow) {
    PaperWindow window;
    window.open([] {}, letterLine());
    window.open([&] { EXPECT_TRUE(window.dialog.opbMm.selected()); }, a4Line());
    window.open([&] { EXPECT_TRUE(window.dialog.opbInches.selected()); }, letterLine());
}

TEST(PaperDialog, IsShownModallyEachTime) {
    PaperWindow window;
    window.open([] {}, letterLine());
    window.open([] {}, letterLine());
    EXPECT_EQ(window.fakes.screen.log, (Texts{"modal frmTileSize", "hide frmTileSize",
                                              "modal frmTileSize", "hide frmTileSize"}));
}

} // namespace
} // namespace veldara::test
