// The shared way from a photo to tile files: for each tile in order it is cut, turned, enlarged and
// encoded, the free space is asked for, and the same encoded bytes are written. Tiles are encoded
// ahead on worker threads; what can be seen (order, failures, which files exist) is that of one
// tile after the other.
#pragma once

#include "output/encoded_tiles.h"
#include "output/tile_pool.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace veldara {

// The doors to the disk, called on the thread that calls next(), in the tiles' order.
struct TileDisk {
    // Bytes free on the destination's drive; nothing when that cannot be told (it then fits).
    std::function<std::optional<std::uint64_t>()> freeSpace;
    // Writes the bytes under the file's name. Throws Error.
    std::function<void(const std::filesystem::path&, const std::vector<std::uint8_t>&)> write;
};

// The disk itself; the drive is the one that `folder` lies on.
TileDisk realDisk(const std::filesystem::path& folder);

struct TileJob {
    std::vector<std::filesystem::path> files; // one a tile, full paths
    TileTreatment treatment;
    FileType type = FileType::jpeg;
    int workers = 0; // threads that encode; 0: as many as the machine has cores
};

// Writes the tiles one by one; those that were not asked for when it is destroyed stay undone.
class TileRun {
  public:
    // Of a photo whose tiles can be had whole. Starts encoding ahead at once. The source must
    // outlive the run.
    TileRun(TileSource& source, const TileJob& job, TileDisk disk);

    // Of tiles that somebody encodes.
    TileRun(std::unique_ptr<EncodedTiles> tiles, std::vector<std::filesystem::path> files,
            TileDisk disk);

    std::size_t count() const { return files_.size(); }
    std::size_t written() const { return written_; }
    bool done() const { return written_ == count(); }

    // Waits at most that long for the next tile to be encoded; true when next() will not wait. A
    // window lets its events run in between.
    bool waitReady(std::chrono::milliseconds time);

    // Takes the next tile: space check, then the write. Not to be called again after a failure, or
    // when done.
    TileStep next();

  private:
    std::unique_ptr<EncodedTiles> tiles_;
    std::vector<std::filesystem::path> files_;
    TileDisk disk_;
    std::size_t written_ = 0;
};

} // namespace veldara
