// One run: each tile, in order, is encoded, checked against the free space, and handed to the
// destination. Tiles are encoded ahead on worker threads, but order, failures and the files that
// exist are those of a sequential run.
#pragma once

#include "output/encoded_tiles.h"
#include "output/tile_destination.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace veldara {

// The destination is finished with the last tile, and given up when the run ends before.
class TileRun {
  public:
    TileRun(std::unique_ptr<EncodedTiles> tiles, std::size_t count,
            std::unique_ptr<TileDestination> destination);
    ~TileRun();
    TileRun(const TileRun&) = delete;
    TileRun& operator=(const TileRun&) = delete;

    std::size_t count() const { return count_; }
    std::size_t written() const { return written_; }
    bool done() const { return written_ == count_; }

    // Waits at most that long for the next tile to be encoded; true when next() will not wait. A
    // window lets its events run in between.
    bool waitReady(std::chrono::milliseconds time);

    // Hands the next tile over, if it fits. freeSpace: bytes free where the tiles go, measured just
    // before; nothing when that is not known (the tile then fits). Not to be called again after a
    // failure, or when done.
    TileStep next(std::optional<std::uint64_t> freeSpace);

  private:
    std::unique_ptr<EncodedTiles> tiles_;
    std::size_t count_;
    std::unique_ptr<TileDestination> destination_;
    std::size_t written_ = 0;
};

} // namespace veldara
