#include "files.h"
#include "jpeg_files.h"
#include "platform/error.h"
#include "platform/image/memory_limits.h"
#include "platform/image/pixel_memory.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <new>
#include <sstream>

#include <gmock/gmock.h>

#ifdef __linux__
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace veldara::test {

namespace {

constexpr std::uint64_t unlimited = std::numeric_limits<std::uint64_t>::max();

std::uint64_t leftInGroup(const std::string& most, const std::string& used,
                          const std::string& statistics) {
    std::istringstream mostFile(most);
    std::istringstream usedFile(used);
    std::istringstream statisticsFile(statistics);
    return memoryLeftInGroup(mostFile, usedFile, statisticsFile);
}

} // namespace

TEST(MemoryLimits, AContainerLeavesWhatItsLimitAllows) {
    EXPECT_EQ(leftInGroup("1000\n", "400\n", "anon 300\nfile 100\n"), 600U);
    EXPECT_EQ(leftInGroup("1000\n", "1000\n", ""), 0U);
    EXPECT_EQ(leftInGroup("1000\n", "1200\n", ""), 0U);
}

TEST(MemoryLimits, FilesCachedInAContainerGiveWay) {
    EXPECT_EQ(leftInGroup("1000\n", "900\n", "anon 300\ninactive_file 350\nactive_file 250\n"),
              700U);
    EXPECT_EQ(leftInGroup("1000\n", "900\n", "inactive_file 5000\n"), 1000U);
}

TEST(MemoryLimits, NoContainerIsNoLimit) {
    EXPECT_EQ(leftInGroup("", "", ""), unlimited);
    EXPECT_EQ(leftInGroup("max\n", "400\n", ""), unlimited);
    EXPECT_EQ(leftInGroup("1000\n", "", ""), unlimited);
}

TEST(MemoryLimits, AQuarterOfTheMachineStaysForEverythingElse) {
    EXPECT_EQ(memoryLeft(1000, 0, 1000), 750U);
    EXPECT_EQ(memoryLeft(1000, 200, 1000), 550U);
    EXPECT_EQ(memoryLeft(1000, 200, 300), 300U);
    EXPECT_EQ(memoryLeft(1000, 750, 1000), 0U);
    EXPECT_EQ(memoryLeft(1000, 900, 1000), 0U);
    EXPECT_EQ(memoryLeft(unlimited, 900, 1000), 1000U);
}

TEST(MemoryLimits, NoBufferTakesMoreThanThat) {
    const auto tooMuch = static_cast<std::size_t>(physicalMemory() - physicalMemory() / 4) + 1;
    EXPECT_THROW(requireMemory(tooMuch, 1, 1), Error);
    EXPECT_THROW(takePixelMemory(tooMuch), std::bad_alloc);
    Bytes bytes;
    EXPECT_THROW(reserveLargePages(bytes, tooMuch), std::bad_alloc);
}

// Each fits, both together do not: 3 bytes a pixel for the picture, 6 for its coefficients.
TEST(MemoryLimits, WhatTheDecoderHoldsCountsAsWell) {
    const auto side = static_cast<unsigned>(
        std::min(std::sqrt(static_cast<double>(availableMemory()) / 7), 65'000.0));
    if (std::uint64_t{9} * side * side < availableMemory() + availableMemory() / 4) {
        return; // a machine for which no JPEG is too large
    }
    JpegKind kind;
    kind.progressive = true;
    Bytes file = makeJpeg(kind, photo(64, 64));
    const Bytes frame{0xFF, 0xC2, 0x00, 0x11, 0x08};
    const auto at = std::search(file.begin(), file.end(), frame.begin(), frame.end()) +
                    static_cast<std::ptrdiff_t>(frame.size());
    ASSERT_LT(at, file.end());
    at[0] = at[2] = static_cast<std::uint8_t>(side >> 8);
    at[1] = at[3] = static_cast<std::uint8_t>(side);
    file.resize(std::size_t{side} * side / 64); // what so many blocks need at the very least
    EXPECT_THAT(complaintOf(file), testing::HasSubstr("there is not enough memory for a picture"));
}

TEST(MemoryLimits, TheMachineHasSomeMemoryButNotAll) {
    EXPECT_GT(availableMemory(), 16U << 20);
    EXPECT_NO_THROW(requireMemory(1, 1, 1));
    EXPECT_THROW(requireMemory(unlimited, 40'000, 25'000), Error);
}

#ifdef __linux__
TEST(MemoryLimits, AnAddressSpaceThatIsLimitedLeavesNoMore) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
    constexpr rlim_t room = 64U << 20;
    rlimit narrow = before;
    narrow.rlim_cur = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + room;
    ASSERT_EQ(setrlimit(RLIMIT_AS, &narrow), 0);
    const std::uint64_t left = availableMemory();
    setrlimit(RLIMIT_AS, &before);
    EXPECT_LE(left, room);
    EXPECT_GT(left, room / 2);
}
#endif

} // namespace veldara::test
