// Random use of the main window, also in the middle of its work, with what must hold after every
// event whatever came before it.
#include "layout/output_figures.h"
#include "main_fixture.h"
#include "monkey.h"
#include "platform/text/characters.h"

#include <random>

namespace veldara::test {
namespace {

// A user who looks at every dialog and closes it again.
class ImpatientScreen : public Screen {
  public:
    void show(Window&) override {}
    void hide(Window&) override {}
    void showModal(Window& window) override { window.userClose(); }
    void endProgram() override { ended = true; }
    bool ended = false;
};

class MainMonkey : public MainWindowTest {
  protected:
    MainMonkey() {
        fakes.tree.addFolder("/photos/summer");
        fakes.drives.plug("/media/stick");
        const std::vector<std::pair<int, int>> shapes{{60, 40},  {40, 60},  {25, 25},
                                                      {300, 31}, {31, 300}, {24, 80}};
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            addPhoto("photo" + std::to_string(i) + ".jpg", shapes[i].first, shapes[i].second);
        }
        fakes.tree.addFile("/photos/broken.bmp");
        fakes.tree.addFile("/photos/long.jpeg");
        fakes.tree.addFile("/photos/summer/photo1.jpg");
    }

    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); }
    bool often() { return pick(2) == 0; }

    void useBrowser() {
        frmMain& main = *window;
        switch (pick(32)) {
        case 0:
            main.Drive1.userSelect(pick(3) - 1);
            break;
        case 1:
            main.Dir1.userOpen(pick(8));
            break;
        case 2:
            main.cmbFileType.userSelect(pick(3) != 0 ? 0 : pick(6) - 1);
            break;
        case 3:
            main.cmdDesktop.userClick();
            break;
        case 4:
            main.cmdMyDoc.userClick();
            break;
        case 5:
        case 6:
        case 7:
        case 8:
        case 9:
            main.Dir1.setPath("/photos");
            break;
        default:
            main.lstFiles.userClick(pick(10));
            break;
        }
    }

    void useLayout() {
        frmMain& main = *window;
        switch (pick(9)) {
        case 0:
            main.cmbTilesWide.userSelect(pick(26));
            break;
        case 1:
            main.cmbTilesHigh.userSelect(pick(26));
            break;
        case 2:
            main.chkLockWh.userSetChecked(often());
            break;
        case 3:
            main.chkRotateTiles.userSetChecked(often());
            break;
        case 4:
            main.cmbRotate.userSelect(pick(4));
            break;
        case 5:
            main.chkPreviewTiles.userSetChecked(often());
            break;
        case 6:
            main.chkPrinterClips.userSetChecked(often());
            break;
        case 7:
            main.cmbCurBtm.userSelect(pick(4));
            break;
        default:
            main.scrZoom.userSetValue(often() ? pick(401) : 0);
            break;
        }
    }

    void useMouse() {
        frmMain& main = *window;
        const auto button = static_cast<MouseButton>(pick(8) == 0 ? 1 + pick(2) : 0);
        const int x = pick(360) - 20;
        const int y = pick(260) - 20;
        switch (pick(8)) {
        case 0:
            main.picCur.userMouseDown(button, x, y);
            break;
        case 1:
        case 2:
            main.picCur.userMouseMove(x, y);
            break;
        case 3:
            main.picCur.userMouseUp(button, x, y);
            break;
        case 4:
            main.imgArrow.userMouseDown(button, pick(100), pick(100));
            break;
        case 5:
            main.imgArrow.userMouseUp(button, 0, 0);
            break;
        default:
            main.tmrImg.tick();
            break;
        }
    }

    void useTheRest() {
        frmMain& main = *window;
        switch (pick(9)) {
        case 0:
            main.picCur.userResize(1 + pick(400), 1 + pick(300));
            break;
        case 1:
            main.tmrResize.tick();
            break;
        case 2:
            main.tmrLoadingImg.tick();
            break;
        case 3:
            main.cmdSaveNow.userClick();
            break;
        case 4:
            main.cmdLargePreview.userClick();
            break;
        case 5:
            main.cmdConfig.userClick();
            break;
        case 6:
            main.cmdEditPaperSize.userClick();
            break;
        case 7:
            main.mnuContent.userClick();
            break;
        default:
            newPaper();
            break;
        }
    }

    void newPaper() {
        const int units = pick(2);
        const double factor = units == 0 ? 1.0 : 25.4;
        int done = 0;
        window->setNewTileVals("Paper", units, (0.8 + pick(200) / 4.0) * factor * 0.95,
                               (0.8 + pick(200) / 4.0) * factor * 0.95, 10, 10, "line", done);
    }

    void actOnce() {
        switch (pick(10)) {
        case 0:
        case 1:
            useBrowser();
            break;
        case 2:
        case 3:
        case 4:
            useLayout();
            break;
        case 5:
        case 6:
        case 7:
            useMouse();
            break;
        default:
            useTheRest();
            break;
        }
    }

    // What holds after every event.
    void expectAllIsWell() {
        const frmMain& main = *window;
        double width = 0.0;
        double height = 0.0;
        const bool sizesOk = main.CheckTileSizes(width, height);
        EXPECT_FALSE(main.bSkipSettingWrite);
        EXPECT_FALSE(main.bSkipOutputUpdate);
        EXPECT_EQ(main.cmbCurBtm.enabled(), main.chkPrinterClips.checked());
        EXPECT_EQ(main.bTileRotated, main.chkRotateTiles.checked());
        EXPECT_EQ(main.lblZoomAmount.caption(), "(" + std::to_string(main.scrZoom.value()) + "%)");
        if (main.chkLockWh.checked()) {
            EXPECT_EQ(main.GetNumTilesWide(), main.GetNumTilesHigh());
        }
        EXPECT_EQ(main.cmdSaveNow.enabled(), main.bImgSelected && sizesOk);
        EXPECT_EQ(main.cmdLargePreview.enabled(), main.bImgSelected && sizesOk);
        EXPECT_FALSE(main.tmrLoadingImg.enabled()) << "nothing is being loaded";
        ASSERT_TRUE(sizesOk);
        expectFigures(width, height);
        if (main.bImgSelected) {
            expectPhoto();
        } else {
            expectNoPhoto();
        }
    }

    void expectFigures(double width, double height) {
        const frmMain& main = *window;
        PosterLayout layout;
        layout.photoWidth = main.lImgWidth;
        layout.photoHeight = main.lImgHeight;
        layout.tilesWide = main.GetNumTilesWide();
        layout.tilesHigh = main.GetNumTilesHigh();
        layout.tileWidthInches = width;
        layout.tileHeightInches = height;
        layout.tilesTurned = main.bTileRotated;
        layout.zoom = main.scrZoom.value();
        const OutputFigures figures =
            outputFigures(layout, main.bImgSelected, unitsOf(main.iCurUnits));
        EXPECT_EQ(main.lblFinalSize.caption(), figures.size);
        EXPECT_EQ(main.lblResolution.caption(), figures.resolution);
        EXPECT_EQ(main.lblQuality.caption(), figures.quality);
        EXPECT_EQ(main.lblMPixVal.caption(), figures.megapixels);
    }

    void expectPhoto() {
        const frmMain& main = *window;
        EXPECT_EQ(main.currentPhoto()->width(), main.lImgWidth);
        EXPECT_EQ(main.currentPhoto()->height(), main.lImgHeight);
        EXPECT_GE(main.lImgWidth, 25);
        EXPECT_GE(main.lImgHeight, 25);
        std::vector<TileRect> tiles;
        ASSERT_EQ(main.CalcTileCoord(tiles), main.GetNumTilesWide() * main.GetNumTilesHigh());
        EXPECT_GE(tiles.front().left, 0);
        EXPECT_GE(tiles.front().top, 0);
        EXPECT_LT(tiles.back().right, main.lImgWidth);
        EXPECT_LT(tiles.back().bottom, main.lImgHeight);
        expectPlacement(main.lblLrValue.caption(), "(full width)", "(left ", "(right ");
        expectPlacement(main.lblTbValue.caption(), "(full height)", "(up ", "(down ");
    }

    // "(center)", the text for the whole side, or one of the two directions with 1 to 100 percent.
    static void expectPlacement(const std::string& text, const std::string& full,
                                const std::string& before, const std::string& after) {
        if (text == "(center)" || text == full) {
            return;
        }
        const std::string& direction = text.rfind(before, 0) == 0 ? before : after;
        ASSERT_EQ(text.rfind(direction, 0), 0U) << text;
        const int percent = std::stoi(text.substr(direction.size()));
        EXPECT_GE(percent, 1);
        EXPECT_LE(percent, 100);
    }

    void expectNoPhoto() const {
        const frmMain& main = *window;
        EXPECT_TRUE(main.currentPhoto()->empty());
        EXPECT_EQ(main.lblLrValue.caption(), "---");
        EXPECT_EQ(main.lblTbValue.caption(), "---");
        EXPECT_FALSE(main.tmrImg.enabled());
        EXPECT_FALSE(main.picCur.pixels());
    }

    std::mt19937 random{20260721}; // the same walk every time
    ImpatientScreen impatient;
};

TEST_F(MainMonkey, NothingGoesWrong) {
    platform.emplace(fakes.platform());
    window = std::make_unique<frmMain>(
        *platform, impatient,
        [this](const auto& path, const StopFlag& stop) { return loadFake(path, stop); });
    window->picCur.setSize(300, 200);
    window->imgArrow.setSize(100, 100);
    window->load();

    int changes = 0;
    window->picCur.observe([&](Property) { ++changes; });
    int depth = 0;
    fakes.eventPump.whileServing = [&] {
        if (depth < 3 && pick(4) == 0) { // the user does not wait for the work to end
            ++depth;
            actOnce();
            --depth;
        }
    };
    const int steps = monkeySteps();
    int withPhoto = 0;
    for (int step = 0; step < steps && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        changes = 0;
        actOnce();
        expectAllIsWell();
        withPhoto += window->bImgSelected ? 1 : 0;
        EXPECT_LT(changes, 200) << "one event draws the preview again and again";
        fakes.dialogs.messages.clear();
        fakes.registry.log.clear();
        fakes.launcher.log.clear();
        loaded.clear();
    }
    EXPECT_FALSE(impatient.ended);
    EXPECT_GT(withPhoto, steps / 4) << "most of the walk went past an empty window";
}

} // namespace
} // namespace veldara::test
