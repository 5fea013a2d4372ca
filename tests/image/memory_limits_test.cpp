#include "platform/error.h"
#include "platform/image/memory_limits.h"

#include <limits>
#include <sstream>

#include <gtest/gtest.h>

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

TEST(MemoryLimits, TheMachineHasSomeMemoryButNotAll) {
    EXPECT_GT(availableMemory(), 16U << 20);
    EXPECT_NO_THROW(requireMemory(1, 1, 1));
    EXPECT_THROW(requireMemory(unlimited, 40'000, 25'000), Error);
}

} // namespace veldara::test
