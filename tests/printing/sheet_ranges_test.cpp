#include "printing/sheet_ranges.h"
#include "sheets/sheet_jobs.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using veldara::testing::a4Job;

TEST(SheetRanges, WithoutARangeEverythingIsPrinted) {
    const std::optional<SheetJob> job = jobOfRanges(a4Job(), {});
    ASSERT_TRUE(job);
    EXPECT_TRUE(job->choices.guide);
    EXPECT_EQ(chosenSheets(*job), (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

TEST(SheetRanges, ARangeTakesTheSheetsOfTheseNumbersWithoutTheGuide) {
    const std::optional<SheetJob> job = jobOfRanges(a4Job(), {{2, 3}, {6, 9}});
    ASSERT_TRUE(job);
    EXPECT_FALSE(job->choices.guide);
    EXPECT_EQ(job->choices.sheets, (std::vector<int>{2, 3, 6}));
}

TEST(SheetRanges, OnlySheetsThatAreWantedAtAll) {
    SheetJob wanted = a4Job();
    wanted.choices.sheets = {1, 4, 5};
    EXPECT_EQ(sheetsWanted(wanted), (SheetRange{1, 5}));
    EXPECT_EQ(jobOfRanges(wanted, {{2, 4}})->choices.sheets, std::vector<int>{4});
    EXPECT_FALSE(jobOfRanges(wanted, {{2, 3}}));
    EXPECT_FALSE(jobOfRanges(wanted, {{7, 7}}));
}

} // namespace
} // namespace veldara::test
