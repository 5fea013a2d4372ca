// What follows an act of the user, step by step: a figure that is drawn before it is reckoned, or
// settings that are saved before they are complete, would show only now and then.
#include "main_fixture.h"

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OrderOfSteps : public MainWindowTest {
  protected:
    // Comes up with tiles of 6 x 4 inches over a photo of the same shape, which the crop spans.
    void SetUp() override { startWithPhoto(); }

    // The steps that the act took, in order; one that is repeated at once counts as one.
    std::vector<std::string> stepsOf(const std::function<void()>& act) {
        note(window->lblPaperName, Property::caption, "paper");
        note(window->lblFinalSize, Property::caption, "figures");
        note(window->lblResolution, Property::caption, "figures");
        note(window->cmdSaveNow, Property::enabled, "buttons");
        note(window->picCur, Property::picture, "preview");
        note(window->lblLrValue, Property::caption, "labels");
        note(window->lblTbValue, Property::caption, "labels");
        note(window->lblZoomAmount, Property::caption, "zoom amount");
        note(window->lstFiles, Property::items, "files");
        fakes.dialogs.whileMessageShown = [this](const Message&) { add("message"); };
        steps_.clear();
        fakes.registry.log.clear();
        writesSeen_ = 0;
        act();
        addWrites();
        return steps_;
    }

  private:
    void note(Control& control, Property which, const char* step) {
        control.observe([this, which, step](Property property) {
            if (property == which) {
                add(step);
            }
        });
    }
    void add(const std::string& step) {
        addWrites();
        addOnce(step);
    }
    void addWrites() {
        const std::vector<std::string> names = namesWritten();
        for (; writesSeen_ < names.size(); ++writesSeen_) {
            addOnce(names[writesSeen_] == "last_folder" ? "folder noted" : "saved");
        }
    }
    void addOnce(const std::string& step) {
        if (steps_.empty() || steps_.back() != step) {
            steps_.push_back(step);
        }
    }

    std::vector<std::string> steps_;
    std::size_t writesSeen_ = 0;
};

TEST_F(OrderOfSteps, TileCounts) {
    EXPECT_THAT(stepsOf([this] { window->cmbTilesWide.userSelect(3); }),
                ElementsAre("figures", "preview", "labels"));
    EXPECT_THAT(stepsOf([this] { window->cmbTilesHigh.userSelect(8); }),
                ElementsAre("figures", "preview", "labels"));
}

TEST_F(OrderOfSteps, SameCountAgain) {
    const int same = window->cmbTilesWide.listIndex();
    EXPECT_THAT(stepsOf([&] { window->cmbTilesWide.userSelect(same); }), IsEmpty());
}

TEST_F(OrderOfSteps, TileRotation) {
    EXPECT_THAT(stepsOf([this] { window->chkRotateTiles.userSetChecked(true); }),
                ElementsAre("preview", "figures", "labels"));
}

TEST_F(OrderOfSteps, Zoom) {
    EXPECT_THAT(stepsOf([this] { window->scrZoom.userSetValue(100); }),
                ElementsAre("zoom amount", "preview", "figures", "labels"));
}

TEST_F(OrderOfSteps, GridBox) {
    EXPECT_THAT(stepsOf([this] { window->chkPreviewTiles.userSetChecked(false); }),
                ElementsAre("preview", "saved"));
}

TEST_F(OrderOfSteps, EdgeCompensation) {
    window->cmbCurBtm.setListIndex(1);
    EXPECT_THAT(stepsOf([this] { window->chkPrinterClips.userSetChecked(true); }),
                ElementsAre("figures", "preview", "saved", "labels"));
}

TEST_F(OrderOfSteps, EdgeCompensationIsIntroducedLast) {
    EXPECT_THAT(stepsOf([this] { window->chkPrinterClips.userSetChecked(true); }),
                ElementsAre("preview", "saved", "message"));
}

TEST_F(OrderOfSteps, EdgeCompensationSetByTheProgramItself) {
    window->bSkipOutputUpdate = true;
    EXPECT_THAT(stepsOf([this] { window->chkPrinterClips.setChecked(true); }), IsEmpty());
    EXPECT_TRUE(window->cmbCurBtm.enabled());
}

TEST_F(OrderOfSteps, ActiveProfile) {
    window->chkPrinterClips.userSetChecked(true);
    EXPECT_THAT(stepsOf([this] { window->cmbCurBtm.userSelect(1); }),
                ElementsAre("figures", "preview", "saved", "labels"));
}

TEST_F(OrderOfSteps, ActiveProfileUnderTheFlag) {
    window->chkPrinterClips.userSetChecked(true);
    window->bSkipSettingWrite = true;
    EXPECT_THAT(stepsOf([this] { window->cmbCurBtm.setListIndex(1); }), IsEmpty());
}

TEST_F(OrderOfSteps, Paper) {
    EXPECT_THAT(stepsOf([this] { setTileInches(8, 10); }),
                ElementsAre("paper", "figures", "saved", "preview", "labels"));
}

TEST_F(OrderOfSteps, PaperOfAnImpossibleSize) {
    EXPECT_THAT(stepsOf([this] { setTileInches(0.5, 8); }),
                ElementsAre("paper", "saved", "buttons", "message", "preview", "saved"));
}

TEST_F(OrderOfSteps, PaperUnderTheFlag) {
    window->bSkipSettingWrite = true;
    EXPECT_THAT(stepsOf([this] { setTileInches(8, 10); }), ElementsAre("paper", "figures"));
    EXPECT_EQ(window->lblTileSize.caption(), "8.00 x 10.00");
}

TEST_F(OrderOfSteps, Drag) {
    window->scrZoom.userSetValue(100);
    window->picCur.userMouseDown(MouseButton::left, 150, 100);
    EXPECT_THAT(stepsOf([this] { window->picCur.userMouseMove(160, 100); }),
                ElementsAre("labels", "preview"));
}

TEST_F(OrderOfSteps, TickOfTheArrowPad) {
    window->scrZoom.userSetValue(100);
    window->imgArrow.userMouseDown(MouseButton::left, 95, 50);
    EXPECT_THAT(stepsOf([this] { window->tmrImg.tick(); }),
                ElementsAre("preview", "labels", "preview"));
}

TEST_F(OrderOfSteps, Folder) {
    fakes.tree.addFolder("/photos/summer");
    EXPECT_THAT(stepsOf([this] { window->Dir1.setPath("/photos/summer"); }),
                ElementsAre("files", "preview", "folder noted", "labels", "figures", "buttons"));
}

TEST_F(OrderOfSteps, NextPhoto) {
    addPhoto("next.jpg", 2000, 3000);
    window->FillFileList();
    EXPECT_THAT(
        stepsOf([this] { clickFile("next.jpg"); }),
        ElementsAre("figures", "buttons", "labels", "preview", "figures", "buttons", "labels"));
}

} // namespace
} // namespace veldara::test
