#include "app/main_messages.h"
#include "handlers/main_fixture.h"

namespace veldara::test {
namespace {

class MainPosterSize : public MainWindowTest {
  protected:
    MainPosterSize() { addPhoto("lake.jpg", 6000, 4000); }

    void selectPhoto() {
        start();
        window->lstFiles.userClick(0);
        ASSERT_TRUE(window->bImgSelected);
    }

    // The dialog from the menu, while a user acts on it.
    void choose(const std::function<void(frmPosterSize&)>& user) {
        fakes.screen.whenModal("frmPosterSize", [&user](Window& dialog) {
            auto& posterSize = dynamic_cast<frmPosterSize&>(dialog);
            user(posterSize);
            if (posterSize.visible()) {
                posterSize.cmdCancel.userClick();
            }
        });
        window->mnuPosterSize.userClick();
        EXPECT_TRUE(fakes.screen.allUsersPlayed());
    }

    static void takeWidth(frmPosterSize& dialog, const std::string& width) {
        dialog.txtWidth.userSetText(width);
        dialog.cmdOk.userClick();
    }
};

TEST_F(MainPosterSize, SaysThatAPhotoIsMissing) {
    start();
    window->mnuPosterSize.userClick();
    ASSERT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_EQ(fakes.dialogs.messages[0].text, noImageSelectedMessage().text);
}

TEST_F(MainPosterSize, SetsCountsAndTileRotation) {
    selectPhoto();
    window->chkLockWh.userSetChecked(true);
    choose([](frmPosterSize& dialog) { takeWidth(dialog, "30"); });
    const std::string size = window->lblFinalSize.caption();
    EXPECT_GE(window->GetNumTilesWide() *
                  (window->chkRotateTiles.checked() ? 4.0 : 6.0), // the first paper is 6 x 4 inches
              30);
    EXPECT_EQ(window->bTileRotated, window->chkRotateTiles.checked());
    EXPECT_EQ(size.substr(0, 5), "30 x ");
    EXPECT_EQ(window->chkLockWh.checked(), window->GetNumTilesWide() == window->GetNumTilesHigh());
}

TEST_F(MainPosterSize, KeepsTheLockWhereTheChoiceAllowsIt) {
    selectPhoto();
    window->chkLockWh.userSetChecked(true);
    window->applyPosterChoice(0, 4, 4, false);
    EXPECT_TRUE(window->chkLockWh.checked());
    window->applyPosterChoice(0, 4, 3, false);
    EXPECT_FALSE(window->chkLockWh.checked());
    EXPECT_EQ(window->GetNumTilesWide(), 4);
    EXPECT_EQ(window->GetNumTilesHigh(), 3);
}

TEST_F(MainPosterSize, SetsThePaper) {
    selectPhoto();
    const std::string before = window->lblPaperName.caption();
    choose([](frmPosterSize& dialog) {
        dialog.opbAnyPaper.userSelect();
        takeWidth(dialog, "51");
    });
    EXPECT_NE(window->lblPaperName.caption(), before);
    EXPECT_NE(window->getPaperRegLine().find(window->lblPaperName.caption()), std::string::npos);
}

TEST_F(MainPosterSize, RedrawsAndSavesOnce) {
    selectPhoto();
    for (const bool turned : {true, false}) {
        int redraws = 0;
        forgetWrites();
        window->picCur.observe(
            [&redraws](Property property) { redraws += property == Property::picture ? 1 : 0; });
        window->applyPosterChoice(turned ? 2 : 1, 7, 5, turned);
        EXPECT_EQ(redraws, 1) << turned;
        EXPECT_EQ(namesWritten(), fullWrite());
        EXPECT_EQ(window->GetNumTilesWide(), 7);
        EXPECT_EQ(window->GetNumTilesHigh(), 5);
    }
}

TEST_F(MainPosterSize, ChangesNothingWhenItIsCancelled) {
    selectPhoto();
    const std::string before = window->lblFinalSize.caption();
    forgetWrites();
    choose([](frmPosterSize& dialog) { dialog.txtWidth.userSetText("40"); });
    EXPECT_EQ(window->lblFinalSize.caption(), before);
    EXPECT_FALSE(saved());
}

TEST_F(MainPosterSize, BeginsWithThePosterAsItIs) {
    selectPhoto();
    window->cmbTilesWide.userSelect(4);
    window->chkRotateTiles.userSetChecked(true);
    choose([](frmPosterSize& dialog) { EXPECT_EQ(dialog.txtWidth.text(), "20"); }); // 5 x 4
}

} // namespace
} // namespace veldara::test
