// Settings and profiles that cannot be read or written, over the real files: the program takes its
// defaults, says nothing, and loses nothing that it could not replace.
#include "app/preferences.h"
#include "calibration/frmBtm.h"
#include "platform/files/whole_file.h"
#include "platform/linux/disk_file_system.h"
#include "platform/linux/mounted_drives.h"
#include "platform/linux/value_file_registry.h"
#include "support/child_process.h"
#include "support/temp_folder.h"
#include "support/test_platform.h"

#include <sys/resource.h>
#include <sys/stat.h>

namespace veldara::test {
namespace {

std::string tenMillionOf(char letter) {
    std::string text;
    text.resize(10'000'000, letter);
    return text;
}

class FakeCalibrationOwner : public CalibrationOwner {
  public:
    std::string folder;
    std::vector<std::string> names;
    int getCurUnits() const override { return 0; }
    void UpdateOutputSize() override {}
    bool CheckTileSizesNoTrim(double& width, double& height) const override {
        width = height = 4;
        return true;
    }
    double getConstMinTileSize() const override { return 0.75; }
    double getConstMaxTileSize() const override { return 50; }
    std::string tileSizeAreaName() const override { return "Print Size Per Tile"; }
    void fillProfileList(const std::vector<std::string>& all, int) override { names = all; }
    int activeProfile() const override { return 0; }
    std::string applicationFolder() const override { return folder; }
    bool printTestImage(std::shared_ptr<const Image>) override { return false; }
};

class TheProfiles : public ::testing::Test {
  protected:
    TheProfiles() { owner.folder = disk.text(); }

    std::vector<std::string> read() {
        frmBtm dialog(platform, fakes.screen, owner);
        dialog.initControls();
        EXPECT_TRUE(fakes.dialogs.messages.empty());
        return owner.names;
    }
    // A new profile is made, which writes the file.
    void change() {
        frmBtm dialog(platform, fakes.screen, owner);
        dialog.initControls();
        fakes.dialogs.texts = {"mine"};
        dialog.cmdNew.userClick();
        EXPECT_TRUE(fakes.dialogs.messages.empty());
        EXPECT_EQ(owner.names.back(), "mine");
    }
    static std::vector<std::string> builtIn() {
        return {"default", "Kodak photo lab default", "Fuji photo lab default"};
    }

    TempFolder disk;
    TestPlatform fakes{'/'};
    DiskFileSystem files{disk.text()};
    MountedDrives drives;
    Platform platform = fakes.withDisk(files, drives);
    FakeCalibrationOwner owner;
};

TEST_F(TheProfiles, AreTheBuiltInOnesWithoutAFileAndMakeNone) {
    EXPECT_EQ(read(), builtIn());
    EXPECT_TRUE(std::filesystem::is_empty(disk.path()));
}

TEST_F(TheProfiles, AreTheBuiltInOnesForAFileThatIsNone) {
    std::string bytes;
    for (int i = 0; i < 50'000; ++i) {
        bytes += static_cast<char>(i * 7919 >> 4);
    }
    for (const std::string& content :
         {std::string(), std::string("\r\n"), std::string("no tab\r\n"), bytes, tenMillionOf('\0'),
          tenMillionOf('x')}) {
        disk.addFile("printer_edge_config", content);
        EXPECT_EQ(read(), builtIn()) << content.size();
    }
}

TEST_F(TheProfiles, EndAfterTenMegabytesOfThem) {
    std::string content;
    while (content.size() < 10'000'000) {
        content += "profile " + std::to_string(content.size()) + "\t01,02,03,04,\r\n";
    }
    disk.addFile("printer_edge_config", content);
    EXPECT_EQ(read().size(), 199U);
}

TEST_F(TheProfiles, AreTheFirst199OfMoreAndTheRestGoesWithTheNextChange) {
    std::string content;
    for (int i = 0; i < 250; ++i) {
        content += std::to_string(i) + "\t01,02,03,04,\r\n";
    }
    disk.addFile("printer_edge_config", content);
    const std::vector<std::string> names = read();
    ASSERT_EQ(names.size(), 199U);
    EXPECT_EQ(names.back(), "198");
    change();
    EXPECT_EQ(read().back(), "198") << "the 200th is written and not read again";
}

TEST_F(TheProfiles, AreTheBuiltInOnesForAFolderOrAPipeInTheFilesPlace) {
    disk.addFolder("printer_edge_config");
    EXPECT_EQ(read(), builtIn());
    change();
    EXPECT_TRUE(std::filesystem::is_directory(disk.path() / "printer_edge_config"));
    std::filesystem::remove(disk.path() / "printer_edge_config");
    ASSERT_EQ(::mkfifo((disk / "printer_edge_config").c_str(), 0600), 0);
    EXPECT_EQ(read(), builtIn());
}

TEST_F(TheProfiles, StayAsTheyWereForAUserWithoutRights) {
    const std::string file = disk.addFile("printer_edge_config", "old\t01,02,03,04,\r\n");
    std::filesystem::permissions(disk.path(), std::filesystem::perms(0555));
    std::filesystem::permissions(file, std::filesystem::perms(0444));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        EXPECT_EQ(read(), std::vector<std::string>{"old"});
        change();
    }));
    EXPECT_EQ(disk.content("printer_edge_config"), "old\t01,02,03,04,\r\n");
    std::filesystem::permissions(file, std::filesystem::perms(0));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        EXPECT_EQ(read(), builtIn());
        change();
    }));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(disk.path()), {}), 1);
    std::filesystem::permissions(disk.path(), std::filesystem::perms(0755));
}

TEST_F(TheProfiles, StayAsTheyWereWhenTheDiskIsFull) {
    EXPECT_TRUE(succeedsOnSmallDisk(disk.text(), 8192, [&] {
        disk.addFile("printer_edge_config", "old\t01,02,03,04,\r\n");
        disk.addFile("filler", std::string(4096, 'x'));
        change();
        EXPECT_EQ(disk.content("printer_edge_config"), "old\t01,02,03,04,\r\n");
    }));
}

class ThePreferences : public ::testing::Test {
  protected:
    TempFolder disk;
    ValueFileRegistry registry{disk / "veldara"};
    Preferences preferences{registry};
};

TEST_F(ThePreferences, AreEmptyWhateverIsInTheirPlace) {
    const std::string key = "[Software\\Korvane\\omra]\n";
    for (const std::string& content :
         {std::string(), std::string("rubbish"), tenMillionOf('r'),
          key + "other \"prefs_numTiles\" = 01 02\n", key + "string \"prefs_numTiles\" = \"torn",
          key + "dword \"prefs_numTiles\" = 99999999999999999999\n"}) {
        disk.addFile("veldara/values", content);
        EXPECT_EQ(preferences.read(prefNumTiles), "");
        EXPECT_EQ(preferences.read(prefShowTiles), "");
    }
}

TEST_F(ThePreferences, AreReadWhenTheyAreWild) {
    disk.addFile("veldara/values", "[Software\\Korvane\\omra]\n"
                                   "dword \"prefs_showTiles\" = -2147483648\n"
                                   "dword \"prefs_numTiles\" = 7\n"
                                   "string \"prefs_edgeAdjust\" = \"\\x01\xFF|%s%n\"\n");
    EXPECT_EQ(preferences.read(prefShowTiles), "-2147483648");
    EXPECT_EQ(preferences.read(prefNumTiles), "7");
    EXPECT_EQ(preferences.read(prefEdgeAdjust), "\x01\xFF|%s%n");
}

TEST_F(ThePreferences, AreSilentlyNotKeptWhereNothingCanBeWritten) {
    disk.addFile("veldara", "a file where the folder should be");
    EXPECT_EQ(preferences.write(prefNumTiles, "w03h02"), 1);
    EXPECT_NE(preferences.lastResult(), 0);
    EXPECT_EQ(preferences.read(prefNumTiles), "");
    EXPECT_EQ(disk.content("veldara"), "a file where the folder should be");
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The sanitizers take more address space for themselves than such a limit leaves.
TEST(APhotoThatIsTooLargeForTheMemory, IsRefusedAndTheNextOneLoads) {
    const TempFolder disk;
    const Image large = Image::filled(8000, 6000, 90, 120, 150);
    writeWholeFile(disk.path() / "large.jpg", encodeImage(large.view(), TileFormat::jpeg, 72, {}));
    const Image small = Image::filled(60, 50, 1, 2, 3);
    writeWholeFile(disk.path() / "small.bmp", encodeImage(small.view(), TileFormat::bmp, 72, {}));
    EXPECT_TRUE(succeedsInChild([&] {
        long pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        const auto limit = static_cast<rlim_t>(pages * ::sysconf(_SC_PAGESIZE) + 50'000'000);
        const struct rlimit most = {limit, limit};
        ASSERT_EQ(::setrlimit(RLIMIT_AS, &most), 0);
        for (int round = 0; round < 3; ++round) {
            EXPECT_THROW(loadImage(disk.path() / "large.jpg"), Error);
            EXPECT_EQ(loadImage(disk.path() / "small.bmp").width(), 60);
        }
    }));
}
#endif

} // namespace
} // namespace veldara::test
