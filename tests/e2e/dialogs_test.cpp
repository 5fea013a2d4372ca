// Every dialog once by the mouse and once by the keyboard alone, with the time it takes to open.
#include "e2e/stage.h"
#include "e2e/test_photos.h"

#include <iostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

namespace {

using testing::HasSubstr;

void report(const std::string& window, double milliseconds) {
    std::cout << window << " opens in " << milliseconds << " ms\n";
}

TEST(Dialogs, PaperByMouse) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    report("frmTileSize", user.timeToOpenByClick("frmTileSize", "cmdEditPaperSize"));
    EXPECT_EQ(user.title("frmTileSize"), "Determine Tile Print Size");
    user.clickListEntry("frmTileSize", "lstPaperSize", "Letter 8.5\" x 11\"");
    EXPECT_EQ(user.text("frmTileSize", "lblSizeWithoutBorders"), "6.00 x 9.00 Inches");
    user.click("frmTileSize", "cmdBorderless");
    EXPECT_EQ(user.text("frmTileSize", "cmbMargins0"), "0.00");
    EXPECT_EQ(user.text("frmTileSize", "lblSizeWithoutBorders"), "8.50 x 11.00 Inches");
    user.click("frmTileSize", "cmdReset");
    EXPECT_EQ(user.text("frmTileSize", "cmbMargins1"), "1.25");
    user.click("frmTileSize", "cmdOk");
    user.waitForWindowToGo("frmTileSize");
    EXPECT_EQ(user.text("frmMain", "lblPaperName"), "Letter 8.5\" x 11\"");
    EXPECT_EQ(user.text("frmMain", "lblTileSize"), "6.00 x 9.00");
    EXPECT_EQ(stage.stored("paperRegLine"), letterLine);
}

TEST(Dialogs, PaperByKeyboard) {
    Stage stage;
    stage.store("paperRegLine", letterLine);
    stage.start();
    Driver& user = stage.user();
    user.key('E', wxMOD_ALT);
    user.waitForWindow("frmTileSize");
    user.key('K', wxMOD_ALT); // the lock: left and right, top and bottom are equal
    EXPECT_TRUE(user.isChecked("frmTileSize", "chkLock"));
    user.key('T', wxMOD_ALT);
    user.key(WXK_DOWN); // from the margin that stands there
    EXPECT_EQ(user.text("frmTileSize", "cmbMargins0"), "1.01");
    user.retype("0.5");
    user.key(WXK_DOWN);
    EXPECT_EQ(user.text("frmTileSize", "cmbMargins0"), "0.50");
    user.key(WXK_UP);
    EXPECT_EQ(user.text("frmTileSize", "cmbMargins0"), "0.49");
    user.retype("0.5");
    EXPECT_EQ(user.text("frmTileSize", "cmbMargins0"), "0.5");
    EXPECT_EQ(user.text("frmTileSize", "cmbMargins2"), "0.5");
    EXPECT_EQ(user.text("frmTileSize", "lblSizeWithoutBorders"), "6.00 x 10.00 Inches");
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmTileSize");
    EXPECT_EQ(user.text("frmMain", "lblTileSize"), "6.00 x 9.00"); // nothing was accepted

    user.waitForWindow("frmMain");
    user.key('E', wxMOD_ALT);
    user.waitForWindow("frmTileSize");
    user.key('T', wxMOD_ALT);
    user.retype("0.5");
    user.key('O', wxMOD_ALT);
    user.waitForWindowToGo("frmTileSize");
    EXPECT_EQ(user.text("frmMain", "lblTileSize"), "6.00 x 9.50");
}

TEST(Dialogs, PaperRefusesInvalidValuesWithAMessage) {
    Stage stage;
    stage.store("paperRegLine", letterLine);
    stage.start();
    Driver& user = stage.user();
    user.click("frmMain", "cmdEditPaperSize");
    user.waitForWindow("frmTileSize");
    user.key('T', wxMOD_ALT);
    user.retype("-1");
    EXPECT_EQ(user.text("frmTileSize", "lblSizeWithoutBorders"), "Invalid margin size selected");
    user.click("frmTileSize", "cmdApply");
    EXPECT_EQ(user.waitForMessage(), "Invalid margin value - can't be less than zero");
    user.answerByKey(Answer::ok);
    EXPECT_TRUE(user.isShown("frmTileSize"));
    user.click("frmTileSize", "cmdCancel");
    user.waitForWindowToGo("frmTileSize");
}

TEST(Dialogs, CalibrationByMouse) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    report("frmBtm", user.timeToOpenByClick("frmBtm", "cmdConfig"));
    EXPECT_EQ(user.title("frmBtm"), "Edge Calibration");
    user.choose("frmBtm", "cmbTopEdge", 1);
    EXPECT_THAT(user.text("frmBtm", "lblTopEdgeDesc"), HasSubstr("Printer cuts off  "));
    const int profiles = stage.ask([](frmMain& main) { return main.cmbCurBtm.count(); });
    user.click("frmBtm", "cmdNew");
    user.waitForWindow("input");
    user.copy("Attic printer\n");
    user.key('V', wxMOD_CONTROL); // the name that is proposed is selected
    user.key(WXK_RETURN);
    user.waitForWindowToGo("input");
    EXPECT_EQ(user.text("frmBtm", "lstConfigurations"), "Attic printer");
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.cmbCurBtm.count(); }), profiles + 1);
    user.click("frmBtm", "cmdDel");
    EXPECT_THAT(user.waitForMessage(), HasSubstr("Attic printer"));
    user.answerByMouse(Answer::yes);
    EXPECT_EQ(stage.ask([](frmMain& main) { return main.cmbCurBtm.count(); }), profiles);
    user.click("frmBtm", "cmdOk");
    user.waitForWindowToGo("frmBtm");
}

TEST(Dialogs, CalibrationByKeyboard) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    user.clickMenu("frmMain", 1, 1);
    user.waitForWindow("frmBtm");
    user.key('R', wxMOD_ALT);
    user.waitForWindow("input");
    user.retype("Kitchen printer");
    user.key(WXK_RETURN);
    user.waitForWindowToGo("input");
    EXPECT_EQ(user.text("frmBtm", "lstConfigurations"), "Kitchen printer");
    user.waitForWindow("frmBtm");
    user.key('B', wxMOD_ALT);
    EXPECT_EQ(user.focused(), "(list)");
    user.key(WXK_END);
    EXPECT_EQ(user.text("frmBtm", "cmbBottomEdge"), "see no lines!");
    user.key('C', wxMOD_ALT);
    user.waitForWindowToGo("frmBtm");
    EXPECT_EQ(user.text("frmMain", "cmbCurBtm"), "Kitchen printer");
}

TEST(Dialogs, TestTargetIsOfferedAndCanceled) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    user.click("frmMain", "cmdConfig");
    user.click("frmBtm", "cmdGenerateTest");
    EXPECT_THAT(user.waitForMessage(), HasSubstr("wide test image will now be created."));
    user.answerByMouse(Answer::cancel);
    user.waitForWindow("frmBtm");
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmBtm");
}

TEST(Dialogs, ClippedEdgesAreIntroducedWhenTheBoxIsTicked) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    EXPECT_FALSE(user.isEnabled("frmMain", "cmbCurBtm"));
    user.click("frmMain", "chkPrinterClips");
    EXPECT_THAT(user.waitForMessage(), HasSubstr("your printer clips off"));
    user.answerByMouse(Answer::ok);
    EXPECT_TRUE(user.isEnabled("frmMain", "cmbCurBtm"));
}

// The program with a photo to look at and to save.
class Lake {
  public:
    Lake() {
        writeBitmap(stage.photos() / "lake.bmp", 900, 600, smoothColour);
        stage.start();
        stage.pickPhoto("lake.bmp");
    }
    void openPreviewByKey() {
        user.key('P', wxMOD_ALT);
        user.waitForWindow("frmPreview");
    }

    Stage stage;
    Driver& user = stage.user();
};

TEST(Dialogs, FullScreenPreviewByMouse) {
    Lake lake;
    Driver& user = lake.user;
    report("frmPreview", user.timeToOpenByClick("frmPreview", "cmdLargePreview"));
    EXPECT_EQ(user.title("frmPreview"), "Poster Preview");
    user.waitUntil("the poster fills the screen", [] {
        const wxSize all = Driver::window("frmPreview")->GetClientSize();
        const wxWindow* poster = Driver::widget("frmPreview", "picPreview");
        return all.x >= 1500 && poster->GetClientSize().x > all.x / 2;
    });
    const wxSize picture = user.sizeOf("frmPreview", "picPreview");
    const wxSize window =
        user.onWindowThread([] { return Driver::window("frmPreview")->GetClientSize(); });
    EXPECT_LE(picture.x, window.x);
    EXPECT_LT(picture.y, window.y);
    // The poster's own ratio: two tiles of six by four inches each way.
    EXPECT_NEAR(double(picture.x) / picture.y, 1.5, 0.01);
    user.click("frmPreview", "cmdClose");
    user.waitForWindowToGo("frmPreview");
}

TEST(Dialogs, FullScreenPreviewComesToTheFrontAgain) {
    Lake lake;
    Driver& user = lake.user;
    lake.openPreviewByKey();
    user.onWindowThread([] { Driver::window("frmMain")->Raise(); });
    user.waitUntil("the main window is in front",
                   [] { return Driver::window("frmMain")->IsActive(); });
    user.key('P', wxMOD_ALT);
    user.waitUntil("the preview is in front",
                   [] { return Driver::window("frmPreview")->IsActive(); });
}

TEST(Dialogs, FullScreenPreviewByKeyboard) {
    Lake lake;
    Driver& user = lake.user;
    lake.openPreviewByKey();
    user.waitUntil("the close button has the keyboard", [] {
        const wxWindow* close = Driver::widget("frmPreview", "cmdClose");
        return close != nullptr && close->HasFocus();
    });
    user.key(WXK_ESCAPE);
    user.waitForWindowToGo("frmPreview");
}

TEST(Dialogs, AboutByMenuAndMouse) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    report("frmAbout", user.timeToOpenByMenu("frmAbout", 3, 1));
    EXPECT_EQ(user.title("frmAbout"), "Veldara");
    EXPECT_EQ(user.text("frmAbout", "lblVersion"), "Version " VELDARA_VERSION);
    EXPECT_THAT(user.text("frmAbout", "lblCopyright"), HasSubstr("Copyright"));
#ifdef _WIN32 // elsewhere the button is there only where the desktop has such a program
    user.click("frmAbout", "cmdSysInfo");
    EXPECT_EQ(user.waitForMessage(), "System Information Is Unavailable At This Time");
    user.answerByMouse(Answer::ok);
#endif
    user.click("frmAbout", "cmdOk");
    user.waitForWindowToGo("frmAbout");
}

TEST(Dialogs, AboutByKeyboard) {
    Stage stage;
    stage.start();
    Driver& user = stage.user();
    user.clickMenu("frmMain", 3, 1);
    user.waitForWindow("frmAbout");
    user.key(WXK_RETURN);
    user.waitForWindowToGo("frmAbout");
}

TEST(Dialogs, SaveOpensQuickly) {
    Lake lake;
    Driver& user = lake.user;
    report("frmSaveTiles", user.timeToOpenByClick("frmSaveTiles", "cmdSaveNow"));
    user.click("frmSaveTiles", "cmdClose");
    user.waitForWindowToGo("frmSaveTiles");
}

} // namespace

} // namespace veldara::test
