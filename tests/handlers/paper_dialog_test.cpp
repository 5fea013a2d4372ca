// The paper dialog: what it shows, what it remembers, and what it hands back.
#include "paper_support.h"
#include "support/decimal_comma.h"

namespace veldara::test {
namespace {

using Texts = PaperWindow::Texts;

TEST(PaperDialog, HasItsTexts) {
    const PaperWindow window;
    const frmTileSize& dialog = window.dialog;
    EXPECT_EQ(dialog.name(), "frmTileSize");
    EXPECT_EQ(dialog.caption(), "Determine Tile Print Size");
    EXPECT_EQ(dialog.fraUnits.caption(), "(1) Select Units");
    EXPECT_EQ(dialog.opbInches.caption(), "Inches");
    EXPECT_EQ(dialog.opbMm.caption(), "Millimeters");
    EXPECT_EQ(dialog.fraPaperSize.caption(), "(2) Select Paper Size");
    EXPECT_EQ(dialog.fraMargins.caption(), "(3) Select Margin Size For Prints");
    EXPECT_EQ(dialog.fraResults.caption(), "(4) Results:");
    EXPECT_EQ(dialog.lblMargins[0].caption(), "Top Margin:");
    EXPECT_EQ(dialog.lblMargins[1].caption(), "Right Margin:");
    EXPECT_EQ(dialog.lblMargins[2].caption(), "Bottom Margin:");
    EXPECT_EQ(dialog.lblMargins[3].caption(), "Left Margin:");
    EXPECT_EQ(dialog.chkLock.caption(), "Lock Left=Right, Top=Bottom");
    EXPECT_EQ(dialog.cmdBorderless.caption(), "Set to borderless (no margins)");
    EXPECT_EQ(dialog.cmdReset.caption(), "Reset to default margins");
    EXPECT_EQ(dialog.chkBorderless.caption(), "Borderless");
    EXPECT_EQ(dialog.lblSizeWithBordersCaption.caption(), "Size BEFORE borders trimmed:");
    EXPECT_EQ(dialog.lblSizeWithoutBordersCaption.caption(), "Size AFTER borders trimmed:");
    EXPECT_EQ(dialog.cmdApply.caption(), "Apply");
    EXPECT_EQ(dialog.cmdCancel.caption(), "Cancel");
}

TEST(PaperDialog, HasItsToolTips) {
    const PaperWindow window;
    const frmTileSize& dialog = window.dialog;
    EXPECT_EQ(dialog.lstPaperSize.toolTip(), "Choose paper size (or select Custom Size)");
    EXPECT_EQ(dialog.txtWidth.toolTip(), "Full paper width (including margins)");
    EXPECT_EQ(dialog.txtHeight.toolTip(), "Full paper height (including margins)");
    EXPECT_EQ(dialog.cmbMargins[0].toolTip(), "Select or type top margin size");
    EXPECT_EQ(dialog.cmbMargins[1].toolTip(), "Select or type right margin size");
    EXPECT_EQ(dialog.cmbMargins[2].toolTip(), "Select or type bottom margin size");
    EXPECT_EQ(dialog.cmbMargins[3].toolTip(), "Select or type left margin size");
    EXPECT_EQ(dialog.chkLock.toolTip(), "Force the left/right and top/bottom margins to be equal");
    EXPECT_EQ(dialog.cmdBorderless.toolTip(),
              "Set all border sizes to zero (use this for borderless prints)");
    EXPECT_EQ(dialog.cmdReset.toolTip(),
              "Reset margin sizes to default values for selected paper size");
    EXPECT_EQ(dialog.lblSizeWithBorders.toolTip(),
              "This is the full paper size, including margins");
    EXPECT_EQ(dialog.lblSizeWithoutBorders.toolTip(),
              "This is the poster tile size (the print size AFTER margins trimmed off)");
    EXPECT_EQ(dialog.cmdOk.toolTip(),
              "Accept current print/margin values and return to main window");
    EXPECT_EQ(dialog.cmdApply.toolTip(), "Accept current print/margin values");
    EXPECT_EQ(dialog.cmdCancel.toolTip(), "Do not accept current print/margin values");
}

TEST(PaperDialog, StartsWithTheFirstPhotoPaper) {
    PaperWindow window;
    window.dialog.initPaperSizes();
    const Whu whu(window.dialog);
    EXPECT_EQ(whu.name, "Photo 4\" x 6\"");
    EXPECT_EQ(whu.units, 0);
    EXPECT_DOUBLE_EQ(whu.paperWidth, 6);
    EXPECT_DOUBLE_EQ(whu.paperHeight, 4);
    EXPECT_DOUBLE_EQ(whu.tileWidth, 6);
    EXPECT_DOUBLE_EQ(whu.tileHeight, 4);
    EXPECT_TRUE(window.fakes.screen.log.empty());
    EXPECT_FALSE(window.dialog.loaded());
}

TEST(PaperDialog, TakesThePreferenceLine) {
    PaperWindow window;
    window.dialog.setPrefFromRegLine(letterLine());
    const Whu whu(window.dialog);
    EXPECT_EQ(whu.name, "Letter 8.5\" x 11\"");
    EXPECT_DOUBLE_EQ(whu.tileWidth, 6);
    EXPECT_DOUBLE_EQ(whu.tileHeight, 9);
}

TEST(PaperDialog, ABadLineGivesTheStateOfTheStartWithoutAWord) {
    for (const std::string line : {"", "|", "|2|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|",
                                   "|1|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|",
                                   "|0|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|x|1|1|1|"}) {
        PaperWindow window;
        window.dialog.setPrefFromRegLine(a4Line());
        window.dialog.setPrefFromRegLine(line);
        EXPECT_EQ(Whu(window.dialog).name, "Photo 4\" x 6\"") << line;
        EXPECT_TRUE(window.fakes.dialogs.quiet());
    }
}

TEST(PaperDialog, ShowsTheCurrentPaperInInches) {
    PaperWindow window;
    window.open(
        [&] {
            const frmTileSize& dialog = window.dialog;
            EXPECT_TRUE(dialog.opbInches.selected());
            EXPECT_FALSE(dialog.opbMm.selected());
            EXPECT_EQ(dialog.lstPaperSize.count(), 7);
            EXPECT_EQ(dialog.lstPaperSize.selectedText(), "Letter 8.5\" x 11\"");
            EXPECT_EQ(dialog.txtWidth.text(), "8.50");
            EXPECT_EQ(dialog.txtHeight.text(), "11.00");
            EXPECT_EQ(window.margins(), (Texts{"1.00", "1.25", "1.00", "1.25"}));
            EXPECT_EQ(dialog.lblMarginUnits.caption(), "(Margin sizes in INCHES)");
            EXPECT_EQ(dialog.lblUnits[0].caption(), "Inches");
            EXPECT_EQ(dialog.lblUnits[1].caption(), "Inches");
            EXPECT_EQ(window.paperResult(), "8.50 x 11.00 Inches");
            EXPECT_EQ(window.tileResult(), "6.00 x 9.00 Inches");
            EXPECT_FALSE(dialog.chkBorderless.checked());
        },
        letterLine());
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

TEST(PaperDialog, ShowsTheCurrentPaperInMillimetres) {
    PaperWindow window;
    window.open(
        [&] {
            const frmTileSize& dialog = window.dialog;
            EXPECT_TRUE(dialog.opbMm.selected());
            EXPECT_EQ(dialog.lstPaperSize.count(), 8);
            EXPECT_EQ(dialog.lstPaperSize.selectedText(), "A4 - 210 x 297");
            EXPECT_EQ(dialog.txtWidth.text(), "210.0");
            EXPECT_EQ(dialog.txtHeight.text(), "297.0");
            EXPECT_EQ(window.margins(), (Texts{"25.0", "25.0", "25.0", "25.0"}));
            EXPECT_EQ(dialog.lblMarginUnits.caption(), "(Margin sizes in MILLIMETERS)");
            EXPECT_EQ(dialog.lblUnits[0].caption(), "mm");
            EXPECT_EQ(window.paperResult(), "210.0 x 297.0 mm");
            EXPECT_EQ(window.tileResult(), "160.0 x 247.0 mm");
        },
        a4Line());
}

TEST(PaperDialog, UsesTheUsersDecimalSeparator) {
    PaperWindow window;
    window.useStyle(comma);
    window.dialog.initPaperSizes();
    window.open(
        [&] {
            EXPECT_EQ(window.dialog.txtWidth.text(), "8,50");
            EXPECT_EQ(window.tileResult(), "6,00 x 9,00 Inches");
            window.dialog.cmbMargins[0].userSetText("0,5");
            EXPECT_EQ(window.tileResult(), "6,00 x 9,50 Inches");
            EXPECT_EQ(window.refusal(), "");
        },
        "|0|Letter 8.5\" x 11\"|8,5|11|1|1,25|1|1,25|1|1,25|1|1,25|");
    EXPECT_EQ(window.owner.accepted.at(0).line,
              "|0|Letter 8.5\" x 11\"|8,5|11|1|1,25|1|1,25|0,5|1,25|1|1,25|");
}

TEST(PaperDialog, MarginListsHaveTheirEntries) {
    PaperWindow window;
    for (const ComboBox& box : window.dialog.cmbMargins) {
        ASSERT_EQ(box.count(), 201);
        EXPECT_EQ(box.items().front(), "0.00");
        EXPECT_EQ(box.items()[125], "1.25");
        EXPECT_EQ(box.items().back(), "2.00");
    }
    window.dialog.setPrefFromRegLine(a4Line());
    for (const ComboBox& box : window.dialog.cmbMargins) {
        ASSERT_EQ(box.count(), 501);
        EXPECT_EQ(box.items().front(), "0.0");
        EXPECT_EQ(box.items()[3], "0.3");
        EXPECT_EQ(box.items().back(), "50.0");
    }
}

TEST(PaperDialog, MarginListsAreNotFilledAgainForTheSameUnits) {
    PaperWindow window;
    int fillings = 0;
    window.dialog.cmbMargins[0].observe(
        [&](Property property) { fillings += property == Property::items ? 1 : 0; });
    window.open([] {}, letterLine());
    window.open([] {}, letterLine());
    EXPECT_EQ(fillings, 0);
    window.open([] {}, a4Line());
    EXPECT_EQ(fillings, 1);
}

TEST(PaperDialog, SizeIsEditableForTheCustomPapersOnly) {
    PaperWindow window;
    window.open([&] {
        for (int paper = 0; paper < inchCustom; ++paper) {
            window.choose(paper);
            EXPECT_FALSE(window.dialog.txtWidth.enabled());
            EXPECT_FALSE(window.dialog.txtHeight.enabled());
        }
        window.choose(inchCustom);
        EXPECT_TRUE(window.dialog.txtWidth.enabled());
        EXPECT_TRUE(window.dialog.txtHeight.enabled());
        window.dialog.opbMm.userSelect();
        EXPECT_FALSE(window.dialog.txtWidth.enabled());
        window.choose(mmCustom);
        EXPECT_TRUE(window.dialog.txtWidth.enabled());
    });
}

// Choosing a paper

TEST(PaperDialog, APaperComesWithItsMargins) {
    PaperWindow window;
    window.open([&] {
        window.choose(letter);
        EXPECT_EQ(window.tileResult(), "6.00 x 9.00 Inches");
        EXPECT_EQ(window.margins(), (Texts{"1.00", "1.25", "1.00", "1.25"}));
        window.choose(0);
        EXPECT_EQ(window.tileResult(), "6.00 x 4.00 Inches");
        EXPECT_TRUE(window.dialog.chkBorderless.checked());
    });
    EXPECT_TRUE(window.fakes.dialogs.quiet());
    EXPECT_TRUE(window.owner.calls.empty());
}

std::string letterWithNegativeMargin() {
    return "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|1|1.25|1|-0.5|";
}

TEST(PaperDialog, APaperThatIsNotRightIsRefusedAndTheLastOneStays) {
    PaperWindow window;
    window.open(
        [&] {
            EXPECT_EQ(window.tileResult(), "Invalid margin size selected");
            window.choose(0);
            window.choose(letter);
            EXPECT_EQ(
                window.fakes.dialogs.onlyMessage(),
                (Message{"Invalid margin value - can't be less than zero", "Invalid Values Entered",
                         MessageIcon::critical, MessageButtons::ok}));
            EXPECT_EQ(window.dialog.lstPaperSize.listIndex(), 0);
            EXPECT_EQ(window.dialog.txtWidth.text(), "6.00");
        },
        letterWithNegativeMargin());
}

TEST(PaperDialog, AClickOnTheChosenPaperChecksNothing) {
    PaperWindow window;
    window.open(
        [&] {
            window.choose(letter);
            EXPECT_TRUE(window.fakes.dialogs.quiet());
        },
        letterWithNegativeMargin());
}

TEST(PaperDialog, TheUnitsThatAreCurrentAreNotCheckedAgain) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.opbInches_Click();
            EXPECT_TRUE(window.fakes.dialogs.quiet());
        },
        letterWithNegativeMargin());
}

TEST(PaperDialog, InvalidEntriesDoNotPreventAnotherPaper) {
    PaperWindow window;
    window.open([&] {
        window.dialog.cmbMargins[0].userSetText("rubbish");
        window.choose(letter);
        EXPECT_EQ(window.dialog.lstPaperSize.listIndex(), letter);
        EXPECT_EQ(window.margins().at(0), "1.00");
    });
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

// Margins

TEST(PaperDialog, ResultsFollowWhatIsTyped) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.cmbMargins[0].userSetText("0.5");
            EXPECT_EQ(window.tileResult(), "6.00 x 9.50 Inches");
            window.dialog.cmbMargins[0].userSetText("0.");
            EXPECT_EQ(window.tileResult(), "6.00 x 10.00 Inches");
            window.dialog.cmbMargins[0].userSetText("");
            EXPECT_EQ(window.paperResult(), "8.50 x 11.00 Inches");
            EXPECT_EQ(window.tileResult(), "Invalid margin size selected");
            window.dialog.cmbMargins[0].userSetText("-1");
            EXPECT_EQ(window.tileResult(), "Invalid margin size selected");
            window.dialog.cmbMargins[0].userSetText("1.005");
            EXPECT_EQ(window.tileResult(), "6.00 x 9.00 Inches"); // 8.995
        },
        letterLine());
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

TEST(PaperDialog, AMarginIsChosenFromTheList) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.cmbMargins[3].userSelect(50);
            EXPECT_EQ(window.dialog.cmbMargins[3].text(), "0.50");
            EXPECT_EQ(window.tileResult(), "6.75 x 9.00 Inches");
        },
        letterLine());
}

TEST(PaperDialog, AnInvalidMarginLeavesThePapersValues) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.cmbMargins[0].userSetText("0.5");
            window.dialog.cmbMargins[0].userSetText("99");
            EXPECT_EQ(window.tileResult(), "Invalid margin size selected");
            EXPECT_DOUBLE_EQ(Whu(window.dialog).tileHeight, 9.5);
        },
        letterLine());
}

TEST(PaperDialog, LockCopiesTopToBottomAndLeftToRight) {
    PaperWindow window;
    window.open(
        [&] {
            window.enterMargins("0.1", "0.2", "0.3", "0.4");
            window.dialog.chkLock.userSetChecked(true);
            EXPECT_EQ(window.margins(), (Texts{"0.1", "0.4", "0.1", "0.4"}));
            EXPECT_EQ(window.tileResult(), "7.70 x 10.80 Inches");
        },
        letterLine());
}

TEST(PaperDialog, LockWorksInBothDirections) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.cmbMargins[0].userSetText("0.1");
            EXPECT_EQ(window.margins(), (Texts{"0.1", "1.25", "0.1", "1.25"}));
            window.dialog.cmbMargins[2].userSetText("0.2");
            EXPECT_EQ(window.margins(), (Texts{"0.2", "1.25", "0.2", "1.25"}));
            window.dialog.cmbMargins[1].userSetText("0.3");
            EXPECT_EQ(window.margins(), (Texts{"0.2", "0.3", "0.2", "0.3"}));
            window.dialog.cmbMargins[3].userSelect(40);
            EXPECT_EQ(window.margins(), (Texts{"0.2", "0.40", "0.2", "0.40"}));
            EXPECT_EQ(window.tileResult(), "7.70 x 10.60 Inches");
        },
        letterLine(), true);
}

TEST(PaperDialog, WithoutTheLockMarginsAreFree) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.chkLock.userSetChecked(true);
            window.dialog.chkLock.userSetChecked(false);
            window.dialog.cmbMargins[0].userSetText("0.1");
            EXPECT_EQ(window.margins(), (Texts{"0.1", "1.25", "1.00", "1.25"}));
        },
        letterLine());
}

TEST(PaperDialog, LockIsSetByTheMainWindowWithoutCopyingMargins) {
    PaperWindow window;
    window.open(
        [&] {
            EXPECT_TRUE(window.dialog.chkLock.checked());
            EXPECT_EQ(window.margins(), (Texts{"0.10", "0.20", "0.30", "0.40"}));
        },
        "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|0.1|0.2|0.3|0.4|", true);
    window.open([&] { EXPECT_FALSE(window.dialog.chkLock.checked()); }, letterLine(), false);
}

TEST(PaperDialog, LockSetFromCodeCopiesNothing) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.setMarginLock(true);
            EXPECT_TRUE(window.dialog.chkLock.checked());
            EXPECT_EQ(window.margins(), (Texts{"0.10", "0.20", "0.30", "0.40"}));
        },
        "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|0.1|0.2|0.3|0.4|");
}

TEST(PaperDialog, BorderlessButtonSetsAllMarginsToZero) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.cmdBorderless.userClick();
            EXPECT_EQ(window.margins(), (Texts{"0.00", "0.00", "0.00", "0.00"}));
            EXPECT_EQ(window.tileResult(), "8.50 x 11.00 Inches");
            EXPECT_TRUE(window.dialog.chkBorderless.checked());
        },
        letterLine());
    window.open(
        [&] {
            window.dialog.cmdBorderless.userClick();
            EXPECT_EQ(window.margins(), (Texts{"0.0", "0.0", "0.0", "0.0"}));
        },
        a4Line());
}

TEST(PaperDialog, ResetGivesTheDefaultMarginsBack) {
    PaperWindow window;
    window.open(
        [&] {
            window.enterMargins("0", "0.1", "0.2", "0.3");
            window.dialog.cmdReset.userClick();
            EXPECT_EQ(window.margins(), (Texts{"1.00", "1.25", "1.00", "1.25"}));
            EXPECT_EQ(window.tileResult(), "6.00 x 9.00 Inches");
        },
        letterLine());
    window.open(
        [&] {
            window.dialog.cmdBorderless.userClick();
            window.dialog.cmdReset.userClick();
            EXPECT_EQ(window.margins(), (Texts{"25.0", "25.0", "25.0", "25.0"}));
        },
        a4Line());
}

TEST(PaperDialog, BorderlessBoxWorksInBothDirections) {
    PaperWindow window;
    window.open(
        [&] {
            window.dialog.chkBorderless.userSetChecked(true);
            EXPECT_EQ(window.margins(), (Texts{"0.00", "0.00", "0.00", "0.00"}));
            EXPECT_TRUE(window.dialog.chkBorderless.checked());
            window.dialog.chkBorderless.userSetChecked(false);
            EXPECT_EQ(window.margins(), (Texts{"1.00", "1.25", "1.00", "1.25"}));
            EXPECT_FALSE(window.dialog.chkBorderless.checked());
        },
        letterLine());
}

TEST(PaperDialog, BorderlessBoxIsRightWhileMarginsAreTyped) {
    PaperWindow window;
    window.open([&] {
        EXPECT_TRUE(window.dialog.chkBorderless.checked());
        window.dialog.cmbMargins[1].userSetText("0.1");
        EXPECT_FALSE(window.dialog.chkBorderless.checked());
        window.dialog.cmbMargins[1].userSetText("0");
        EXPECT_TRUE(window.dialog.chkBorderless.checked());
        window.dialog.cmbMargins[1].userSetText("?");
        EXPECT_FALSE(window.dialog.chkBorderless.checked());
    });
}

TEST(PaperDialog, APaperWithoutDefaultMarginsStaysBorderless) {
    PaperWindow window;
    window.open([&] {
        window.dialog.chkBorderless.userSetChecked(false);
        EXPECT_TRUE(window.dialog.chkBorderless.checked());
        EXPECT_EQ(window.margins(), (Texts{"0.00", "0.00", "0.00", "0.00"}));
    });
}

// Units

TEST(PaperDialog, EachUnitRemembersItsPaper) {
    PaperWindow window;
    window.open([&] {
        window.choose(letter);
        window.enterMargins("0.5", "0.5", "0.5", "0.5");
        window.dialog.opbMm.userSelect();
        EXPECT_EQ(window.dialog.lstPaperSize.selectedText(), "A8 - 53 x 74");
        EXPECT_EQ(window.dialog.cmbMargins[0].count(), 501);
        EXPECT_EQ(window.tileResult(), "54.0 x 33.0 mm");
        window.choose(a4);
        window.dialog.opbInches.userSelect();
        EXPECT_EQ(window.dialog.lstPaperSize.selectedText(), "Letter 8.5\" x 11\"");
        EXPECT_EQ(window.margins(), (Texts{"0.50", "0.50", "0.50", "0.50"}));
        EXPECT_EQ(window.dialog.cmbMargins[0].count(), 201);
        window.dialog.opbMm.userSelect();
        EXPECT_EQ(window.dialog.lstPaperSize.selectedText(), "A4 - 210 x 297");
    });
    EXPECT_TRUE(window.fakes.dialogs.quiet());
}

TEST(PaperDialog, UnitsOfAPaperThatIsNotRightAreRefused) {
    PaperWindow window;
    window.dialog.setPrefFromRegLine(letterWithNegativeMargin());
    window.open(
        [&] {
            window.dialog.opbInches.userSelect();
            EXPECT_EQ(
                window.fakes.dialogs.onlyMessage(),
                (Message{"Invalid margin value - can't be less than zero", "Invalid Values Entered",
                         MessageIcon::critical, MessageButtons::ok}));
            EXPECT_TRUE(window.dialog.opbMm.selected());
            EXPECT_FALSE(window.dialog.opbInches.selected());
            EXPECT_EQ(window.dialog.lstPaperSize.selectedText(), "A4 - 210 x 297");
            EXPECT_EQ(window.dialog.lblUnits[0].caption(), "mm");
        },
        a4Line());
}

TEST(PaperDialog, ATypedCustomSizeStaysWithItsUnits) {
    PaperWindow window;
    window.open([&] {
        window.choose(inchCustom);
        window.dialog.txtWidth.userSetText("10");
        window.dialog.txtHeight.userSetText("12");
        window.dialog.opbMm.userSelect();
        window.choose(mmCustom);
        EXPECT_EQ(window.dialog.txtWidth.text(), "148.0");
        EXPECT_EQ(window.dialog.txtHeight.text(), "210.0");
        window.dialog.opbInches.userSelect();
        EXPECT_EQ(window.dialog.txtWidth.text(), "10.00");
        EXPECT_EQ(window.dialog.txtHeight.text(), "12.00");
    });
}

} // namespace
} // namespace veldara::test
