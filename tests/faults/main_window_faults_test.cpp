// The main window over real folders, photos, drives and settings of which something is wrong: it
// says so where there is something to say, and goes on.
#include "app/frmMain.h"
#include "handlers/save_support.h"
#include "platform/files/whole_file.h"
#include "platform/linux/disk_file_system.h"
#include "platform/linux/mounted_drives.h"
#include "platform/linux/value_file_registry.h"
#include "support/child_process.h"
#include "support/temp_folder.h"
#include "support/test_platform.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include <gmock/gmock.h>
#include <malloc.h>
#include <sys/resource.h>

namespace veldara::test {
namespace {

constexpr const char* settingsKey = R"(Software\Korvane\omra)";

class TheMainWindow : public ::testing::Test {
  protected:
    frmMain& start() {
        platform.emplace(Platform{registry, files, fakes.specialFolders, drives, fakes.dialogs,
                                  fakes.launcher, fakes.eventPump, fakes.clock, fakes.printing,
                                  NumberStyle{}, disk / "own", fakes.helpFolder,
                                  fakes.helpFileName});
        window = std::make_unique<frmMain>(*platform, fakes.screen);
        window->picCur.setSize(300, 200);
        window->imgArrow.setSize(100, 100);
        window->load();
        return *window;
    }
    frmMain& startIn(const std::string& folder) {
        registry.setString(RegistryRoot::localMachine, settingsKey, "last_folder", folder);
        return start();
    }
    static void addPhoto(const std::string& path, int width, int height, TileFormat type) {
        writeWholeFile(pathOf(path),
                       encodeImage(patternedImage(width, height).view(), type, 72, {}));
    }
    void click(const std::string& name) {
        const std::vector<std::string>& names = window->lstFiles.items();
        const auto found = std::find(names.begin(), names.end(), name);
        ASSERT_NE(found, names.end()) << name << " is not listed";
        window->lstFiles.userClick(static_cast<int>(found - names.begin()));
    }
    void saveInto(const std::string& folder) {
        fakes.screen.whenModal("frmSaveTiles", [&folder](Window& shown) {
            auto& dialog = static_cast<frmSaveTiles&>(shown);
            dialog.txtNewFolderName.userSetText(folder);
            dialog.cmdSaveNow.userClick();
            dialog.userClose();
        });
        window->cmdSaveNow.userClick();
    }
    std::vector<Message> takeMessages() { return std::exchange(fakes.dialogs.messages, {}); }

    TempFolder disk = TempFolder::inMemory();
    TestPlatform fakes{'/'};
    ValueFileRegistry registry{disk / "settings"};
    DiskFileSystem files{disk / "own"};
    TempFolder tables;
    MountedDrives drives{tables.addFile("mounts")};
    std::optional<Platform> platform;
    std::unique_ptr<frmMain> window;
};

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The sanitizers take more address space for themselves than such a limit leaves.
void leaveMemory(rlim_t bytes) {
    malloc_trim(0); // or the limit would leave what the heap keeps for later as well
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t limit = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + bytes;
    const struct rlimit most = {limit, limit};
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &most), 0);
}

TEST_F(TheMainWindow, NamesAPhotoThatIsTooLargeForTheMemoryAndLoadsTheNextOne) {
    addPhoto(disk / "large.jpg", 8000, 6000, TileFormat::jpeg);
    addPhoto(disk / "small.bmp", 60, 50, TileFormat::bmp);
    EXPECT_TRUE(succeedsInChild([&] {
        startIn(disk.text());
        leaveMemory(50'000'000);
        for (int round = 0; round < 3; ++round) {
            click("large.jpg");
            const std::vector<Message> told = takeMessages();
            ASSERT_EQ(told.size(), 1U);
            EXPECT_EQ(told[0].title, "Invalid Image File Selected");
            EXPECT_THAT(told[0].text, ::testing::HasSubstr("large.jpg"));
            EXPECT_THAT(told[0].text, ::testing::HasSubstr("not enough memory"));
            EXPECT_FALSE(window->bImgSelected);
            click("small.bmp");
            EXPECT_TRUE(window->bImgSelected);
            EXPECT_EQ(window->lImgWidth, 60);
        }
        saveInto("tiles");
        EXPECT_TRUE(std::filesystem::exists(disk.path() / "tiles/small001.bmp"));
        EXPECT_TRUE(fakes.dialogs.messages.empty());
    }));
}

TEST_F(TheMainWindow, KeepsAPhotoThatTheMemoryIsTooSmallToTurn) {
    addPhoto(disk / "photo.bmp", 6000, 4000, TileFormat::bmp);
    EXPECT_TRUE(succeedsInChild([&] {
        startIn(disk.text());
        click("photo.bmp");
        leaveMemory(40'000'000);
        window->cmbRotate.userSelect(1);
        const std::vector<Message> told = takeMessages();
        ASSERT_EQ(told.size(), 1U);
        EXPECT_THAT(told[0].text, ::testing::HasSubstr("not enough memory"));
        EXPECT_EQ(window->cmbRotate.listIndex(), 0);
        EXPECT_TRUE(window->bImgSelected);
        EXPECT_EQ(window->lImgWidth, 6000);
    }));
}
#endif

TEST_F(TheMainWindow, ListsFiftyThousandFilesAndLoadsTheLast) {
    const std::string folder = disk.addFolder("crowd");
    for (int i = 0; i < 50'000; ++i) {
        std::ofstream(pathOf(folder + "/p" + std::to_string(i) + ".jpg"));
    }
    addPhoto(folder + "/p50000.bmp", 60, 50, TileFormat::bmp);
    startIn(folder);
    ASSERT_EQ(window->lstFiles.count(), 50'001);
    EXPECT_EQ(window->lstFiles.items().front(), "p0.jpg");
    click("p50000.bmp");
    EXPECT_EQ(window->lImgWidth, 60);
    EXPECT_TRUE(fakes.dialogs.messages.empty());
}

TEST_F(TheMainWindow, MakesTilesOfAPhotoWhoseNameIsNoText) {
    const std::string name = "\xFF\xFE\xC3.bmp";
    addPhoto(disk / name, 60, 50, TileFormat::bmp);
    startIn(disk.text());
    click(name);
    saveInto("\xC0tiles");
    EXPECT_TRUE(fakes.dialogs.messages.empty());
    EXPECT_TRUE(std::filesystem::exists(pathOf(disk / "\xC0tiles/\xFF\xFE\xC3" + "001.bmp")));
}

TEST_F(TheMainWindow, GoesRoundACircleOfLinksOnlyAsFarAsTheSystemDoes) {
    addPhoto(disk / "photo.bmp", 60, 50, TileFormat::bmp);
    std::filesystem::create_symlink(".", disk.path() / "self");
    startIn(disk.text());
    for (int round = 0; round < 60; ++round) {
        const auto& entries = window->Dir1.entries();
        const auto below = std::find_if(entries.begin(), entries.end(), [](const auto& entry) {
            return entry.name == "self" && !entry.isOpen;
        });
        if (below != entries.end()) {
            window->Dir1.userOpen(static_cast<int>(below - entries.begin()));
        }
    }
    EXPECT_LT(window->Dir1.entries().size(), 60U);
    click("photo.bmp");
    EXPECT_TRUE(window->bImgSelected);
    EXPECT_TRUE(fakes.dialogs.messages.empty());
}

TEST_F(TheMainWindow, WorksOnWithTheLoadedPhotoWhateverBecomesOfItsFile) {
    addPhoto(disk / "photo.bmp", 60, 50, TileFormat::bmp);
    startIn(disk.text());
    click("photo.bmp");
    saveInto("before");
    addPhoto(disk / "photo.bmp", 90, 80, TileFormat::bmp);
    saveInto("changed");
    std::filesystem::remove(disk.path() / "photo.bmp");
    saveInto("removed");
    EXPECT_TRUE(fakes.dialogs.messages.empty());
    for (const char* number : {"001", "002", "003", "004"}) {
        const std::string tile = std::string("/photo") + number + ".bmp";
        EXPECT_FALSE(disk.content("before" + tile).empty());
        EXPECT_TRUE(disk.content("changed" + tile) == disk.content("before" + tile));
        EXPECT_TRUE(disk.content("removed" + tile) == disk.content("before" + tile));
    }
    click("photo.bmp");
    EXPECT_EQ(fakes.dialogs.onlyMessage().title, "Invalid Image File Selected");
}

TEST_F(TheMainWindow, OutlivesTheDriveThatItWorksOn) {
    EXPECT_TRUE(succeedsOnSmallDisk("/mnt", 1'000'000, [&] {
        std::filesystem::create_directory("/mnt/stick");
        ASSERT_EQ(::mount("stick", "/mnt/stick", "tmpfs", 0, nullptr), 0);
        tables.addFile("mounts", "/dev/stick /mnt/stick ext4 rw 0 0\n");
        addPhoto("/mnt/stick/one.bmp", 60, 50, TileFormat::bmp);
        addPhoto("/mnt/stick/two.bmp", 60, 50, TileFormat::bmp);
        startIn("/mnt/stick");
        EXPECT_EQ(window->Drive1.drive(), "/mnt/stick");
        click("one.bmp");

        ASSERT_EQ(::umount("/mnt/stick"), 0);
        std::filesystem::remove("/mnt/stick");
        tables.addFile("mounts");
        saveInto("tiles");
        std::vector<Message> told = takeMessages();
        ASSERT_EQ(told.size(), 1U);
        EXPECT_EQ(told[0].title, "Invalid Drive");
        EXPECT_EQ(told[0].text, "The drive you chose could not be accessed.");
        EXPECT_TRUE(window->bImgSelected);
        click("two.bmp");
        told = takeMessages();
        ASSERT_EQ(told.size(), 1U);
        EXPECT_EQ(told[0].title, "Invalid Image File Selected");
        EXPECT_FALSE(window->bImgSelected);
        window->FillFileList();
        EXPECT_EQ(window->lstFiles.count(), 0);

        window->Drive1.setDrive("/");
        EXPECT_EQ(window->Dir1.path(), "/");
        EXPECT_TRUE(fakes.dialogs.messages.empty());
    }));
}

class TheMainWindowsSettings : public TheMainWindow {
  protected:
    void expectUsable(const std::string& why) {
        EXPECT_TRUE(fakes.dialogs.messages.empty()) << why;
        EXPECT_GE(std::min(window->GetNumTilesWide(), window->GetNumTilesHigh()), 1) << why;
        EXPECT_LE(std::max(window->GetNumTilesWide(), window->GetNumTilesHigh()), 25) << why;
        EXPECT_FALSE(window->lblPaperName.caption().empty()) << why;
        double width = 0;
        double height = 0;
        EXPECT_TRUE(window->CheckTileSizes(width, height)) << why;
        addPhoto(disk / "photo.bmp", 60, 50, TileFormat::bmp);
        window->Dir1.setPath(disk.text());
        click("photo.bmp");
        EXPECT_TRUE(window->bImgSelected) << why;
    }
    static constexpr const char* threeByThree = "[Software\\Korvane\\omra]\n"
                                                "string \"prefs_numTiles\" = \"w02h02\"\n";
};

TEST_F(TheMainWindowsSettings, MayBeOfAnyTypeAndWild) {
    for (const char* value :
         {"string \"NAME\" = \"\"", "string \"NAME\" = \"\\xFF\\xFE%n%s|||\"",
          "string \"NAME\" = \"99999999999999999999\"", "string \"NAME\" = \"w99h99\"",
          "string \"NAME\" = \"|9|x|-1|1e999|nan|0|0|0|0|0|0|\"", "dword \"NAME\" = -2147483648",
          "other \"NAME\" = 00 01 02 ff"}) {
        std::string content = "[Software\\Korvane\\omra]\n";
        for (const char* name :
             {"last_folder", "prefs_numTiles", "prefs_printSize", "prefs_edgeAdjust", "prefs_units",
              "paperRegLine", "cmbMarginLocked"}) {
            std::string line = value;
            content += line.replace(line.find("NAME"), 4, name) + "\n";
        }
        disk.addFile("settings/values", content);
        start();
        expectUsable(value);
        window->unload();
        EXPECT_TRUE(fakes.dialogs.messages.empty()) << value;
        start();
        expectUsable(std::string("stored again after ") + value);
    }
}

TEST_F(TheMainWindowsSettings, WithoutTheRightToReadThemAreTheDefaultsAndStay) {
    disk.addFile("settings/values", threeByThree);
    std::filesystem::permissions(disk.path() / "settings/values", std::filesystem::perms(0));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        start();
        EXPECT_EQ(window->GetNumTilesWide(), 2);
        window->cmbTilesWide.userSelect(4);
        window->unload();
        EXPECT_TRUE(fakes.dialogs.messages.empty());
    }));
    std::filesystem::permissions(disk.path() / "settings/values", std::filesystem::perms(0644));
    EXPECT_EQ(disk.content("settings/values"), threeByThree);
}

TEST_F(TheMainWindowsSettings, WithoutTheRightToWriteThemAreUsedAndStay) {
    disk.addFile("settings/values", threeByThree);
    std::filesystem::permissions(disk.path() / "settings/values", std::filesystem::perms(0444));
    std::filesystem::permissions(disk.path() / "settings", std::filesystem::perms(0555));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        start();
        EXPECT_EQ(window->GetNumTilesWide(), 3);
        window->cmbTilesWide.userSelect(4);
        window->unload();
        EXPECT_TRUE(fakes.dialogs.messages.empty());
    }));
    std::filesystem::permissions(disk.path() / "settings", std::filesystem::perms(0755));
    EXPECT_EQ(disk.content("settings/values"), threeByThree);
}

} // namespace
} // namespace veldara::test
