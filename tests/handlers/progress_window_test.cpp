// The progress and message window and the result window.
#include "monkey.h"
#include "output/frmMsg.h"
#include "output/frmSimpleMsg.h"
#include "output/progress_picture.h"
#include "platform/error.h"
#include "support/test_platform.h"

#include <random>

namespace veldara::test {
namespace {

class ProgressWindow : public ::testing::Test {
  protected:
    ProgressWindow() { fakes.clock.drive(window.tmrProgBar); }

    // How many columns of the bar's first and last row are blue, -1 when they differ or another
    // colour stands in it.
    int blueColumns() const {
        const Image& bar = *window.picProgressBar.pixels();
        int blue = 0;
        for (int x = 0; x < bar.width(); ++x) {
            const std::uint8_t* top = bar.row(0) + 3 * x;
            const std::uint8_t* bottom = bar.row(bar.height() - 1) + 3 * x;
            const bool isBlue = top[0] == 0 && top[1] == 0 && top[2] == 255;
            if (!std::equal(top, top + 3, bottom) || (isBlue && x != blue)) {
                return -1;
            }
            blue += isBlue ? 1 : 0;
        }
        return blue;
    }

    TestPlatform fakes;
    Platform platform = fakes.platform();
    frmMsg window{platform, fakes.screen};
};

TEST_F(ProgressWindow, HasItsTexts) {
    EXPECT_EQ(window.caption(), "Veldara");
    EXPECT_EQ(window.cmdCancel.caption(), "Cancel");
}

TEST_F(ProgressWindow, MessageLayoutIsTheLabelAlone) {
    window.bAllowCancel = true;
    window.SetMode(messageMode);
    EXPECT_TRUE(window.lblMsg.visible());
    EXPECT_FALSE(window.picProgressBar.visible());
    EXPECT_FALSE(window.cmdCancel.visible());
}

TEST_F(ProgressWindow, ProgressLayoutOffersCancelWhereItIsAllowed) {
    window.SetMode(progressMode);
    EXPECT_TRUE(window.picProgressBar.visible());
    EXPECT_FALSE(window.cmdCancel.visible());
    window.bAllowCancel = true;
    window.SetMode(progressMode);
    EXPECT_TRUE(window.cmdCancel.visible());
}

TEST_F(ProgressWindow, LoadedOnItsOwnItClosesAtTheFirstTick) {
    window.load();
    EXPECT_EQ(window.curStatus, closeAtNextTick);
    fakes.clock.advance(100);
    EXPECT_FALSE(window.loaded());
    EXPECT_FALSE(window.tmrProgBar.enabled());
}

TEST_F(ProgressWindow, ScreenReadersHearEveryTenth) {
    window.ShowProgressBar("Working");
    EXPECT_EQ(window.picProgressBar.caption(), "0%");
    window.SetProgressVal(0.39);
    EXPECT_EQ(window.picProgressBar.caption(), "30%");
    window.SetProgressVal(0.5);
    EXPECT_EQ(window.picProgressBar.caption(), "50%");
}

TEST_F(ProgressWindow, ShowProgressBarShowsAnEmptyBarBesideTheOthers) {
    window.ShowProgressBar("Working");
    EXPECT_EQ(window.curStatus, progressRunning);
    EXPECT_EQ(window.lblMsg.caption(), "Working");
    EXPECT_TRUE(window.picProgressBar.visible());
    EXPECT_DOUBLE_EQ(window.GetProgressVal(), 0.0);
    EXPECT_EQ(blueColumns(), 0);
    EXPECT_TRUE(window.tmrProgBar.enabled());
    EXPECT_EQ(fakes.eventPump.eventRuns, 1);
    EXPECT_EQ(fakes.screen.log, std::vector<std::string>{"show frmMsg"});
}

TEST_F(ProgressWindow, ProgressFillsTheBarFromTheLeft) {
    window.picProgressBar.setSize(200, 10);
    window.ShowProgressBar("Working");
    window.SetProgressVal(0.25);
    EXPECT_EQ(blueColumns(), 50);
    window.SetProgressVal(0.75);
    EXPECT_EQ(blueColumns(), 150);
    EXPECT_TRUE(window.loaded());
    EXPECT_EQ(fakes.eventPump.eventRuns, 3);
}

TEST_F(ProgressWindow, FullProgressTakesTheWindowDownAtOnce) {
    window.ShowProgressBar("Working");
    bool loadedWhileEventsRan = true;
    fakes.eventPump.whileEventsRun = [&] { loadedWhileEventsRan = window.loaded(); };
    window.SetProgressVal(1.0);
    EXPECT_FALSE(loadedWhileEventsRan);
    EXPECT_FALSE(window.visible());
    EXPECT_FALSE(window.tmrProgBar.enabled());
}

TEST_F(ProgressWindow, ProgressAboveOneIsOne) {
    window.ShowProgressBar("Working");
    window.SetProgressVal(1.5);
    EXPECT_DOUBLE_EQ(window.GetProgressVal(), 1.0);
    EXPECT_EQ(blueColumns(), window.picProgressBar.width());
    EXPECT_FALSE(window.loaded());
}

TEST_F(ProgressWindow, ProgressBelowNothingIsKeptAndDrawsNothing) {
    window.ShowProgressBar("Working");
    window.SetProgressVal(-0.2);
    EXPECT_DOUBLE_EQ(window.GetProgressVal(), -0.2);
    EXPECT_EQ(blueColumns(), 0);
    EXPECT_TRUE(window.loaded());
}

TEST_F(ProgressWindow, BarFollowsItsSize) {
    window.ShowProgressBar("Working");
    window.SetProgressVal(0.5);
    window.picProgressBar.userResize(80, 8);
    EXPECT_EQ(window.picProgressBar.pixels()->width(), 80);
    EXPECT_EQ(blueColumns(), 40);
    window.picProgressBar.userResize(0, 8);
    EXPECT_EQ(window.picProgressBar.pixels(), nullptr);
    window.picProgressBar.userResize(80, 0);
    EXPECT_EQ(window.picProgressBar.pixels(), nullptr);
}

TEST_F(ProgressWindow, CancelIsKeptHoweverOftenItIsPressed) {
    window.bAllowCancel = true;
    window.ShowProgressBar("Working");
    EXPECT_FALSE(window.bCancel);
    window.cmdCancel.userClick();
    EXPECT_TRUE(window.bCancel);
    EXPECT_EQ(window.lblMsg.caption(), "canceling...");
    window.cmdCancel.userClick();
    EXPECT_TRUE(window.bCancel);
    EXPECT_EQ(window.lblMsg.caption(), "canceling...");
    EXPECT_TRUE(window.visible());
}

TEST_F(ProgressWindow, CancelIsForgottenByTheNextRun) {
    window.bAllowCancel = true;
    window.ShowProgressBar("Working");
    window.cmdCancel.userClick();
    window.ShowProgressBar("Working again");
    EXPECT_FALSE(window.bCancel);
}

TEST_F(ProgressWindow, CloseBoxAsksForTheCancelWhileWorkRuns) {
    window.bAllowCancel = true;
    window.ShowProgressBar("Working");
    window.userClose();
    EXPECT_TRUE(window.bCancel);
    EXPECT_TRUE(window.visible());
}

TEST_F(ProgressWindow, CloseBoxDoesNothingWhereCancelIsNotAllowed) {
    window.ShowProgressBar("Working");
    window.userClose();
    EXPECT_FALSE(window.bCancel);
    EXPECT_TRUE(window.visible());
}

TEST_F(ProgressWindow, CloseBoxTakesAMessageDown) {
    window.ShowMsgForSecs("Hello", 100);
    window.userClose();
    EXPECT_FALSE(window.loaded());
}

TEST_F(ProgressWindow, StatusOneClosesItAtTheNextTick) {
    window.ShowProgressBar("Working");
    window.curStatus = closeAtNextTick;
    EXPECT_TRUE(window.visible());
    fakes.clock.advance(window.tmrProgBar.interval());
    EXPECT_FALSE(window.visible());
}

TEST_F(ProgressWindow, TicksRedrawTheBarAndLetEventsRun) {
    window.ShowProgressBar("Working");
    const auto before = window.picProgressBar.pixels();
    window.tmrProgBar.tick();
    EXPECT_NE(window.picProgressBar.pixels(), before);
    EXPECT_EQ(fakes.eventPump.eventRuns, 2);
    EXPECT_TRUE(window.visible());
}

TEST_F(ProgressWindow, ATickThatOutlivesTheWindowDrawsNothing) {
    window.ShowProgressBar("Working");
    window.unload();
    const auto before = window.picProgressBar.pixels();
    window.tmrProgBar_Timer();
    EXPECT_EQ(window.picProgressBar.pixels(), before);
    EXPECT_EQ(fakes.eventPump.eventRuns, 2);
}

TEST_F(ProgressWindow, TimedMessageStaysForItsTimeAndOneTick) {
    window.bAllowCancel = true;
    window.bCancel = true;
    window.ShowMsgForSecs("Hello", 2.05); // between two ticks
    EXPECT_EQ(window.curStatus, timedMessage);
    EXPECT_EQ(window.lblMsg.caption(), "Hello");
    EXPECT_DOUBLE_EQ(window.dStart, fakes.clock.now);
    EXPECT_DOUBLE_EQ(window.dSecToShowMsg, 2.05);
    EXPECT_FALSE(window.bAllowCancel);
    EXPECT_FALSE(window.bCancel);
    EXPECT_FALSE(window.picProgressBar.visible());
    EXPECT_TRUE(window.visible());
    fakes.clock.advance(2050);
    EXPECT_EQ(window.curStatus, timedMessage);
    fakes.clock.advance(100);
    EXPECT_EQ(window.curStatus, closeAtNextTick);
    EXPECT_TRUE(window.visible());
    fakes.clock.advance(100);
    EXPECT_FALSE(window.visible());
}

TEST_F(ProgressWindow, TimedMessageOfNoTimeGoesAtTheSecondTick) {
    window.ShowMsgForSecs("Hello", 0);
    window.tmrProgBar.tick();
    EXPECT_TRUE(window.visible());
    window.tmrProgBar.tick();
    EXPECT_FALSE(window.visible());
}

TEST_F(ProgressWindow, IsUsedAgainAfterItHasGone) {
    window.ShowProgressBar("One");
    window.SetProgressVal(1);
    window.ShowProgressBar("Two");
    EXPECT_EQ(window.curStatus, progressRunning);
    EXPECT_TRUE(window.visible());
    EXPECT_DOUBLE_EQ(window.GetProgressVal(), 0);
    EXPECT_TRUE(window.tmrProgBar.enabled());
}

// Random use; what must hold after every step is checked after every step.
TEST_F(ProgressWindow, SurvivesRandomUse) {
    std::mt19937 random(20261121);
    const int steps = monkeySteps();
    for (int step = 0; step < steps; ++step) {
        const double fraction = static_cast<double>(random() % 140) / 100 - 0.2;
        switch (random() % 10) {
        case 0:
            window.bAllowCancel = random() % 2 == 0;
            break;
        case 1:
            window.SetMode(random() % 2 == 0 ? messageMode : progressMode);
            break;
        case 2:
            window.ShowMsgForSecs("message", static_cast<double>(random() % 3));
            break;
        case 3:
            window.ShowProgressBar("progress");
            ASSERT_FALSE(window.bCancel);
            break;
        case 4:
            window.SetProgressVal(fraction);
            ASSERT_LE(window.GetProgressVal(), 1.0);
            ASSERT_FALSE(window.GetProgressVal() >= 1.0 && window.visible());
            break;
        case 5:
            window.cmdCancel.userClick();
            break;
        case 6:
            window.userClose();
            break;
        case 7:
            window.curStatus = closeAtNextTick;
            break;
        case 8:
            window.picProgressBar.userResize(static_cast<int>(random() % 50),
                                             static_cast<int>(random() % 5));
            break;
        default:
            fakes.clock.advance(static_cast<int>(random() % 150));
        }
        ASSERT_EQ(window.visible(), window.loaded());
        ASSERT_FALSE(window.tmrProgBar.enabled() && !window.loaded());
        ASSERT_FALSE(window.cmdCancel.visible() && !window.picProgressBar.visible());
    }
}

TEST(ProgressBar, IsBlueOverItsShareOfTheWidth) {
    const Image bar = progressPicture(4, 2, 0.5);
    const std::uint8_t blue[] = {0, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255, 255};
    for (int y = 0; y < 2; ++y) {
        EXPECT_TRUE(std::equal(blue, blue + 12, bar.row(y)));
    }
}

TEST(ProgressBar, NeedsRoom) {
    EXPECT_THROW(progressPicture(0, 5, 0.5), Error);
    EXPECT_THROW(progressPicture(5, 0, 0.5), Error);
}

class ResultWindow : public ::testing::Test {
  protected:
    TestPlatform fakes{'\\'};
    Platform platform = fakes.platform();
    frmSimpleMsg window{platform, fakes.screen};
};

TEST_F(ResultWindow, NamesTheFolderOfTheTiles) {
    window.ShowSaveOkMsg("c:\\photos\\a_poster_images");
    EXPECT_EQ(window.lblTitle.caption(), "Images Saved Successfully");
    EXPECT_EQ(window.imgCheck.drawing(), Drawing::checkMark);
    EXPECT_EQ(window.lblMsg.caption(),
              "You poster images were saved successfully and are now ready for you to print.  They "
              "are located in the following folder:");
    EXPECT_EQ(window.lnkFol.caption(), "c:\\photos\\a_poster_images");
    EXPECT_EQ(window.lnkFol.target(), "c:\\photos\\a_poster_images");
    EXPECT_EQ(fakes.screen.log, std::vector<std::string>{"show frmSimpleMsg"});
}

TEST_F(ResultWindow, HasTheNameOfTheProgramAndOneButton) {
    EXPECT_EQ(window.caption(), "Veldara");
    EXPECT_EQ(window.cmdOk.caption(), "OK");
}

TEST_F(ResultWindow, SaysThatADocumentWasSaved) {
    window.ShowDocumentOkMsg("c:\\photos\\poster.pdf", "");
    EXPECT_EQ(window.lblTitle.caption(), "PDF Saved Successfully");
    EXPECT_EQ(window.lblMsg.caption(),
              "Your poster was saved as one PDF.  Print it at 100 % (actual size), one side only.  "
              "Click on the file name to open it.");
    EXPECT_EQ(window.lnkFol.target(), "c:\\photos\\poster.pdf");
    window.ShowDocumentOkMsg("c:\\photos\\poster.pdf", "It is long.");
    EXPECT_EQ(window.lblMsg.caption(),
              "Your poster was saved as one PDF.  Print it at 100 % (actual size), one side only.  "
              "Click on the file name to open it.  It is long.");
    window.ShowSaveOkMsg("c:\\photos");
    EXPECT_EQ(window.lblTitle.caption(), "Images Saved Successfully") << "the window is used again";
}

TEST_F(ResultWindow, ALongFolderIsWrappedInTheCaptionOnly) {
    const std::string folder = "c:\\" + std::string(34, 'a') + "\\" + std::string(60, 'b');
    window.ShowSaveOkMsg(folder);
    EXPECT_EQ(window.lnkFol.caption(), "c:\\" + std::string(34, 'a') + "\\\r\n" +
                                           std::string(55, 'b') + "\r\n" + std::string(5, 'b'));
    EXPECT_EQ(window.lnkFol.target(), folder);
}

TEST_F(ResultWindow, TheLinkOpensTheFolder) {
    window.ShowSaveOkMsg("c:\\photos\\a b");
    window.lnkFol.userClick();
    EXPECT_EQ(fakes.launcher.log, std::vector<std::string>{"open c:\\photos\\a b"});
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(ResultWindow, AFolderThatCannotBeOpenedIsReported) {
    fakes.launcher.fails = true;
    window.ShowSaveOkMsg("c:\\photos");
    window.lnkFol.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), (Message{"It cannot be started.", "Problem",
                                                    MessageIcon::critical, MessageButtons::ok}));
    EXPECT_TRUE(window.visible());
}

TEST_F(ResultWindow, OkTakesItDown) {
    window.ShowSaveOkMsg("c:\\photos");
    window.cmdOk.userClick();
    EXPECT_FALSE(window.loaded());
    EXPECT_FALSE(window.visible());
}

TEST_F(ResultWindow, ANewResultReplacesTheOneThatIsStillOpen) {
    window.ShowSaveOkMsg("c:\\one");
    window.ShowSaveOkMsg("c:\\two");
    EXPECT_EQ(window.lnkFol.target(), "c:\\two");
    EXPECT_EQ(fakes.screen.log.size(), 1U);
}

} // namespace
} // namespace veldara::test
