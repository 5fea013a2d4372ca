#include "platform/linux/value_file_registry.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldara::test {
namespace {

constexpr RegistryRoot root = RegistryRoot::localMachine;
const std::string key = "Software\\Test\\program";

class TheRegistryFile : public ::testing::Test {
  protected:
    std::string text(const std::string& name) {
        RegistryValue value;
        return registry.queryValue(root, key, name, value) == 0 ? value.text : std::string();
    }
    std::filesystem::path file(const std::string& name = "values") const {
        return folder.path() / "veldara" / name;
    }
    void expectNothingBeside() {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path() / "veldara")) {
            const std::string name = entry.path().filename().string();
            EXPECT_TRUE(name == "values" || name == "values.lock") << name;
            ++count;
        }
        EXPECT_LE(count, 2U);
    }

    TempFolder folder;
    ValueFileRegistry registry{folder / "veldara"};
};

TEST_F(TheRegistryFile, IsMadeByTheFirstWritingAndNotByReading) {
    EXPECT_EQ(text("a"), "");
    EXPECT_NE(registry.openKey(root, key), 0);
    EXPECT_FALSE(std::filesystem::exists(file().parent_path()));
    EXPECT_EQ(registry.setString(root, key, "a", "1"), 0);
    EXPECT_EQ(
        folder.content("veldara/values"),
        "[Software]\n\n[Software\\Test]\n\n[Software\\Test\\program]\nstring \"a\" = \"1\"\n");
    expectNothingBeside();
}

TEST_F(TheRegistryFile, IsTheUsersAlone) {
    ASSERT_EQ(registry.setString(root, key, "a", "1"), 0);
    struct stat status = {};
    ASSERT_EQ(::stat(file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(TheRegistryFile, KeepsItsRightsAndStaysALinkWhenItIsOne) {
    folder.addFile("elsewhere/mine", "");
    std::filesystem::create_directories(file().parent_path());
    std::filesystem::create_symlink("../elsewhere/mine", file());
    std::filesystem::permissions(folder.path() / "elsewhere/mine",
                                 std::filesystem::perms::owner_read |
                                     std::filesystem::perms::owner_write |
                                     std::filesystem::perms::group_read);
    ASSERT_EQ(registry.setString(root, key, "a", "1"), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(file()));
    EXPECT_NE(folder.content("elsewhere/mine"), "");
    struct stat status = {};
    ASSERT_EQ(::stat(file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(TheRegistryFile, LosesOnlyWhatIsDamagedInIt) {
    folder.addFile("veldara/values", "rubbish\n[Software\\Test\\program]\nstring \"a\" = \"kept\"\n"
                                     "string \"b\" = \"torn");
    EXPECT_EQ(text("a"), "kept");
    EXPECT_EQ(text("b"), "");
    EXPECT_EQ(registry.setString(root, key, "c", "new"), 0);
    EXPECT_EQ(text("a"), "kept");
    EXPECT_EQ(text("c"), "new");
}

TEST_F(TheRegistryFile, HasNoValuesWhenItIsGarbageOrHuge) {
    std::string garbage;
    for (int i = 0; i < 70'000; ++i) {
        garbage += static_cast<char>(i * 7919 >> 3);
    }
    // Readable to its last line, so that only the size speaks against it.
    const std::string values = "[" + key + "]\nstring \"a\" = \"1\"\n";
    const std::string huge =
        values + std::string(ValueFileRegistry::largestFile + 1 - values.size(), '\n');
    for (const std::string& content : {garbage, huge, std::string()}) {
        folder.addFile("veldara/values", content);
        RegistryValue value;
        EXPECT_EQ(registry.queryValue(root, key, "a", value), ValueFileRegistry::fileNotFound);
        EXPECT_EQ(registry.setString(root, key, "a", "mended"), 0);
        EXPECT_EQ(text("a"), "mended");
        ASSERT_EQ(std::filesystem::remove(file()), true);
    }
}

TEST_F(TheRegistryFile, GivesACodeWhenAFolderStandsInItsPlace) {
    std::filesystem::create_directories(file());
    RegistryValue value;
    EXPECT_EQ(registry.queryValue(root, key, "a", value), ValueFileRegistry::accessDenied);
    EXPECT_NE(registry.openKey(root, key), 0);
    EXPECT_NE(registry.createKey(root, key), 0);
    EXPECT_NE(registry.setString(root, key, "a", "1"), 0);
    EXPECT_TRUE(std::filesystem::is_directory(file()));
}

TEST_F(TheRegistryFile, GivesACodeWhenAFileStandsInItsFoldersPlace) {
    folder.addFile("veldara", "not a folder");
    RegistryValue value;
    EXPECT_NE(registry.queryValue(root, key, "a", value), 0);
    EXPECT_NE(registry.setNumber(root, key, "a", 1), 0);
    EXPECT_NE(registry.createKey(root, key), 0);
    EXPECT_EQ(folder.content("veldara"), "not a folder");
}

TEST_F(TheRegistryFile, IsNotWaitedForWhenItIsAPipe) {
    std::filesystem::create_directories(file().parent_path());
    ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
    RegistryValue value;
    EXPECT_NE(registry.queryValue(root, key, "a", value), 0);
    EXPECT_NE(registry.setString(root, key, "a", "1"), 0);
}

TEST_F(TheRegistryFile, GivesACodeToAUserWithoutRights) {
    ASSERT_EQ(registry.setString(root, key, "a", "1"), 0);
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(file().parent_path(), std::filesystem::perms(0555));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        RegistryValue value;
        EXPECT_EQ(registry.setString(root, key, "a", "2"), ValueFileRegistry::accessDenied);
        EXPECT_EQ(registry.createKey(root, key + "\\below"), ValueFileRegistry::accessDenied);
        EXPECT_EQ(registry.queryValueFullAccess(root, key, "a", value),
                  ValueFileRegistry::accessDenied);
    }));
    std::filesystem::permissions(file(), std::filesystem::perms(0));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        RegistryValue value;
        EXPECT_EQ(registry.queryValue(root, key, "a", value), ValueFileRegistry::accessDenied);
        EXPECT_EQ(value.type, RegistryType::none);
        EXPECT_EQ(registry.openKey(root, key), ValueFileRegistry::accessDenied);
    }));
    std::filesystem::permissions(file().parent_path(), std::filesystem::perms(0755));
    std::filesystem::permissions(file(), std::filesystem::perms(0600));
    EXPECT_EQ(text("a"), "1");
}

TEST_F(TheRegistryFile, CanBeReadButNotWrittenWithoutTheRightTo) {
    ASSERT_EQ(registry.setString(root, key, "a", "1"), 0);
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(file().parent_path(), std::filesystem::perms(0777));
    std::filesystem::permissions(file("values.lock"), std::filesystem::perms(0666));
    std::filesystem::permissions(file(), std::filesystem::perms(0444));
    EXPECT_TRUE(succeedsWithoutRights([&] {
        EXPECT_EQ(text("a"), "1");
        EXPECT_EQ(registry.setString(root, key, "a", "2"), ValueFileRegistry::accessDenied);
    }));
    EXPECT_EQ(text("a"), "1");
    expectNothingBeside();
}

TEST_F(TheRegistryFile, KeepsItsOldValuesWhenTheDiskIsFull) {
    ASSERT_EQ(registry.setString(root, key, "a", "1"), 0);
    const std::string before = folder.content("veldara/values");
    EXPECT_TRUE(succeedsInChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit most = {200, 200}; // a write past that many bytes fails
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &most), 0);
        EXPECT_NE(registry.setString(root, key, "b", std::string(1000, 'x')), 0);
    }));
    EXPECT_EQ(folder.content("veldara/values"), before);
    expectNothingBeside();
}

TEST_F(TheRegistryFile, TakesNoMoreThanItCanReadAgain) {
    ASSERT_EQ(registry.setString(root, key, "a", "1"), 0);
    EXPECT_EQ(registry.setString(root, key, "b", std::string(2'000'000, 'x')),
              ValueFileRegistry::diskFull);
    EXPECT_EQ(text("a"), "1");
}

TEST_F(TheRegistryFile, RefusesNamesThatWouldBreakItsLines) {
    EXPECT_EQ(registry.createKey(root, ""), ValueFileRegistry::invalidName);
    EXPECT_EQ(registry.createKey(root, "Software\\\\x"), ValueFileRegistry::invalidName);
    EXPECT_EQ(registry.createKey(root, "Software\\"), ValueFileRegistry::invalidName);
    EXPECT_EQ(registry.setString(root, "a\nb", "n", "t"), ValueFileRegistry::invalidName);
    EXPECT_EQ(registry.setString(root, key, std::string("n\0m", 3), "t"),
              ValueFileRegistry::invalidName);
    EXPECT_EQ(registry.setString(root, key, "line\nfeed", "t\nt"), 0);
    EXPECT_EQ(text("line\nfeed"), "t\nt");
}

TEST_F(TheRegistryFile, LosesNoValueOfSeveralProgramsAtOnce) {
    constexpr int programs = 3;
    constexpr int values = 12;
    std::vector<pid_t> children;
    for (int program = 0; program < programs; ++program) {
        const pid_t child = ::fork();
        if (child == 0) {
            int failures = 0;
            for (int i = 0; i < values; ++i) {
                const std::string name = std::to_string(program) + "." + std::to_string(i);
                failures +=
                    ValueFileRegistry(folder / "veldara").setString(root, key, name, name) != 0;
            }
            ::_exit(failures);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    for (int program = 0; program < programs; ++program) {
        for (int i = 0; i < values; ++i) {
            const std::string name = std::to_string(program) + "." + std::to_string(i);
            EXPECT_EQ(text(name), name);
        }
    }
}

TEST_F(TheRegistryFile, IsAlwaysWholeWhenAProgramIsKilledWhileWriting) {
    const std::string filler(3000, 'f');
    ASSERT_EQ(registry.setString(root, key, "filler", filler), 0);
    for (int round = 0; round < 40; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (int i = 0;; ++i) {
                registry.setNumber(root, key, "count", i);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(200 + round * 397 % 9000));
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        EXPECT_EQ(text("filler"), filler) << "after " << round;
    }
    EXPECT_EQ(registry.setString(root, key, "after", "all"), 0);
    EXPECT_EQ(text("after"), "all");
}

TEST_F(TheRegistryFile, HasItsValuesAtTheLargestSize) {
    EXPECT_EQ(ValueFileRegistry::largestFile, 1U << 20U);
    const std::string values = "[" + key + "]\nstring \"a\" = \"1\"\n";
    folder.addFile("veldara/values",
                   values + std::string(ValueFileRegistry::largestFile - values.size(), '\n'));
    EXPECT_EQ(text("a"), "1");
}

TEST_F(TheRegistryFile, DoesNotWaitForeverForAnotherProgram) {
    // A window stands still meanwhile.
    ASSERT_LE(ValueFileRegistry::lockPatience, std::chrono::seconds(2));
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(registry.setString(root, key, "a", "1"), 0);
    const int held = ::open(file("values.lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(held, 0);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    EXPECT_EQ(registry.setString(root, key, "a", "2"), ValueFileRegistry::lockedByAnother);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8 * ValueFileRegistry::lockPatience);
    EXPECT_EQ(text("a"), "1"); // reading needs no lock
    ::close(held);
    EXPECT_EQ(registry.setString(root, key, "a", "3"), 0);
}

} // namespace
} // namespace veldara::test
