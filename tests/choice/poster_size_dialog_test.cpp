#include "choice/choice_drawing.h"
#include "choice/frmPosterSize.h"
#include "support/test_platform.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

class FakeOwner : public PosterSizeOwner {
  public:
    std::optional<PosterState> state;
    std::vector<std::tuple<int, int, int, bool>> applied;

    std::optional<PosterState> posterState() const override { return state; }
    void applyPosterChoice(int paper, int wide, int high, bool turned) override {
        applied.emplace_back(paper, wide, high, turned);
    }
};

class PosterSizeDialog : public testing::Test {
  protected:
    PosterSizeDialog() {
        owner.state.emplace();
        owner.state->limits = {6000, 4000};
        owner.state->papers = {
            {"Letter", 8.5, 11, {}, {}}, {"Tabloid", 11, 17, {}, {}}, {"Custom", 34, 22.7, {}, {}}};
        owner.state->width = 17;
        dialog.picChoices.setSize(400, 200); // cells of 100 x 100
        dialog.picRoom.setSize(200, 200);
        owner.state->photo = std::make_shared<Image>(Image::filled(600, 400, 0, 90, 200));
    }

    // The dialog as the main window opens it, while a user acts.
    void play(const std::function<void()>& user) {
        fakes.screen.whenModal("frmPosterSize", [&](Window&) {
            user();
            if (dialog.visible()) {
                dialog.cmdCancel.userClick();
            }
        });
        dialog.Open();
        EXPECT_TRUE(fakes.screen.allUsersPlayed());
    }

    TestPlatform fakes;
    Platform platform = fakes.platform();
    FakeOwner owner;
    frmPosterSize dialog{platform, fakes.screen, owner};
};

TEST_F(PosterSizeDialog, StaysClosedWithoutAPhoto) {
    owner.state.reset();
    dialog.Open();
    EXPECT_TRUE(fakes.screen.log.empty());
}

TEST_F(PosterSizeDialog, BeginsWithThePresentWidthAndThisPaper) {
    play([this] {
        EXPECT_EQ(dialog.txtWidth.text(), "17");
        EXPECT_EQ(dialog.txtHeight.text(), "11.33"); // follows the photo
        EXPECT_TRUE(dialog.opbWidth.selected());
        EXPECT_TRUE(dialog.opbThisPaper.selected());
        EXPECT_EQ(dialog.opbThisPaper.caption(), "This paper (Letter)");
        EXPECT_EQ(dialog.lblWidthUnits.caption(), "inches");
        EXPECT_EQ(dialog.lstChoices.listIndex(), 0);
        EXPECT_EQ(dialog.lstChoices.items()[0].substr(0, 30), "1.  2 x 1 sheets: 17 x 11 inch");
    });
    EXPECT_TRUE(owner.applied.empty());
}

TEST_F(PosterSizeDialog, AppliesTheChosenLine) {
    play([this] {
        dialog.txtWidth.userSetText("33");
        ASSERT_GT(dialog.lstChoices.count(), 1);
        const std::string first = dialog.lblResult.caption();
        EXPECT_EQ(dialog.lstChoices.items()[0].substr(0, 17), "1.  3 x 3 sheets,");
        dialog.lstChoices.userClick(1);
        EXPECT_NE(dialog.lblResult.caption(), first);
        dialog.cmdOk.userClick();
    });
    ASSERT_EQ(owner.applied.size(), 1U);
    // The same width with two rows of sheets shows less of the photo.
    EXPECT_EQ(owner.applied[0], std::make_tuple(0, 3, 2, true));
}

TEST_F(PosterSizeDialog, TakesAHeight) {
    play([this] {
        dialog.txtHeight.userSetText("44");
        EXPECT_TRUE(dialog.opbHeight.selected());
        EXPECT_EQ(dialog.txtWidth.text(), "66");
        dialog.cmdOk.userClick();
    });
    ASSERT_EQ(owner.applied.size(), 1U);
    EXPECT_EQ(std::get<2>(owner.applied[0]), 4); // 4 x 11 inches
    EXPECT_FALSE(std::get<3>(owner.applied[0]));
}

TEST_F(PosterSizeDialog, KeepsAQualityWord) {
    play([this] {
        dialog.cmbQuality.userSelect(1);
        EXPECT_TRUE(dialog.opbQuality.selected());
        EXPECT_NE(dialog.lstChoices.items()[0].find(", Very Good, "), std::string::npos);
        dialog.opbWidth.userSelect();
        EXPECT_EQ(dialog.lstChoices.items()[0].find("1.  2 x 1"), 0U);
    });
}

TEST_F(PosterSizeDialog, OffersAnyPaperWithItsIndex) {
    play([this] {
        dialog.txtWidth.userSetText("34");
        dialog.opbAnyPaper.userSelect();
        EXPECT_NE(dialog.lstChoices.items()[0].find("Tabloid"), std::string::npos);
        dialog.cmdOk.userClick();
    });
    ASSERT_EQ(owner.applied.size(), 1U);
    EXPECT_EQ(std::get<0>(owner.applied[0]), 1);
    EXPECT_EQ(std::get<1>(owner.applied[0]), 2); // 2 x 17 inches, on their side
    EXPECT_TRUE(std::get<3>(owner.applied[0]));
}

TEST_F(PosterSizeDialog, TriesTheCustomPaperOnlyWhereItIsTheCurrentOne) {
    const auto custom = [this] {
        dialog.opbAnyPaper.userSelect();
        const std::vector<std::string>& lines = dialog.lstChoices.items();
        return std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
            return line.find("Custom") != std::string::npos;
        });
    };
    owner.state->width = 34; // its own
    play([&] { EXPECT_EQ(custom(), 0); });
    owner.state->paper = 2;
    play([&] { EXPECT_GT(custom(), 0); });
}

TEST_F(PosterSizeDialog, KeepsSheetsUpright) {
    play([this] {
        dialog.txtWidth.userSetText("33");
        dialog.chkOnTheirSide.userSetChecked(false);
        for (const std::string& line : dialog.lstChoices.items()) {
            EXPECT_EQ(line.find("side"), std::string::npos) << line;
        }
    });
}

TEST_F(PosterSizeDialog, SaysWhyThereIsNoChoiceAndKeepsOkOff) {
    play([this] {
        dialog.txtWidth.userSetText("1000");
        EXPECT_EQ(dialog.lstChoices.count(), 0);
        EXPECT_FALSE(dialog.cmdOk.enabled());
        EXPECT_NE(dialog.lblResult.caption().find("25 by 25 sheets are too few"),
                  std::string::npos);
        dialog.txtWidth.userSetText("nothing");
        EXPECT_EQ(dialog.txtHeight.text(), "");
        EXPECT_FALSE(dialog.cmdOk.enabled());
        dialog.cmdOk_Click();
        EXPECT_TRUE(dialog.visible()) << "there is nothing to take over";
        dialog.txtWidth.userSetText("17");
        EXPECT_TRUE(dialog.cmdOk.enabled());
        EXPECT_EQ(dialog.lblResult.caption(), "2 sheets, 352.9 dpi; 0 % of the paper is cut away");
    });
}

TEST_F(PosterSizeDialog, ShowsCentimetresBesideMillimetres) {
    owner.state->units = Units::millimetres;
    owner.state->papers = {{"A4", 210, 297, {}, {}}};
    owner.state->width = 1000 / 25.4;
    play([this] {
        EXPECT_EQ(dialog.txtWidth.text(), "1000");
        EXPECT_EQ(dialog.lblWidthUnits.caption(), "mm  = 100.0 cm");
        EXPECT_EQ(dialog.txtHeight.text(), "666.7");
    });
}

TEST_F(PosterSizeDialog, ChoosesByAClickOnAPicture) {
    play([this] {
        dialog.txtWidth.userSetText("33");
        ASSERT_TRUE(dialog.picChoices.pixels());
        EXPECT_EQ(dialog.picChoices.pixels()->width(), 400);
        dialog.picChoices.userMouseDown(MouseButton::left, 105, 5);
        EXPECT_EQ(dialog.lstChoices.listIndex(), 1);
        dialog.picChoices.userMouseDown(MouseButton::left, 305, 105);
        EXPECT_EQ(dialog.lstChoices.listIndex(), 1); // nothing is drawn there
        EXPECT_TRUE(dialog.picRoom.pixels());
    });
}

TEST_F(PosterSizeDialog, TheGalleryTakesTheDesktopsColour) {
    play([this] {
        dialog.txtWidth.userSetText("33");
        const auto corner = [this] {
            const Image& gallery = *dialog.picChoices.pixels();
            return gallery.row(gallery.height() - 1)[0];
        };
        EXPECT_EQ(corner(), 255);
        dialog.picChoices.userSetGround({45, 45, 45});
        EXPECT_EQ(corner(), 45);
    });
}

TEST_F(PosterSizeDialog, LetsThePhotoGoWhenItCloses) {
    const std::weak_ptr<const Image> photo = owner.state->photo;
    play([] {});
    owner.state.reset();
    EXPECT_TRUE(photo.expired());
}

} // namespace
} // namespace veldara::test
