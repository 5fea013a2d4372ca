// The full-screen preview window.
#include "layout/frmPreview.h"
#include "monkey.h"
#include "platform/error.h"
#include "support/test_platform.h"

#include <random>

namespace veldara::test {
namespace {

class FakePreviewOwner : public PreviewOwner {
  public:
    double ratio = 1.5;
    bool ratioThrows = false;
    std::vector<std::pair<int, int>> fillings; // the box's size each time
    std::function<void()> whileFilling;

    double GetFinalImgWhRatio() const override {
        if (ratioThrows) {
            throw Error("Nothing is left of a tile.");
        }
        return ratio;
    }
    void FillPreview(Picture& box) override {
        fillings.emplace_back(box.width(), box.height());
        if (whileFilling) {
            whileFilling();
        }
        box.setPixels(std::make_shared<Image>(Image::filled(2, 1, 0, 0, 0)));
    }
};

class FullScreenPreview : public ::testing::Test {
  protected:
    FullScreenPreview() { window.setCloseButtonSize(80, 28); }

    // As the main window does it, on a screen of that size.
    void open(int width = 1200, int height = 942) {
        window.show();
        window.userResize(width, height);
        window.Fill();
    }

    TestPlatform fakes;
    FakePreviewOwner owner;
    Platform platform = fakes.platform();
    frmPreview window{platform, fakes.screen, owner};
};

Message noRatio() {
    return {"Invalid tile configuration.  Please valid tile print size values",
            "Invalid information", MessageIcon::critical, MessageButtons::ok};
}

TEST_F(FullScreenPreview, HasItsTexts) {
    EXPECT_EQ(window.name(), "frmPreview");
    EXPECT_EQ(window.caption(), "Poster Preview");
    EXPECT_EQ(window.cmdClose.caption(), "Close");
}

TEST_F(FullScreenPreview, PictureHasThePostersRatioInTheFreeSpace) {
    open(); // 900 high above a strip of 28 + 2 * 7
    EXPECT_EQ(window.picPreview.width(), 1200);
    EXPECT_EQ(window.picPreview.height(), 800);
    owner.ratio = 0.5;
    window.FitToNewSizeForPic();
    EXPECT_EQ(window.picPreview.height(), 900);
    EXPECT_EQ(window.picPreview.width(), 450);
    EXPECT_EQ(window.picPreview.left(), 375);
    EXPECT_EQ(window.picPreview.top(), 0);
}

TEST_F(FullScreenPreview, CloseButtonIsOneMarginBelowThePicture) {
    open();
    EXPECT_EQ(window.closePlace(), (Place{560, 807, 80, 28}));
}

TEST_F(FullScreenPreview, WithoutARatioThePictureTakesTheFreeSpace) {
    window.show();
    window.userResize(1200, 942);
    window.FitToNewSize();
    EXPECT_EQ(window.picPreview.width(), 1200);
    EXPECT_EQ(window.picPreview.height(), 900);
    EXPECT_EQ(window.closePlace(), (Place{560, 907, 80, 28}));
}

TEST_F(FullScreenPreview, PictureIsNeverLowerThanFifty) {
    open(60, 40);
    EXPECT_GE(window.picPreview.height(), 50);
    window.FitToNewSize();
    EXPECT_EQ(window.picPreview.height(), 50);
}

TEST_F(FullScreenPreview, IsShownBesideTheOthersAndFilledOnce) {
    open();
    EXPECT_EQ(fakes.screen.log, std::vector<std::string>{"show frmPreview"});
    EXPECT_EQ(owner.fillings, (std::vector<std::pair<int, int>>{{1200, 800}}));
    EXPECT_NE(window.picPreview.pixels(), nullptr);
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(FullScreenPreview, PointerShowsTheWait) {
    Pointer seen = Pointer::arrow;
    owner.whileFilling = [&] { seen = window.pointer(); };
    open();
    EXPECT_EQ(seen, Pointer::hourglass);
    EXPECT_EQ(window.pointer(), Pointer::arrow);
}

TEST_F(FullScreenPreview, InvalidTileSizesAreReportedOnce) {
    owner.ratio = 0;
    open();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), noRatio());
    window.userResize(700, 500);
    window.userResize(701, 500);
    EXPECT_EQ(fakes.dialogs.messages.size(), 1U);
}

TEST_F(FullScreenPreview, TilesOfWhichNothingIsLeftAreInvalid) {
    owner.ratioThrows = true;
    open();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), noRatio());
}

TEST_F(FullScreenPreview, InvalidTileSizesLeaveTheLayout) {
    open();
    owner.ratio = 0;
    window.FitToNewSizeForPic();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), noRatio());
    EXPECT_EQ(window.picPreview.width(), 1200);
    EXPECT_EQ(window.picPreview.height(), 800);
}

TEST_F(FullScreenPreview, FollowsAResize) {
    open();
    int layouts = 0;
    window.observe([&](Property property) { layouts += property == Property::range ? 1 : 0; });
    window.userResize(600, 942);
    EXPECT_EQ(window.picPreview.width(), 600);
    EXPECT_EQ(window.picPreview.height(), 400);
    EXPECT_EQ(window.closePlace(), (Place{260, 407, 80, 28}));
    EXPECT_EQ(owner.fillings.back(), (std::pair<int, int>{600, 400}));
    EXPECT_EQ(layouts, 1);
}

TEST_F(FullScreenPreview, TheSameSizeAgainRendersNothing) {
    open();
    window.userResize(1200, 942);
    EXPECT_EQ(owner.fillings.size(), 1U);
}

TEST_F(FullScreenPreview, SizesBeforeTheFirstFillingRenderNothing) {
    window.show();
    window.userResize(100, 100);
    window.userResize(1200, 942);
    EXPECT_TRUE(owner.fillings.empty());
}

TEST_F(FullScreenPreview, SizesDuringARenderingAreRenderedOnceAfterIt) {
    open();
    owner.whileFilling = [&] {
        owner.whileFilling = nullptr;
        window.userResize(300, 942);
        window.userResize(450, 942);
        EXPECT_EQ(window.picPreview.width(), 450); // laid out at once
    };
    window.userResize(600, 942);
    EXPECT_EQ(owner.fillings,
              (std::vector<std::pair<int, int>>{{1200, 800}, {600, 400}, {450, 300}}));
    EXPECT_EQ(window.pointer(), Pointer::arrow);
}

TEST_F(FullScreenPreview, CloseEndsItAndGivesThePixelsBack) {
    open();
    window.cmdClose.userClick();
    EXPECT_FALSE(window.visible());
    EXPECT_FALSE(window.loaded());
    EXPECT_EQ(window.picPreview.pixels(), nullptr);
}

TEST_F(FullScreenPreview, CloseBoxAndEscapeEndIt) {
    open();
    window.userClose();
    EXPECT_FALSE(window.loaded());
}

TEST_F(FullScreenPreview, ClosedWhileItIsRenderedItShowsNothing) {
    owner.whileFilling = [&] { window.cmdClose.userClick(); };
    open();
    EXPECT_EQ(window.picPreview.pixels(), nullptr);
    EXPECT_EQ(owner.fillings.size(), 1U);
    EXPECT_EQ(window.pointer(), Pointer::arrow);
}

TEST_F(FullScreenPreview, ClosedAndResizedWhileItIsRenderedItIsNotRenderedAgain) {
    owner.whileFilling = [&] {
        window.userResize(450, 942);
        window.cmdClose.userClick();
    };
    open();
    EXPECT_EQ(owner.fillings.size(), 1U);
    EXPECT_EQ(window.picPreview.pixels(), nullptr);
}

TEST_F(FullScreenPreview, CanBeOpenedAgain) {
    open();
    window.userClose();
    open(800, 642);
    EXPECT_EQ(owner.fillings.size(), 2U);
    EXPECT_NE(window.picPreview.pixels(), nullptr);
}

TEST_F(FullScreenPreview, SurvivesRandomUse) {
    std::mt19937 random(3);
    const int steps = monkeySteps();
    for (int step = 0; step < steps; ++step) {
        switch (random() % 6) {
        case 0:
            window.show();
            window.Fill();
            break;
        case 1:
        case 2:
            window.userResize(static_cast<int>(random() % 3000), static_cast<int>(random() % 2000));
            break;
        case 3:
            window.userClose();
            break;
        case 4:
            owner.ratio = random() % 5 == 0 ? 0 : 0.02 * static_cast<double>(1 + random() % 2000);
            break;
        default:
            owner.whileFilling = [&] {
                if (random() % 2 == 0) {
                    owner.whileFilling = nullptr;
                }
                window.userResize(static_cast<int>(random() % 3000), 700);
                if (random() % 4 == 0) {
                    window.userClose();
                }
            };
        }
        ASSERT_GE(window.picPreview.width(), 0);
        ASSERT_EQ(window.visible(), window.loaded());
        ASSERT_EQ(window.pointer(), Pointer::arrow);
        ASSERT_FALSE(!window.loaded() && window.picPreview.pixels());
        ASSERT_GE(window.closePlace().left, 0);
    }
}

} // namespace
} // namespace veldara::test
