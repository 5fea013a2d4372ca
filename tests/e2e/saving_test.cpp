// The whole way from a photo to the tile files, which other readers than the program's own read.
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "gui/folder_list_box.h"
#include "platform/text/path_text.h"
#include "support/fake_print_system.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr int side = 1080; // of the square photo; three tiles wide and two high use all of it
constexpr int tileWidth = side / 3;
constexpr int tileHeight = side / 2;

class Poster {
  public:
    explicit Poster(Painter painter) {
        writeBitmap(stage.photos() / "square.bmp", side, side, painter);
        stage.store("paperRegLine", letterLine);
        stage.store("prefs_numTiles", "w02h01");
        stage.start();
        stage.pickPhoto("square.bmp");
    }

    fs::path folder() const { return stage.photos() / "square_poster_images"; }

    fs::path tile(int number, const std::string& ending) const {
        return folder() / ("square00" + std::to_string(number) + ending);
    }

    std::size_t fileCount() const {
        return fs::exists(folder())
                   ? static_cast<std::size_t>(
                         std::distance(fs::directory_iterator(folder()), fs::directory_iterator()))
                   : 0;
    }

    void openSaveDialog() {
        user.click("frmMain", "cmdSaveNow");
        user.waitForWindow("frmSaveTiles");
    }

    void save() { user.click("frmSaveTiles", "cmdSaveNow"); }

    void acceptResult() {
        user.waitForWindow("frmSimpleMsg");
        user.click("frmSimpleMsg", "cmdOk");
        user.waitForWindowToGo("frmSimpleMsg");
    }

    mutable Stage stage;
    Driver& user = stage.user();
};

void expectTile(const fs::path& file, int left, int top, Painter painter, int tolerance) {
    const ReadPicture picture = readPicture(file);
    ASSERT_EQ(picture.width, tileWidth) << file;
    ASSERT_EQ(picture.height, tileHeight) << file;
    EXPECT_NEAR(picture.dotsPerInch, tileWidth / 6.0, 0.5) << file;
    int worst = 0;
    for (int y = 0; y < tileHeight; ++y) {
        for (int x = 0; x < tileWidth; ++x) {
            const Colour expected = painter(left + x, top + y);
            const Colour found = picture.at(x, y);
            for (std::size_t channel = 0; channel < 3; ++channel) {
                worst = std::max(worst, std::abs(expected[channel] - found[channel]));
            }
        }
    }
    EXPECT_LE(worst, tolerance) << file;
}

void expectPoster(const Poster& poster, const std::string& ending, Painter painter, int tolerance) {
    EXPECT_EQ(poster.fileCount(), 6U);
    for (int i = 0; i < 6; ++i) {
        expectTile(poster.tile(i + 1, ending), i % 3 * tileWidth, i / 3 * tileHeight, painter,
                   tolerance);
    }
}

struct PhotoRectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// Where a tile was cut from the photo whose colours say their places; the tile is as large as that.
PhotoRectangle rectangleOf(const ReadPicture& tile) {
    const auto column = [](const Colour& colour) { return colour[0] + (colour[2] & 15) * 256; };
    const auto row = [](const Colour& colour) { return colour[1] + (colour[2] >> 4) * 256; };
    const Colour first = tile.at(0, 0);
    const Colour last = tile.at(tile.width - 1, tile.height - 1);
    const PhotoRectangle place{column(first), row(first), column(last), row(last)};
    EXPECT_EQ(place.right - place.left + 1, tile.width);
    EXPECT_EQ(place.bottom - place.top + 1, tile.height);
    return place;
}

TEST(Saving, BitmapTilesHoldThePhotosOwnPixels) {
    Poster poster(placeColour);
    poster.openSaveDialog();
    EXPECT_EQ(poster.user.title("frmSaveTiles"), "Save Image Tiles");
    EXPECT_EQ(poster.user.text("frmSaveTiles", "txtNewFolderName"), "square_poster_images");
    EXPECT_EQ(poster.user.text("frmSaveTiles", "txtBaseFileName"), "square");
    EXPECT_TRUE(poster.user.isChecked("frmSaveTiles", "opbBmp"));
    poster.save();
    poster.user.waitForWindow("frmSimpleMsg");
    EXPECT_EQ(poster.user.text("frmSimpleMsg", "lblTitle"), "Images Saved Successfully");
    poster.acceptResult();
    EXPECT_FALSE(poster.user.isShown("frmSaveTiles"));
    expectPoster(poster, ".bmp", placeColour, 0);
}

TEST(Saving, TiffTilesHoldThePhotosOwnPixels) {
    Poster poster(placeColour);
    poster.openSaveDialog();
    poster.user.click("frmSaveTiles", "opbTif");
    poster.save();
    poster.acceptResult();
    expectPoster(poster, ".tif", placeColour, 0);
}

TEST(Saving, JpegTilesHoldThePhotosPixelsNearly) {
    Poster poster(smoothColour);
    poster.openSaveDialog();
    poster.user.click("frmSaveTiles", "opbJpg");
    poster.save();
    poster.acceptResult();
    expectPoster(poster, ".jpg", smoothColour, 8);
}

TEST(Saving, NamesAreTypedAndTheWholeRunIsDoneByKeyboardAlone) {
    Poster poster(placeColour);
    poster.user.key('S', wxMOD_ALT);
    poster.user.waitForWindow("frmSaveTiles");
    poster.user.key('N', wxMOD_ALT);
    EXPECT_TRUE(poster.user.hasFocus("frmSaveTiles", "txtNewFolderName"));
    poster.user.retype("sheets");
    EXPECT_THAT(poster.user.text("frmSaveTiles", "lblPath"), HasSubstr("sheets"));
    poster.user.key('A', wxMOD_ALT);
    EXPECT_TRUE(poster.user.hasFocus("frmSaveTiles", "txtBaseFileName"));
    poster.user.retype("part");
    poster.user.key('B', wxMOD_ALT);
    poster.user.key('S', wxMOD_ALT);
    poster.user.waitForWindow("frmSimpleMsg");
    poster.user.key(WXK_RETURN);
    poster.user.waitForWindowToGo("frmSimpleMsg");
    expectTile(poster.stage.photos() / "sheets" / "part001.bmp", 0, 0, placeColour, 0);
    expectTile(poster.stage.photos() / "sheets" / "part006.bmp", 2 * tileWidth, tileHeight,
               placeColour, 0);
}

// What is copied from a table or a terminal often ends with one.
TEST(Saving, APastedNameEndsWhereItsLineEnds) {
    Poster poster(placeColour);
    poster.openSaveDialog();
    poster.user.copy("sheets\nand more\n");
    poster.user.key('N', wxMOD_ALT);
    poster.user.retype("two ");
    poster.user.key('V', wxMOD_CONTROL);
    EXPECT_EQ(poster.user.text("frmSaveTiles", "txtNewFolderName"), "two sheets");
    poster.user.type("!");
    EXPECT_EQ(poster.user.text("frmSaveTiles", "txtNewFolderName"), "two sheets!");
    poster.save();
    poster.acceptResult();
    EXPECT_TRUE(fs::exists(poster.stage.photos() / "two sheets!" / "square001.bmp"));
}

TEST(Saving, SavingAgainAsksAndOverwritesOnlyOnYes) {
    Poster poster(placeColour);
    poster.openSaveDialog();
    poster.save();
    poster.acceptResult();
    fs::remove(poster.tile(3, ".bmp"));

    poster.openSaveDialog();
    poster.save();
    EXPECT_THAT(poster.user.waitForMessage(), HasSubstr("already exists."));
    poster.user.answerByMouse(Answer::no);
    poster.user.waitForWindowToGo("frmSaveTiles");
    EXPECT_FALSE(fs::exists(poster.tile(3, ".bmp")));

    poster.openSaveDialog();
    poster.save();
    poster.user.waitForMessage();
    poster.user.answerByMouse(Answer::yes);
    poster.acceptResult();
    expectPoster(poster, ".bmp", placeColour, 0);
}

TEST(Saving, CancelHalfWayKeepsWholeTilesOnly) {
    Stage stage;
    writeJpeg(stage.photos() / "large.jpg", 4500, 4500);
    stage.store("paperRegLine", letterLine);
    stage.store("prefs_numTiles", "w14h09"); // 15 x 10 tiles
    stage.start();
    stage.pickPhoto("large.jpg");
    Driver& user = stage.user();
    user.click("frmMain", "cmdSaveNow");
    user.click("frmSaveTiles", "opbTif");
    user.click("frmSaveTiles", "cmdSaveNow");
    user.waitForWindow("frmMsg");
    user.click("frmMsg", "cmdCancel");
    EXPECT_EQ(user.waitForMessage(), "Canceled by user");
    user.answerByMouse(Answer::ok);
    user.waitForWindowToGo("frmMsg");

    const fs::path folder = stage.photos() / "large_poster_images";
    std::size_t files = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        EXPECT_EQ(entry.path().extension(), ".tif") << entry.path();
        const ReadPicture tile = readPicture(entry.path());
        EXPECT_GT(tile.width, 0);
        ++files;
    }
    std::cout << "canceled after " << files << " of 150 tiles\n";
    EXPECT_LT(files, 150U);
    // The window is usable as before.
    EXPECT_TRUE(user.isEnabled("frmMain", "cmdSaveNow"));
}

int widthOf(Driver& user, const char* window) {
    return user.onWindowThread([&] { return Driver::window(window)->GetSize().x; });
}

// Blanks leave the way to the tiles without the breaks that it gets elsewhere.
TEST(Saving, ALongWayOfManyWordsLeavesTheWindowsTheirShape) {
    Stage stage;
    fs::path folder = stage.photos();
    for (int level = 10; level < 22; ++level) {
        folder /= "part " + std::to_string(level);
    }
    fs::create_directories(folder);
    writeBitmap(folder / "one of many.bmp", 900, 600, smoothColour);
    stage.store("last_folder", pathText(folder));
    stage.start();
    stage.pickPhoto("one of many.bmp");
    Driver& user = stage.user();
    const int most = widthOf(user, "frmMain") * 3 / 4;
    user.click("frmMain", "cmdSaveNow");
    user.waitForWindow("frmSaveTiles");
    EXPECT_LT(widthOf(user, "frmSaveTiles"), most);
    EXPECT_THAT(user.text("frmSaveTiles", "lblPath"), HasSubstr("\n"));
    EXPECT_TRUE(user.onWindowThread([] {
        const auto* list =
            dynamic_cast<const FolderListBox*>(Driver::widget("frmSaveTiles", "dirTile"));
        return list->GetClientRect().Contains(list->placeOf(list->currentEntry()));
    })) << "the folder is not seen whole";
    user.click("frmSaveTiles", "cmdSaveNow");
    user.waitForWindow("frmSimpleMsg");
    EXPECT_LT(widthOf(user, "frmSimpleMsg"), most);
    EXPECT_THAT(user.text("frmSimpleMsg", "lnkFol"), HasSubstr("\n"));
}

// The message, below it the bar, below that the Cancel button; and no room for what is not shown.
TEST(Saving, TheProgressWindowIsAsHighAsWhatItShows) {
    Stage stage;
    stage.user().onWindowThread([] {
        SystemPlatform system;
        WxEventPump pump;
        WxScreen screen(pump);
        WxDialogs dialogs([] { return nullptr; });
        FakePrintSystem printing;
        Platform platform = system.with(dialogs, pump, printing);
        frmMsg message(platform, screen);
        const auto height = [] { return Driver::window("frmMsg")->GetClientSize().y; };
        const auto bottom = [](const char* name) {
            return Driver::widget("frmMsg", name)->GetRect().GetBottom();
        };
        message.bAllowCancel = true;
        message.ShowProgressBar("Working");
        const int withCancel = height();
        EXPECT_LT(bottom("lblMsg"), bottom("picProgressBar"));
        EXPECT_LT(bottom("picProgressBar"), bottom("cmdCancel"));
        EXPECT_LT(bottom("cmdCancel"), withCancel);
        message.bAllowCancel = false;
        message.SetMode(progressMode);
        const int withBar = height();
        EXPECT_LT(bottom("picProgressBar"), withBar);
        EXPECT_LT(withBar, withCancel);
        message.SetMode(messageMode);
        EXPECT_LT(bottom("lblMsg"), height());
        EXPECT_LT(height(), withBar);
        message.unload();
    });
}

TEST(Saving, ZoomedAndMovedPosterIsTheOneThatIsSaved) {
    Poster poster(placeColour);
    poster.user.dragSlider("frmMain", "scrZoom", 100);
    const wxSize box = poster.user.sizeOf("frmMain", "picCur");
    poster.user.drag("frmMain", "picCur", {box.x / 2, box.y / 2}, {box.x / 2 + 30, box.y / 2 - 20});
    poster.openSaveDialog();
    poster.save();
    poster.acceptResult();

    // Every pixel says where in the photo it stood.
    std::array<PhotoRectangle, 6> tiles;
    for (int i = 0; i < 6; ++i) {
        tiles.at(static_cast<std::size_t>(i)) =
            rectangleOf(readPicture(poster.tile(i + 1, ".bmp")));
    }
    EXPECT_GT(tiles[0].left + tiles[5].right, side); // moved to the right
    EXPECT_LT(tiles[0].top + tiles[5].bottom, side); // and up
    for (std::size_t i = 0; i < 6; ++i) {
        if (i % 3 > 0) {
            EXPECT_NEAR(tiles[i].left, tiles[i - 1].right + 1, 1) << i; // each side is rounded
        }
        if (i >= 3) {
            EXPECT_NEAR(tiles[i].top, tiles[i - 3].bottom + 1, 1) << i;
        }
    }
}

} // namespace

} // namespace veldara::test
