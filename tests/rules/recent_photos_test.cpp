#include "app/recent_photos.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

using Paths = std::vector<std::string>;

TEST(RecentPhotos, HaveTheNewestFirstAndEachOnce) {
    RecentPhotos recent;
    EXPECT_TRUE(recent.add("/a"));
    EXPECT_TRUE(recent.add("/b"));
    EXPECT_TRUE(recent.add("/a"));
    EXPECT_FALSE(recent.add("/a"));
    EXPECT_EQ(recent.paths(), (Paths{"/a", "/b"}));
}

TEST(RecentPhotos, AreTenAtMost) {
    RecentPhotos recent;
    for (int i = 0; i < 12; ++i) {
        recent.add("/" + std::to_string(i));
    }
    EXPECT_EQ(recent.paths().size(), 10U);
    EXPECT_EQ(recent.paths().front(), "/11");
    EXPECT_EQ(recent.paths().back(), "/2");
}

TEST(RecentPhotos, AreReadWithoutGapsAndRepetitions) {
    EXPECT_EQ(RecentPhotos({"/a", "", "/b", "/a"}).paths(), (Paths{"/a", "/b"}));
    EXPECT_EQ(RecentPhotos(Paths(20, "/same")).paths().size(), 1U);
}

} // namespace
} // namespace veldara
