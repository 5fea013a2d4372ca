// Every way in which saving can go wrong, made to happen: each has its message, what was written
// before stays whole, and nothing half-made has a final name.
#include "faults/real_save.h"
#include "output/save_messages.h"
#include "support/child_process.h"

#include <csignal>
#include <random>
#include <thread>

namespace veldara::test {
namespace {

using Tiles = std::map<std::string, std::string>;

class SavingFails : public ::testing::Test {
  protected:
    const Tiles expected = undisturbedTiles();
    TempFolder disk;

    // Room for that many tiles and half of another, with the folder's own pages.
    static long roomFor(std::size_t tiles) {
        constexpr long page = 4096;
        constexpr long pagesOfTile = (RealSave::tileBytes + page - 1) / page;
        return page * (pagesOfTile * static_cast<long>(tiles) + pagesOfTile / 2);
    }
};

TEST_F(SavingFails, NotWhenNothingIsWrong) {
    ASSERT_EQ(expected.size(), RealSave::tileCount);
    for (const auto& [name, content] : expected) {
        EXPECT_EQ(static_cast<long>(content.size()), RealSave::tileBytes) << name;
    }
}

// The drive of the dialog's list is "/" here, which has room; the folder lies on a small disk.
TEST_F(SavingFails, WhenTheDiskIsFullAtTheFirstAMiddleOrTheLastTile) {
    for (const std::size_t whole : {std::size_t{0}, std::size_t{2}, RealSave::tileCount - 1}) {
        EXPECT_TRUE(succeedsOnSmallDisk(disk.text(), roomFor(whole), [&] {
            RealSave save(disk.text());
            save.save();
            EXPECT_EQ(save.fakes.dialogs.onlyMessage(), outOfDiskSpaceMessage());
            EXPECT_FALSE(save.saved());
            EXPECT_FALSE(save.progress.loaded());
            expectFirstTiles(save, whole, expected);
        })) << whole;
    }
}

// The other way round: the drive is full, and the folder is a link to a disk with room.
TEST_F(SavingFails, NotWhenOnlyTheDriveIsFull) {
    const TempFolder tables;
    EXPECT_TRUE(succeedsOnSmallDisk("/mnt", roomFor(0), [&] {
        std::filesystem::create_directory_symlink(disk.path(), "/mnt/photos");
        RealSave save("/mnt/photos", tables.addFile("mounts", "/dev/small /mnt ext4 rw 0 0\n"));
        save.save([&] { EXPECT_EQ(save.dialog.drvTile.drive(), "/mnt"); });
        EXPECT_TRUE(save.fakes.dialogs.quiet());
        EXPECT_TRUE(save.saved());
        expectFirstTiles(save, RealSave::tileCount, expected);
    }));
}

TEST_F(SavingFails, WhenTheFolderMayNotBeMade) {
    std::filesystem::permissions(disk.path(), std::filesystem::perms(0555));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        RealSave save(disk.text());
        save.save();
        EXPECT_EQ(save.fakes.dialogs.onlyMessage(), folderNotCreatedMessage(save.folder()));
        EXPECT_FALSE(std::filesystem::exists(save.folder()));
    }));
}

TEST_F(SavingFails, WhenTheFolderMayNotBeWritten) {
    disk.addFile("photo_poster_images/old.txt", "old");
    std::filesystem::permissions(disk.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(disk.path() / "photo_poster_images", std::filesystem::perms(0555));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        RealSave save(disk.text());
        save.save();
        ASSERT_EQ(save.fakes.dialogs.messages.size(), 2U);
        EXPECT_EQ(save.fakes.dialogs.messages[0], folderExistsQuestion(save.folder()));
        EXPECT_EQ(save.fakes.dialogs.messages[1], tileNotSavedMessage());
        EXPECT_EQ(contentOf(save.folder()), (Tiles{{"old.txt", "old"}}));
    }));
}

TEST_F(SavingFails, WhenTheFolderIsTakenAwayHalfWay) {
    RealSave save(disk.text());
    save.fakes.eventPump.whileServing = [&] {
        if (std::filesystem::exists(save.tile(3))) {
            std::filesystem::remove_all(save.folder());
        }
    };
    save.save();
    EXPECT_EQ(save.fakes.dialogs.onlyMessage(), tileNotSavedMessage());
    EXPECT_FALSE(std::filesystem::exists(save.folder()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(disk.path()), {}), 0);
}

TEST_F(SavingFails, WhenAFolderHasATilesName) {
    RealSave save(disk.text());
    disk.addFile("photo_poster_images/photo003.bmp/inside", "kept");
    save.save();
    ASSERT_EQ(save.fakes.dialogs.messages.size(), 2U);
    EXPECT_EQ(save.fakes.dialogs.messages[1], tileNotSavedMessage());
    EXPECT_EQ(disk.content("photo_poster_images/photo003.bmp/inside"), "kept");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(save.folder()), {}), 3);
}

TEST_F(SavingFails, WhenATilesFileMayNotBeWritten) {
    disk.addFile("photo_poster_images/photo002.bmp", "protected");
    std::filesystem::permissions(disk.path(), std::filesystem::perms(0777));
    std::filesystem::permissions(disk.path() / "photo_poster_images", std::filesystem::perms(0777));
    std::filesystem::permissions(disk.path() / "photo_poster_images/photo002.bmp",
                                 std::filesystem::perms(0444));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        RealSave save(disk.text());
        save.save();
        ASSERT_EQ(save.fakes.dialogs.messages.size(), 2U);
        EXPECT_EQ(save.fakes.dialogs.messages[1], tileNotSavedMessage());
        EXPECT_EQ(contentOf(save.folder()), (Tiles{{"photo001.bmp", expected.at("photo001.bmp")},
                                                   {"photo002.bmp", "protected"}}));
    }));
}

TEST_F(SavingFails, WhenANameIsTooLong) {
    RealSave files(disk.text());
    files.save([&] { files.dialog.txtBaseFileName.userSetText(std::string(250, 'n')); });
    EXPECT_EQ(files.fakes.dialogs.onlyMessage(), tileNotSavedMessage());
    EXPECT_TRUE(contentOf(files.folder()).empty());

    RealSave folders(disk.text());
    const std::string name(300, 'f');
    folders.save([&] { folders.dialog.txtNewFolderName.userSetText(name); });
    EXPECT_EQ(folders.fakes.dialogs.onlyMessage(),
              folderNotCreatedMessage(disk.text() + "/" + name));
}

TEST_F(SavingFails, NotWhenOldTilesAreReplaced) {
    disk.addFile("photo_poster_images/photo002.bmp", "old");
    RealSave save(disk.text());
    save.save();
    EXPECT_EQ(save.fakes.dialogs.onlyMessage(), folderExistsQuestion(save.folder()));
    EXPECT_TRUE(save.saved());
    EXPECT_TRUE(contentOf(save.folder()) == expected);
}

TEST_F(SavingFails, NotWhenThePhotosFileHasGoneMeanwhile) {
    const std::string file = disk.addFile("photo.bmp", "removed below");
    RealSave save(disk.text());
    save.save([&] { std::filesystem::remove(file); });
    EXPECT_TRUE(save.saved());
    expectFirstTiles(save, RealSave::tileCount, expected);
}

// Every file that has a final name is one that the run finishes; what was cut off has another name.
TEST_F(SavingFails, LeavingWholeFilesWhenTheProgramIsKilledAtAnyMoment) {
    std::mt19937 random(20);
    std::size_t seen = 0;
    for (int moment = 0; moment < 100; ++moment) {
        const TempFolder folder = TempFolder::inMemory();
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                RealSave save(folder.text());
                save.save();
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 40'000));
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        for (const auto& [name, content] : contentOf(folder / "photo_poster_images")) {
            if (name.rfind(".veldara-", 0) == 0) {
                continue;
            }
            ASSERT_EQ(expected.count(name), 1U) << name;
            EXPECT_TRUE(content == expected.at(name)) << name << " at moment " << moment;
            ++seen;
        }
    }
    EXPECT_GT(seen, 100U) << "the moments were too early to show anything";
}

TEST_F(SavingFails, NotWhenTwoProgramsSaveIntoOneFolder) {
    std::vector<pid_t> programs;
    for (int i = 0; i < 2; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            bool good = true;
            for (int run = 0; run < 20; ++run) {
                RealSave save(disk.text());
                save.save();
                good = good && save.saved();
            }
            ::_exit(good ? 0 : 1);
        }
        programs.push_back(child);
    }
    for (const pid_t program : programs) {
        int status = 0;
        ASSERT_EQ(::waitpid(program, &status, 0), program);
        EXPECT_EQ(status, 0);
    }
    EXPECT_TRUE(contentOf(disk / "photo_poster_images") == expected);
}

} // namespace
} // namespace veldara::test
