// The whole way through the main window and the save dialog with everything switched on at once:
// a turned photo, turned tiles, margins and compensated edges, down to the files' pixels.
#include "app/frmMain.h"
#include "platform/files/whole_file.h"
#include "save_support.h"
#include "support/disk_file_system.h"
#include "support/temp_folder.h"

#include <algorithm>

namespace veldara::test {
namespace {

constexpr int photoWidth = 600;
constexpr int photoHeight = 400;

class WholeWay : public ::testing::Test {
  protected:
    WholeWay() {
        const char* const preferences = R"(Software\Korvane\omra)";
        fakes.registry.putText(preferences, "last_folder", temp.text());
        // 2.5 x 3 inches are left of the paper; the third profile cuts off 2, 6, 3 and 6 / 64 inch.
        fakes.registry.putText(preferences, "paperRegLine",
                               "|0|Custom (Inches)|3|4|0|0|0|0|0.5|0.25|0.5|0.25|");
        fakes.registry.putText(preferences, "prefs_edgeAdjust", "1_02");
        fakes.registry.putText(preferences, "prefs_numTiles", "w01h01"); // 2 x 2
        writeWholeFile(temp.path() / "photo.bmp",
                       encodeImage(photo.view(), TileFormat::bmp, 300, {}));
    }

    void save() {
        fakes.screen.whenModal("frmSaveTiles", [](Window& dialog) {
            static_cast<frmSaveTiles&>(dialog).cmdSaveNow.userClick();
        });
        window.cmdSaveNow.userClick();
        EXPECT_TRUE(fakes.dialogs.quiet());
    }

    // A pixel of the photo turned clockwise.
    std::array<int, 3> turnedPixel(int x, int y) const {
        return pixelOf(photo, y, photoHeight - 1 - x);
    }

    const TempFolder temp;
    const Image photo = patternedImage(photoWidth, photoHeight);
    TestPlatform fakes{static_cast<char>(std::filesystem::path::preferred_separator)};
    DiskFileSystem files;
    DiskDrives drives{temp.path()};
    Platform platform = fakes.withDisk(files, drives);
    frmMain window{platform, fakes.screen};
};

TEST_F(WholeWay, EndsWithTheRightPixels) {
    window.load();
    window.lstFiles.userClick(0);
    window.cmbRotate.userSelect(1);
    window.chkRotateTiles.userSetChecked(true);
    // Two tiles of 2.921875 inches across, two of 2.3125 down.
    EXPECT_EQ(window.lblFinalSize.caption(), "5.84 x 4.63 inches");
    save();

    // The crop is 400 pixels across and 316.58, so 317 down, 142 (141.5) from the top of the 600;
    // the tiles end at 299.5 and 457.5, which go to the even side.
    const TileRect tiles[] = {
        {0, 142, 199, 300}, {200, 142, 399, 300}, {0, 300, 199, 458}, {200, 300, 399, 458}};
    for (int number = 0; number < 4; ++number) {
        const std::string bytes =
            temp.content("photo_poster_images/photo00" + std::to_string(number + 1) + ".bmp");
        ASSERT_FALSE(bytes.empty());
        const Bitmap file({bytes.begin(), bytes.end()});
        // A turned tile is 159 x 200 pixels; 159 on 2.3125 inches are 68.76 to the inch, and
        // 2, 6, 3, 6 sixty-fourths of that are 2, 6, 3 and 6 whole pixels.
        ASSERT_EQ(file.width, 6 + 159 + 6);
        ASSERT_EQ(file.height, 2 + 200 + 3);
        EXPECT_EQ(file.dotsPerInch(), 69);
        const TileRect& tile = tiles[number];
        for (int y = 0; y < file.height; ++y) {
            for (int x = 0; x < file.width; ++x) {
                const int column = std::clamp(x - 6, 0, 158);
                const int row = std::clamp(y - 2, 0, 199);
                ASSERT_EQ(file.at(x, y), turnedPixel(tile.right - row, tile.top + column))
                    << "tile " << number + 1 << " at " << x << ", " << y;
            }
        }
    }
}

} // namespace
} // namespace veldara::test
