// Where encoded tiles wait for the thread that writes them.
#include "output/tile_mailbox.h"

#include <thread>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

constexpr std::chrono::milliseconds now{0};

EncodedTile tileOf(std::uint8_t byte) {
    EncodedTile tile;
    tile.bytes = {byte};
    return tile;
}

TEST(TileMailbox, HoldsATileUntilItIsTaken) {
    TileMailbox mailbox;
    EXPECT_FALSE(mailbox.waitReady(1, now));
    mailbox.put(1, tileOf(17));
    EXPECT_TRUE(mailbox.waitReady(1, now));
    EXPECT_EQ(mailbox.take(1).bytes, std::vector<std::uint8_t>{17});
    EXPECT_FALSE(mailbox.waitReady(1, now)) << "it is taken";
}

TEST(TileMailbox, GivesTheTileThatIsAskedFor) {
    TileMailbox mailbox;
    mailbox.put(2, tileOf(22));
    EXPECT_FALSE(mailbox.waitReady(1, now)) << "another one came";
    mailbox.put(1, tileOf(11));
    EXPECT_EQ(mailbox.take(1).bytes, std::vector<std::uint8_t>{11});
    EXPECT_EQ(mailbox.take(2).bytes, std::vector<std::uint8_t>{22});
}

TEST(TileMailbox, TakeWaitsForItsTile) {
    TileMailbox mailbox;
    std::thread worker([&] { mailbox.put(3, tileOf(33)); });
    EXPECT_EQ(mailbox.take(3).bytes, std::vector<std::uint8_t>{33});
    worker.join();
}

} // namespace
} // namespace veldara::test
