#include "platform/files/file_error.h"
#include "platform/files/whole_file.h"
#include "support/temp_folder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(std::size_t count, unsigned seed = 1) {
    Bytes bytes(count);
    unsigned state = seed;
    for (std::uint8_t& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24U);
    }
    return bytes;
}

Bytes contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::size_t filesIn(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

std::string complaint(const std::filesystem::path& file, const Bytes& bytes) {
    try {
        writeWholeFile(file, bytes);
        return {};
    } catch (const FileError& error) {
        return error.what();
    }
}

class AWholeFile : public ::testing::Test {
  protected:
    TempFolder folder;
    std::filesystem::path file = folder.path() / pathOf("Gr\xC3\xBC\xC3\x9F"
                                                        "e \xE2\x9C\x93.bin");
};

TEST_F(AWholeFile, HoldsTheBytes) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{5'000'000}}) {
        writeWholeFile(file, bytesOf(size));
        EXPECT_EQ(contentOf(file), bytesOf(size));
        EXPECT_EQ(filesIn(folder.path()), 1U) << "nothing else is left";
    }
}

TEST_F(AWholeFile, ReplacesAFile) {
    writeWholeFile(file, bytesOf(1000, 1));
    writeWholeFile(file, bytesOf(10, 2));
    EXPECT_EQ(contentOf(file), bytesOf(10, 2));
}

TEST_F(AWholeFile, IsWrittenPieceByPieceAndHasItsNameAtTheEndOnly) {
    Bytes all;
    WholeFile writer(file);
    for (unsigned i = 0; i < 40; ++i) {
        const Bytes piece = bytesOf(i * 997, i);
        writer.write(piece);
        all.insert(all.end(), piece.begin(), piece.end());
    }
    writer.write("and a text");
    const std::string text = "and a text";
    all.insert(all.end(), text.begin(), text.end());
    EXPECT_FALSE(std::filesystem::exists(file));
    writer.commit();
    EXPECT_EQ(contentOf(file), all);
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST_F(AWholeFile, LeavesTheOldOneWhenItIsGivenUp) {
    writeWholeFile(file, bytesOf(100));
    {
        WholeFile writer(file);
        writer.write(bytesOf(100'000));
        EXPECT_EQ(filesIn(folder.path()), 2U);
    }
    EXPECT_EQ(filesIn(folder.path()), 1U);
    WholeFile writer(file);
    writer.giveUp();
    EXPECT_EQ(filesIn(folder.path()), 1U);
    EXPECT_EQ(contentOf(file), bytesOf(100));
}

TEST_F(AWholeFile, CanBePassedOn) {
    std::vector<WholeFile> writers;
    writers.emplace_back(folder.path() / "a");
    writers.emplace_back(folder.path() / "b");
    writers.emplace_back(std::move(writers[0]));
    writers[1] = std::move(writers[2]);
    writers[1].write("a");
    writers[1].commit();
    writers.clear();
    EXPECT_EQ(folder.content("a"), "a");
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST_F(AWholeFile, NamesTheFileThatFailedAndLeavesNothing) {
    const std::filesystem::path missing = folder.path() / "no such folder" / "a.bin";
    const std::string text = complaint(missing, bytesOf(10));
    EXPECT_EQ(text.find("Could not write \"" + textOf(missing) + "\": "), 0U) << text;
    const std::filesystem::path taken = folder.path() / "a folder";
    std::filesystem::create_directory(taken);
    std::ofstream(taken / "inside") << "x";
    EXPECT_NE(complaint(taken, bytesOf(10)), "");
    EXPECT_EQ(filesIn(folder.path()), 1U);
    EXPECT_TRUE(std::filesystem::exists(taken / "inside"));
}

TEST_F(AWholeFile, HasATemporaryNameThatNobodyCanGuess) {
    const auto temporaryName = [&] {
        const WholeFile writer(file);
        return std::filesystem::directory_iterator(folder.path())->path().filename().string();
    };
    const std::string first = temporaryName();
    EXPECT_NE(first, temporaryName());
    EXPECT_EQ(first.size(), std::string(".veldara-0123456789abcdef.tmp").size());
    EXPECT_EQ(first.rfind(".veldara-", 0), 0U);
}

} // namespace
} // namespace veldara::test
