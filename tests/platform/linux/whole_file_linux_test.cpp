#include "platform/files/file_error.h"
#include "platform/files/whole_file.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

#include <cerrno>
#include <csignal>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldara::test {
namespace {

namespace fs = std::filesystem;

long codeOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const FileError& error) {
        return error.code();
    }
    return 0;
}

void write(const fs::path& file, const std::string& text) {
    WholeFile writer(file);
    writer.write(text);
    writer.commit();
}

class AWholeFileOnLinux : public ::testing::Test {
  protected:
    AWholeFileOnLinux() { fs::permissions(folder.path(), fs::perms(0777)); }

    std::size_t files() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
    }

    TempFolder folder;
    fs::path file = folder.path() / "file";
};

TEST_F(AWholeFileOnLinux, LeavesTheOldOneAndNothingElseOnAFullDisk) {
    fs::create_directory(folder.path() / "disk");
    EXPECT_TRUE(succeedsOnSmallDisk(folder / "disk", 64 * 1024, [&] {
        const fs::path onDisk = folder.path() / "disk" / "file";
        write(onDisk, "old");
        EXPECT_EQ(codeOf([&] { write(onDisk, std::string(300'000, 'x')); }), ENOSPC);
        EXPECT_EQ(folder.content("disk/file"), "old");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.path() / "disk"), {}), 1);
    }));
}

TEST_F(AWholeFileOnLinux, IsRefusedByAFolderWithoutRights) {
    fs::create_directory(folder.path() / "locked");
    fs::permissions(folder.path() / "locked", fs::perms(0555));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        try {
            write(folder.path() / "locked" / "file", "x");
            ADD_FAILURE() << "written where nobody may write";
        } catch (const FileError& error) {
            EXPECT_EQ(error.code(), EACCES);
            EXPECT_NE(std::string(error.what()).find("Permission denied"), std::string::npos);
        }
    }));
    fs::permissions(folder.path() / "locked", fs::perms(0755));
}

TEST_F(AWholeFileOnLinux, IsRefusedWhereTheOldOneMayNotBeWritten) {
    write(file, "old");
    fs::permissions(file, fs::perms(0444));
    EXPECT_TRUE(
        succeedsWithoutRights([&] { EXPECT_EQ(codeOf([&] { WholeFile writer(file); }), EACCES); }));
    EXPECT_EQ(folder.content("file"), "old");
    EXPECT_EQ(files(), 1U);
}

TEST_F(AWholeFileOnLinux, HasThePermissionsOfAnyNewFileOrOfTheOldOne) {
    const mode_t mask = ::umask(027);
    write(folder.path() / "new", "x");
    WholeFile own(folder.path() / "own", WholeFile::Rights::ownerOnly);
    own.commit();
    write(file, "old");
    fs::permissions(file, fs::perms(0666));
    write(file, "new");
    ::umask(mask);
    const auto permissions = [&](const char* name) {
        return fs::status(folder.path() / name).permissions();
    };
    EXPECT_EQ(permissions("new"), fs::perms(0640));
    EXPECT_EQ(permissions("own"), fs::perms(0600));
    EXPECT_EQ(permissions("file"), fs::perms(0666));
}

TEST_F(AWholeFileOnLinux, ReplacesWhatALinkPointsTo) {
    fs::create_directory(folder.path() / "elsewhere");
    write(folder.path() / "elsewhere" / "real", "old");
    fs::create_symlink("elsewhere/real", file);
    write(file, "new");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(folder.content("elsewhere/real"), "new");
    fs::create_symlink("elsewhere/none yet", folder.path() / "early");
    write(folder.path() / "early", "made");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "early"));
    EXPECT_EQ(folder.content("elsewhere/none yet"), "made");
}

TEST_F(AWholeFileOnLinux, MayBeNamedWithoutAFolder) {
    EXPECT_TRUE(succeedsInChild([&] {
        fs::current_path(folder.path());
        write("bare", "x");
    }));
    EXPECT_EQ(folder.content("bare"), "x");
    EXPECT_EQ(files(), 1U);
}

TEST_F(AWholeFileOnLinux, IsOldOrNewWheneverItsWriterIsKilled) {
    const std::string texts[2] = {std::string(30'000, 'a'), std::string(70'000, 'b')};
    write(file, texts[0]);
    for (int round = 0; round < 40; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (int i = 0;; ++i) {
                write(file, texts[i % 2]);
            }
        }
        ::usleep(static_cast<useconds_t>(200 + round * 397 % 9000));
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        const std::string content = folder.content("file");
        EXPECT_TRUE(content == texts[0] || content == texts[1]) << content.size();
    }
}

} // namespace
} // namespace veldara::test
