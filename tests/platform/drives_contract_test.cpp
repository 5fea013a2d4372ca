#include "platform/error.h"
#include "platform/running_system.h"
#include "platform/text/path_text.h"

#include <algorithm>

namespace veldara::test {
namespace {

class TheDrives : public OnTheRunningSystem {
  protected:
    Drives& drives = system.drives();

    // The same folder, its drive written as the list of drives has it.
    std::string fromItsRoot(const std::string& path) {
        const std::string root = drives.rootOf(drives.driveOf(path));
        return root + path.substr(root.size());
    }
};

using Names = std::vector<std::string>;

TEST_F(TheDrives, AreListedOnceEach) {
    const Names list = drives.list();
    ASSERT_FALSE(list.empty());
    for (const std::string& drive : list) {
        EXPECT_EQ(std::count(list.begin(), list.end(), drive), 1) << drive;
    }
}

TEST_F(TheDrives, IncludeTheOneOfAnyFolder) {
    const Names list = drives.list();
    const std::string drive = drives.driveOf(folder.text());
    EXPECT_NE(std::find(list.begin(), list.end(), drive), list.end()) << drive;
    EXPECT_TRUE(std::filesystem::is_directory(pathOf(drives.rootOf(drive))));
    EXPECT_EQ(drives.driveOf(drives.rootOf(drive)), drive);
}

TEST_F(TheDrives, AreNotKnownOfWhatIsNoFullPath) {
    EXPECT_EQ(drives.driveOf(""), "");
    EXPECT_EQ(drives.driveOf("photos"), "");
}

TEST_F(TheDrives, UseTheSystemsSeparator) {
    EXPECT_EQ(drives.separator(), static_cast<char>(std::filesystem::path::preferred_separator));
}

TEST_F(TheDrives, ShowFoldersAsAPersonSortsThem) {
    for (const char* name : {"Photo 10", "photo 9", "Apple", "banana", "photo 9b"}) {
        folder.addFolder(name);
    }
    folder.addFile("file");
    EXPECT_EQ(drives.subfolders(folder.text()),
              (Names{"Apple", "banana", "photo 9", "photo 9b", "Photo 10"}));
}

TEST_F(TheDrives, ShowFoldersOfEveryAlphabet) {
    const std::string name = "\xC3\x9C"
                             "berblick \xE7\x85\xA7\xE7\x89\x87";
    folder.addFolder(name);
    EXPECT_EQ(drives.subfolders(folder.text()), Names{name});
}

TEST_F(TheDrives, ShowNothingInAnEmptyFolder) {
    EXPECT_EQ(drives.subfolders(folder.text()), Names{});
}

TEST_F(TheDrives, SayWhyAFolderCannotBeRead) {
    const std::string file = folder.addFile("file");
    EXPECT_THROW(drives.subfolders(file), Error);
    EXPECT_THROW(drives.subfolders(""), Error);
    try {
        drives.subfolders(folder / "missing");
        ADD_FAILURE() << "a missing folder was read";
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("missing"), std::string::npos) << error.what();
    }
}

TEST_F(TheDrives, KnowTheWayFromTheRootToAFolder) {
    const std::string end = fromItsRoot(folder.addFolder("a/b"));
    const Names way = drives.foldersDownTo(end);
    ASSERT_GE(way.size(), 3U);
    EXPECT_EQ(way.front(), drives.rootOf(drives.driveOf(end)));
    EXPECT_EQ(way.back(), end);
    EXPECT_EQ(way[way.size() - 2], fromItsRoot(folder / "a"));
    for (std::size_t i = 1; i < way.size(); ++i) {
        EXPECT_EQ(pathOf(way[i]).parent_path(), pathOf(way[i - 1])) << way[i];
    }
}

TEST_F(TheDrives, KnowTheWayToARoot) {
    const std::string root = drives.rootOf(drives.driveOf(folder.text()));
    EXPECT_EQ(drives.foldersDownTo(root), Names{root});
}

TEST_F(TheDrives, KnowTheWayToAFolderWithASeparatorBehindIt) {
    EXPECT_EQ(drives.foldersDownTo(folder.text() + drives.separator()),
              drives.foldersDownTo(folder.text()));
}

TEST_F(TheDrives, ReadACrowdedFolder) {
    constexpr std::size_t folderCount = 2'000;
    // Under Wine making a file takes the longer the more there are.
    constexpr std::size_t fileCount = platformSeparator == '/' ? 48'000 : 1'000;
    const TempFolder crowded = TempFolder::inMemory();
    for (std::size_t i = 0; i < folderCount; ++i) {
        std::filesystem::create_directory(crowded.path() / ("folder " + std::to_string(i)));
    }
    for (std::size_t i = 0; i < fileCount; ++i) {
        std::ofstream(crowded.path() / ("photo " + std::to_string(i) + ".jpg"));
    }
    const Names folders = drives.subfolders(crowded.text());
    ASSERT_EQ(folders.size(), folderCount);
    EXPECT_EQ(folders[2], "folder 2");
    EXPECT_EQ(folders.back(), "folder 1999");
    EXPECT_EQ(system.fileSystem().create()->files(crowded.text()).size(), fileCount);
}

} // namespace
} // namespace veldara::test
