#include "output/tile_mailbox.h"

#include <utility>

namespace veldara {

void TileMailbox::put(std::size_t number, EncodedTile tile) {
    {
        const std::lock_guard guard(lock_);
        tiles_.emplace(number, std::move(tile));
    }
    arrived_.notify_all();
}

EncodedTile TileMailbox::take(std::size_t number) {
    std::unique_lock guard(lock_);
    arrived_.wait(guard, [&] { return tiles_.count(number) != 0; });
    EncodedTile tile = std::move(tiles_.at(number));
    tiles_.erase(number);
    return tile;
}

bool TileMailbox::waitReady(std::size_t number, std::chrono::milliseconds time) {
    std::unique_lock guard(lock_);
    return arrived_.wait_for(guard, time, [&] { return tiles_.count(number) != 0; });
}

} // namespace veldara
