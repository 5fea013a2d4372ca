#include "platform/error.h"
#include "platform/linux/disk_file_system.h"
#include "platform/linux/mounted_drives.h"
#include "platform/linux/text_files.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

#include <csignal>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldara::test {
namespace {

using namespace std::string_literals;
using Names = std::vector<std::string>;

class Folders : public ::testing::Test {
  protected:
    TempFolder folder;
    DiskFileSystem fileSystem{folder / "own/program"};
    std::unique_ptr<FileSystemObject> object = fileSystem.create();
    MountedDrives drives;
};

TEST_F(Folders, GiveNamesThatAreNoTextByteForByte) {
    const std::string name = "photo \xFF\xFE.jpg";
    const std::string below = "folder \xC3";
    folder.addFile(name, "content");
    folder.addFile(below + "/x.jpg");
    ASSERT_EQ(object->files(folder.text()), Names{name});
    EXPECT_EQ(drives.subfolders(folder.text()), Names{below});
    EXPECT_TRUE(object->fileExists(folder.text() + "/" + name));
    EXPECT_EQ(object->files(folder.text() + "/" + below), Names{"x.jpg"});
    EXPECT_EQ(drives.foldersDownTo(folder.text() + "/" + below).back(),
              folder.text() + "/" + below);
}

TEST_F(Folders, ListFilesAsAPersonSortsThem) {
    for (const char* name : {"IMG10.jpg", "img9.jpg", "a.jpg", "B.jpg"}) {
        folder.addFile(name);
    }
    EXPECT_EQ(object->files(folder.text()), (Names{"a.jpg", "B.jpg", "img9.jpg", "IMG10.jpg"}));
}

TEST_F(Folders, FollowLinksAndPassOverThoseThatLeadNowhere) {
    folder.addFile("real/photo.jpg");
    std::filesystem::create_symlink("real/photo.jpg", folder.path() / "link.jpg");
    std::filesystem::create_symlink("missing.jpg", folder.path() / "broken.jpg");
    std::filesystem::create_symlink("real", folder.path() / "linked");
    std::filesystem::create_symlink("circle", folder.path() / "circle");
    std::filesystem::create_symlink(".", folder.path() / "self");
    EXPECT_EQ(object->files(folder.text()), Names{"link.jpg"});
    EXPECT_EQ(drives.subfolders(folder.text()), (Names{"linked", "real", "self"}));
    EXPECT_THROW(object->files(folder / "circle"), Error);
    EXPECT_THROW(drives.subfolders(folder / "circle"), Error);
    // Going round in a circle of folders ends where the system says it does, not in us.
    std::string deep = folder.text();
    for (int i = 0; i < 60; ++i) {
        deep += "/self";
    }
    EXPECT_THROW(drives.subfolders(deep), Error);
}

TEST_F(Folders, ShowNeitherPipesNorDevicesAsFiles) {
    ASSERT_EQ(::mkfifo((folder / "pipe.jpg").c_str(), 0600), 0);
    EXPECT_EQ(object->files(folder.text()), Names{});
    EXPECT_THROW(object->openTextFile(folder / "pipe.jpg"), Error);
    EXPECT_THROW(object->openTextFile("/dev/zero"), Error);
}

TEST_F(Folders, HideHiddenFolders) {
    folder.addFolder(".hidden");
    folder.addFolder("shown");
    EXPECT_EQ(drives.subfolders(folder.text()), Names{"shown"});
}

TEST_F(Folders, SayWhyTheyCannotBeReadOrWritten) {
    folder.addFile("locked/photo.jpg");
    folder.addFile("readonly/file", "old");
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(folder.path() / "locked", std::filesystem::perms(0));
    std::filesystem::permissions(folder.path() / "readonly", std::filesystem::perms(0555));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        const auto reasonOf = [](const auto& act) {
            try {
                act();
            } catch (const Error& error) {
                return std::string(error.what());
            }
            return std::string("no error");
        };
        const std::string denied = "Permission denied.";
        EXPECT_NE(reasonOf([&] { object->files(folder / "locked"); }).find(denied),
                  std::string::npos);
        EXPECT_NE(reasonOf([&] { drives.subfolders(folder / "locked"); }).find(denied),
                  std::string::npos);
        EXPECT_NE(reasonOf([&] { object->createFolder(folder / "readonly/x"); }).find(denied),
                  std::string::npos);
        EXPECT_NE(reasonOf([&] { object->createTextFile(folder / "readonly/x"); }).find(denied),
                  std::string::npos);
        EXPECT_NE(reasonOf([&] { object->openTextFile(folder / "locked/photo.jpg"); }).find(denied),
                  std::string::npos);
        EXPECT_FALSE(object->fileExists(folder / "locked/photo.jpg"));
        EXPECT_FALSE(object->folderExists(folder / "locked/x"));
    }));
    std::filesystem::permissions(folder.path() / "locked", std::filesystem::perms(0755));
    std::filesystem::permissions(folder.path() / "readonly", std::filesystem::perms(0755));
}

TEST_F(Folders, MakeTheProgramsOwnOneForItsFirstFileOnly) {
    EXPECT_THROW(object->createTextFile(folder / "other/file"), Error);
    EXPECT_FALSE(std::filesystem::exists(folder / "own/program")) << "made when it is needed";
    const auto writer = object->createTextFile(folder / "own/program/profiles");
    writer->writeLine("line");
    writer->close();
    EXPECT_EQ(folder.content("own/program/profiles"), "line\r\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "other"));
}

TEST_F(Folders, KnowTheSpaceThatTheUserMayFill) {
    const auto space = std::filesystem::space(folder.path());
    const double known = static_cast<double>(object->freeSpace(folder.text()));
    EXPECT_NEAR(known, static_cast<double>(space.available),
                0.05 * static_cast<double>(space.capacity));
}

class TextFiles : public ::testing::Test {
  protected:
    TempFolder folder;
};

TEST_F(TextFiles, TakeALineOfAMillionBytesAndRefuseAlongerOne) {
    folder.addFile("longest", std::string(LineReader::longestLine, 'x') + "\nnext\n");
    folder.addFile("longer", std::string(LineReader::longestLine + 1, 'x') + "\n");
    LineReader reader(folder / "longest");
    EXPECT_EQ(reader.readLine().size(), LineReader::longestLine);
    EXPECT_EQ(reader.readLine(), "next");
    EXPECT_THROW(LineReader(folder / "longer").readLine(), Error);
}

TEST_F(TextFiles, CarryAnyBytes) {
    const std::string line = "a\0b\xFF\x80 \t\r c\0"s;
    {
        LineWriter writer(folder / "bytes");
        writer.writeLine(line);
        writer.close();
        writer.close(); // the second time is nothing
    }
    EXPECT_EQ(LineReader(folder / "bytes").readLine(), line);
}

TEST_F(TextFiles, LargerThanABlockComeBackWhole) {
    {
        LineWriter writer(folder / "large");
        for (int i = 0; i < 50'000; ++i) {
            writer.writeLine("line " + std::to_string(i));
        }
        writer.close();
    }
    LineReader reader(folder / "large");
    int count = 0;
    while (!reader.atEndOfStream()) {
        ASSERT_EQ(reader.readLine(), "line " + std::to_string(count++));
    }
    EXPECT_EQ(count, 50'000);
}

TEST_F(TextFiles, KeepTheOldOneWhenTheDiskIsFull) {
    folder.addFile("profiles", "old\r\n");
    EXPECT_TRUE(succeedsInChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit most = {100, 100};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &most), 0);
        LineWriter writer(folder / "profiles");
        writer.writeLine(std::string(500, 'x'));
        EXPECT_THROW(writer.close(), Error);
    }));
    EXPECT_EQ(folder.content("profiles"), "old\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST_F(TextFiles, AreWrittenInBlocksRatherThanHeldWhole) {
    EXPECT_TRUE(succeedsInChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit most = {100, 100};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &most), 0);
        LineWriter writer(folder / "large");
        EXPECT_THROW(writer.writeLine(std::string(100'000, 'x')), Error);
    }));
}

TEST_F(TextFiles, ThatMayNotBeWrittenAreNotReplaced) {
    const std::string file = folder.addFile("profiles", "old\r\n");
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0777));
    std::filesystem::permissions(file, std::filesystem::perms(0444));
    EXPECT_TRUE(succeedsWithoutRights([&] { EXPECT_THROW(LineWriter writer(file), Error); }));
    EXPECT_EQ(folder.content("profiles"), "old\r\n");
}

} // namespace
} // namespace veldara::test
