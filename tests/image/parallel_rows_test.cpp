#include "platform/image/parallel_rows.h"

#include <atomic>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {

TEST(ParallelRows, EveryRowIsDoneOnce) {
    for (const int count : {0, 1, 2, 3, 7, 1000}) {
        for (const int fewest : {0, 1, 4, 5000}) {
            std::vector<std::atomic<int>> done(static_cast<std::size_t>(count));
            forRows(count, fewest, [&](int first, int end) {
                for (int row = first; row < end; ++row) {
                    ++done[static_cast<std::size_t>(row)];
                }
            });
            for (const std::atomic<int>& times : done) {
                EXPECT_EQ(times, 1) << count << " rows, " << fewest << " for a core";
            }
        }
    }
}

// The first row falls to the caller, the last to another thread where there is one.
TEST(ParallelRows, WhatTheWorkThrowsReachesTheCallerWhenAllIsDone) {
    constexpr int count = 1000;
    for (const int failing : {0, count - 1}) {
        std::atomic<int> done = 0;
        EXPECT_THROW(forRows(count, 1,
                             [&](int first, int end) {
                                 done += end - first;
                                 if (first <= failing && failing < end) {
                                     throw std::out_of_range("row");
                                 }
                             }),
                     std::out_of_range);
        EXPECT_EQ(done, count);
    }
}

} // namespace veldara::test
