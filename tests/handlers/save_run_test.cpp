// A run that writes tiles: what is written, and in which order.
#include "save_support.h"
#include "support/disk_file_system.h"
#include "support/temp_folder.h"

namespace veldara::test {
namespace {

TEST(SaveRun, WritesEveryTileIntoANewFolder) {
    SaveWindows windows;
    windows.save();
    EXPECT_EQ(windows.fakes.fileSystem.foldersMade, std::vector<std::string>{windows.folder()});
    EXPECT_EQ(windows.paths(), (std::vector<std::string>{windows.folder() + "\\IMG_0001001.bmp",
                                                         windows.folder() + "\\IMG_0001002.bmp",
                                                         windows.folder() + "\\IMG_0001003.bmp",
                                                         windows.folder() + "\\IMG_0001004.bmp"}));
    EXPECT_TRUE(windows.fakes.dialogs.quiet());
}

TEST(SaveRun, TilesAreThePhotosOwnPixels) {
    SaveWindows windows;
    windows.owner.tiles = {{3, 5, 20, 11}, {20, 5, 37, 11}};
    windows.save();
    ASSERT_EQ(windows.written.size(), 2U);
    for (std::size_t tile = 0; tile < 2; ++tile) {
        const Bitmap bitmap = windows.bitmap(tile);
        const TileRect rect = windows.owner.tiles[tile];
        ASSERT_EQ(bitmap.width, rect.width());
        ASSERT_EQ(bitmap.height, rect.height());
        for (int y = 0; y < rect.height(); ++y) {
            for (int x = 0; x < rect.width(); ++x) {
                ASSERT_EQ(bitmap.at(x, y),
                          pixelOf(*windows.owner.photo, rect.left + x, rect.top + y));
            }
        }
    }
}

TEST(SaveRun, ThePhotoStaysForTheRunThoughTheMainWindowLetsItGo) {
    SaveWindows windows;
    const std::weak_ptr<const Image> photo = windows.owner.photo;
    int served = 0;
    windows.save([&] {
        windows.fakes.eventPump.whileServing = [&] {
            windows.owner.photo.reset();
            EXPECT_FALSE(photo.expired());
            ++served;
        };
    });
    EXPECT_GT(served, 0);
    EXPECT_EQ(windows.written.size(), 4U);
    EXPECT_TRUE(photo.expired()) << "and no longer";
}

TEST(SaveRun, RotatedTilesAreTurnedCounterClockwise) {
    SaveWindows windows;
    windows.owner.rotated = true;
    windows.owner.tiles = {{3, 5, 20, 11}};
    windows.save();
    const Bitmap bitmap = windows.bitmap(0);
    ASSERT_EQ(bitmap.width, 7);
    ASSERT_EQ(bitmap.height, 18);
    for (int a = 0; a < 7; ++a) {
        for (int b = 0; b < 18; ++b) {
            ASSERT_EQ(bitmap.at(a, b), pixelOf(*windows.owner.photo, 3 + 17 - b, 5 + a));
        }
    }
}

int resolutionOf(int tilePixels, double inches) {
    SaveWindows windows;
    windows.owner.photo = std::make_shared<const Image>(patternedImage(tilePixels, 4));
    windows.owner.tiles = {{0, 0, tilePixels - 1, 3}};
    windows.owner.widthInches = inches;
    windows.save();
    return windows.bitmap(0).dotsPerInch();
}

TEST(SaveRun, ResolutionIsRoundedHalfToEvenAndAtLeastTwo) {
    EXPECT_EQ(resolutionOf(30, 0.2), 150);
    EXPECT_EQ(resolutionOf(301, 2.0), 150); // 150.5
    EXPECT_EQ(resolutionOf(303, 2.0), 152); // 151.5
    EXPECT_EQ(resolutionOf(7, 5.0), 2);     // 1.4
}

TEST(SaveRun, ResolutionOfTheFirstTileHoldsForAll) {
    SaveWindows windows;
    windows.owner.tiles = {{0, 0, 29, 39}, {30, 0, 49, 39}};
    windows.save();
    EXPECT_EQ(windows.bitmap(0).dotsPerInch(), 150);
    EXPECT_EQ(windows.bitmap(1).dotsPerInch(), 150);
}

TEST(SaveRun, ResolutionOfRotatedTilesComesFromTheirHeight) {
    SaveWindows windows;
    windows.owner.rotated = true;
    windows.save(); // 20 pixels high, 0.2 inches wide
    EXPECT_EQ(windows.bitmap(0).dotsPerInch(), 100);
}

TEST(SaveRun, CompensationAddsWhatThePrinterClips) {
    SaveWindows windows;
    windows.owner.compensated = true;
    windows.owner.trims = {1 / 64.0, 2 / 64.0, 3 / 64.0, 4 / 64.0}; // 2.3, 4.7, 7.0, 9.4 pixels
    windows.save();
    const Bitmap bitmap = windows.bitmap(0);
    ASSERT_EQ(bitmap.width, 30 + 4 + 9);
    ASSERT_EQ(bitmap.height, 20 + 2 + 7);
    EXPECT_EQ(bitmap.at(0, 0), pixelOf(*windows.owner.photo, 0, 0));
    EXPECT_EQ(bitmap.at(9, 2), pixelOf(*windows.owner.photo, 0, 0));
    EXPECT_EQ(bitmap.at(9 + 29, 2 + 19), pixelOf(*windows.owner.photo, 29, 19));
    EXPECT_EQ(bitmap.at(42, 28), pixelOf(*windows.owner.photo, 29, 19));
    EXPECT_EQ(bitmap.at(9 + 12, 0), pixelOf(*windows.owner.photo, 12, 0));
    EXPECT_EQ(bitmap.dotsPerInch(), 150);
}

TEST(SaveRun, CompensationByNothingChangesNothing) {
    SaveWindows plain;
    plain.save();
    SaveWindows compensated;
    compensated.owner.compensated = true;
    compensated.save();
    ASSERT_EQ(compensated.written.size(), plain.written.size());
    for (std::size_t i = 0; i < plain.written.size(); ++i) {
        EXPECT_EQ(compensated.written[i].bytes, plain.written[i].bytes);
    }
}

TEST(SaveRun, ACoarseTileIsResampledBeforeItIsCompensated) {
    SaveWindows windows;
    windows.owner.compensated = true;
    windows.owner.widthInches = 0.6; // 50 dots per inch
    windows.owner.trims = {0, 0.25, 0, 0};
    windows.save();
    const Bitmap bitmap = windows.bitmap(0);
    EXPECT_EQ(bitmap.width, 38 + 16); // 30 * 64 / 50 = 38.4
    EXPECT_EQ(bitmap.height, 26);     // 20 * 64 / 50 = 25.6
    EXPECT_EQ(bitmap.dotsPerInch(), 50);
}

TEST(SaveRun, TrimsAreLeftOutWhileCompensationIsOff) {
    SaveWindows windows;
    windows.owner.trims = {0.25, 0.25, 0.25, 0.25};
    windows.save();
    EXPECT_EQ(windows.written.size(), 4U);
    EXPECT_EQ(windows.bitmap(0).width, 30);
}

TEST(SaveRun, EveryFileTypeIsWrittenAsItself) {
    SaveWindows windows;
    windows.save([] {}, "a.tif");
    windows.save([] {}, "a.jpg");
    windows.save([] {}, "a.bmp");
    ASSERT_EQ(windows.written.size(), 12U);
    const auto start = [&](std::size_t file) {
        return std::string(windows.written[file].bytes.begin(),
                           windows.written[file].bytes.begin() + 2);
    };
    EXPECT_EQ(windows.written[0].path, "c:\\photos\\a_poster_images\\a001.tif");
    EXPECT_EQ(start(0), "II");
    EXPECT_EQ(windows.written[4].path, "c:\\photos\\a_poster_images\\a001.jpg");
    EXPECT_EQ(start(4), "\xff\xd8");
    EXPECT_EQ(windows.written[8].path, "c:\\photos\\a_poster_images\\a001.bmp");
    EXPECT_EQ(start(8), "BM");
}

TEST(SaveRun, TheUsersNamesAreUsed) {
    SaveWindows windows('/');
    windows.save([&] {
        windows.dialog.txtBaseFileName.userSetText("wall ");
        windows.dialog.txtNewFolderName.userSetText("big");
        windows.dialog.opbTif.userSelect();
    });
    EXPECT_EQ(windows.paths().front(), "/photos/big/wall 001.tif");
    EXPECT_EQ(windows.paths().back(), "/photos/big/wall 004.tif");
}

TEST(SaveRun, WithoutAFolderNameTheTilesGoStraightIntoTheFolder) {
    SaveWindows windows;
    windows.save([&] { windows.dialog.txtNewFolderName.userSetText(""); });
    EXPECT_EQ(windows.fakes.dialogs.onlyMessage().title, "Folder Exists");
    EXPECT_EQ(windows.paths().front(), "c:\\photos\\IMG_0001001.bmp");
    EXPECT_TRUE(windows.fakes.fileSystem.foldersMade.empty());
}

TEST(SaveRun, ADrivesRootGetsNoSecondSeparator) {
    SaveWindows windows;
    windows.photos = "c:\\";
    windows.save();
    EXPECT_EQ(windows.paths().front(), "c:\\IMG_0001_poster_images\\IMG_0001001.bmp");
}

TEST(SaveRun, TileNumbersGrowBeyondThreeDigits) {
    SaveWindows windows;
    windows.owner.tiles.assign(625, {0, 0, 1, 1});
    windows.save();
    ASSERT_EQ(windows.written.size(), 625U);
    EXPECT_EQ(windows.paths()[8], windows.folder() + "\\IMG_0001009.bmp");
    EXPECT_EQ(windows.paths()[624], windows.folder() + "\\IMG_0001625.bmp");
}

TEST(SaveRun, SuccessEndsWithTheResultWindow) {
    SaveWindows windows;
    windows.save();
    EXPECT_EQ(windows.fakes.screen.log,
              (std::vector<std::string>{"modal frmSaveTiles", "show frmMsg", "hide frmMsg",
                                        "show frmSimpleMsg", "hide frmSaveTiles"}));
    EXPECT_EQ(windows.result.lnkFol.target(), windows.folder());
    EXPECT_FALSE(windows.progress.loaded());
    EXPECT_FALSE(windows.dialog.loaded());
    EXPECT_DOUBLE_EQ(windows.progress.GetProgressVal(), 1.0);
}

TEST(SaveRun, ProgressWindowComesUpAfterTheFolderAndOffersCancel) {
    SaveWindows windows;
    bool seen = false;
    windows.fakes.eventPump.whileServing = [&] {
        seen = true;
        EXPECT_TRUE(windows.fakes.tree.hasFolder(windows.folder()));
        EXPECT_TRUE(windows.progress.visible() || windows.progress.GetProgressVal() >= 1.0);
        EXPECT_TRUE(windows.progress.cmdCancel.visible());
        EXPECT_TRUE(windows.progress.picProgressBar.visible());
        EXPECT_EQ(windows.progress.lblMsg.caption(), "Saving Images Now");
    };
    windows.save();
    EXPECT_TRUE(seen);
}

TEST(SaveRun, ProgressCountsTheTiles) {
    SaveWindows windows;
    std::vector<double> seen;
    windows.fakes.eventPump.whileEventsRun = [&] {
        seen.push_back(windows.progress.GetProgressVal());
    };
    windows.save();
    // Once for the button, once when the window comes up, then tile by tile.
    EXPECT_EQ(seen, (std::vector<double>{0.0, 0.0, 0.25, 0.5, 0.75, 1.0}));
}

TEST(SaveRun, WaitingEventsRunBeforeAnythingElse) {
    SaveWindows windows;
    windows.owner.tableOk = false;
    windows.fakes.dialogs.whileMessageShown = [&](const Message&) {
        EXPECT_EQ(windows.fakes.eventPump.eventRuns, 1);
    };
    windows.save();
    EXPECT_EQ(windows.fakes.dialogs.messages.size(), 1U);
}

// While a run goes on, its dialog keeps still.

TEST(SaveRun, ASecondClickDuringARunDoesNothing) {
    SaveWindows windows;
    windows.fakes.eventPump.whileServing = [&] {
        EXPECT_FALSE(windows.dialog.cmdSaveNow.enabled());
        EXPECT_FALSE(windows.dialog.txtBaseFileName.enabled());
        windows.dialog.cmdSaveNow.userClick();
        windows.dialog.cmdSaveNow_Click();
        windows.dialog.cmdClose.userClick();
        windows.dialog.userClose();
        windows.dialog.txtBaseFileName.userSetText("other");
        windows.dialog.opbJpg.userSelect();
    };
    windows.save();
    EXPECT_EQ(windows.written.size(), 4U);
    EXPECT_EQ(windows.paths().back(), windows.folder() + "\\IMG_0001004.bmp");
}

TEST(SaveRun, ControlsAreThereAgainAtTheNextOpening) {
    SaveWindows windows;
    windows.save();
    windows.open([&] {
        EXPECT_TRUE(windows.dialog.cmdSaveNow.enabled());
        EXPECT_TRUE(windows.dialog.cmdClose.enabled());
        EXPECT_TRUE(windows.dialog.txtBaseFileName.enabled());
    });
}

TEST(SaveRun, RealFilesCanBeReadBack) {
    const TempFolder temp;
    TestPlatform fakes(static_cast<char>(std::filesystem::path::preferred_separator));
    DiskFileSystem files;
    DiskDrives drives(temp.path());
    Platform platform = fakes.withDisk(files, drives);
    FakeSaveOwner owner;
    frmMsg progress(platform, fakes.screen);
    frmSimpleMsg result(platform, fakes.screen);
    frmSaveTiles dialog(platform, fakes.screen, owner, progress, result);
    fakes.screen.whenModal("frmSaveTiles", [&](Window&) { dialog.cmdSaveNow.userClick(); });
    dialog.OpenForPhoto(drives.list().front(), temp.text(), "h\xc3\xb6he.tif");

    EXPECT_TRUE(fakes.dialogs.quiet());
    const std::filesystem::path folder = temp.path() / pathOf("h\xc3\xb6he_poster_images");
    for (int tile = 1; tile <= 4; ++tile) {
        const Image image =
            loadImage(folder / pathOf("h\xc3\xb6he00" + std::to_string(tile) + ".tif"));
        EXPECT_EQ(image.width(), 30);
        EXPECT_EQ(image.height(), 20);
        EXPECT_EQ(image.dotsPerInch, 150);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 4);
}

} // namespace
} // namespace veldara::test
