#include "image/files.h"
#include "platform/error.h"
#include "platform/image/codec.h"
#include "support/temp_folder.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#ifndef _WIN32
#include <csignal>

#include <sys/resource.h>
#include <unistd.h>
#endif

namespace veldara::test {

namespace {

Bytes contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(stream), {});
}

std::size_t filesIn(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

std::string complaint(const std::filesystem::path& file, const Bytes& bytes) {
    try {
        writeWholeFile(file, bytes);
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

} // namespace

TEST(WholeFile, HoldsTheBytes) {
    const TempFolder folder;
    const std::filesystem::path file = folder.path() / pathOf("Grüße ✓.bin");
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{5'000'000}}) {
        const Bytes bytes = noise(size);
        writeWholeFile(file, bytes);
        EXPECT_EQ(contentOf(file), bytes);
        EXPECT_EQ(filesIn(folder.path()), 1U) << "nothing else is left";
    }
}

TEST(WholeFile, ReplacesAFile) {
    const TempFolder folder;
    const std::filesystem::path file = folder.path() / "a.bin";
    writeWholeFile(file, noise(1000, 1));
    writeWholeFile(file, noise(10, 2));
    EXPECT_EQ(contentOf(file), noise(10, 2));
}

TEST(WholeFile, FailuresNameTheFileAndLeaveNothing) {
    const TempFolder folder;
    const std::filesystem::path missing = folder.path() / "no such folder" / "a.bin";
    const std::string text = complaint(missing, noise(10));
    EXPECT_EQ(text.find("Could not write \"" + textOf(missing) + "\": "), 0U) << text;
    const std::filesystem::path taken = folder.path() / "a folder";
    std::filesystem::create_directory(taken);
    std::ofstream(taken / "inside") << "x";
    EXPECT_NE(complaint(taken, noise(10)), "");
    EXPECT_EQ(filesIn(folder.path()), 1U);
    EXPECT_TRUE(std::filesystem::exists(taken / "inside"));
}

#ifndef _WIN32

TEST(WholeFile, AFullDriveLeavesTheOldFileAndNothingElse) {
    const TempFolder folder;
    const std::filesystem::path file = folder.path() / "a.bin";
    writeWholeFile(file, noise(1000));
    // A limit on the size of files fails like a full drive, at a place of our choice.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{100000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const std::string text = complaint(file, noise(300000));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(text.find("Could not write \"" + textOf(file) + "\": "), 0U) << text;
    EXPECT_EQ(contentOf(file), noise(1000));
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(WholeFile, AFolderWithoutRightsIsNamedAsTheReason) {
    if (geteuid() == 0) {
        // The superuser may write anywhere but into what is no drive.
        EXPECT_NE(complaint("/proc/a.bin", noise(10)), "");
        return;
    }
    const TempFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_read |
                                                    std::filesystem::perms::owner_exec);
    EXPECT_NE(complaint(folder.path() / "a.bin", noise(10)).find("Permission denied"),
              std::string::npos);
    std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
}

TEST(WholeFile, HasTheRightsOfAnyNewFile) {
    const TempFolder folder;
    writeWholeFile(folder.path() / "a.bin", noise(10));
    std::ofstream(folder.path() / "b.bin") << "x";
    EXPECT_EQ(std::filesystem::status(folder.path() / "a.bin").permissions(),
              std::filesystem::status(folder.path() / "b.bin").permissions());
}

#endif

} // namespace veldara::test
