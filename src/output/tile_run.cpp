#include "output/tile_run.h"

#include "output/attempt.h"
#include "platform/error.h"

#include <system_error>
#include <utility>

namespace veldara {
namespace {

// Whether the encoded tile has room where it goes. A drive that cannot be measured may still take
// it.
bool checkDiskSpaceForTile(const EncodedTile& tile, const TileDisk& disk) {
    const std::optional<std::uint64_t> room = disk.freeSpace();
    return !room || *room >= tile.bytes.size();
}

} // namespace

TileDisk realDisk(const std::filesystem::path& folder) {
    TileDisk disk;
    disk.freeSpace = [folder]() -> std::optional<std::uint64_t> {
        std::error_code error;
        const std::filesystem::space_info space = std::filesystem::space(folder, error);
        return error ? std::nullopt : std::optional<std::uint64_t>(space.available);
    };
    disk.write = writeWholeFile;
    return disk;
}

TileRun::TileRun(TileSource& source, const TileJob& job, TileDisk disk)
    : TileRun(std::make_unique<TilePool>(source, job.files.size(), job.treatment, job.type,
                                         job.workers),
              job.files, std::move(disk)) {}

TileRun::TileRun(std::unique_ptr<EncodedTiles> tiles, std::vector<std::filesystem::path> files,
                 TileDisk disk)
    : tiles_(std::move(tiles)), files_(std::move(files)), disk_(std::move(disk)) {}

bool TileRun::waitReady(std::chrono::milliseconds time) {
    return tiles_->waitReady(written_, time);
}

TileStep TileRun::next() {
    if (done()) {
        throw Error("All tiles are written already.");
    }
    EncodedTile tile = tiles_->take(written_);
    if (tile.step.outcome != TileOutcome::written) {
        return tile.step;
    }
    if (!checkDiskSpaceForTile(tile, disk_)) {
        return {TileOutcome::outOfSpace, {}};
    }
    if (!attempt(tile.step, TileOutcome::saveFailed,
                 [&] { disk_.write(files_[written_], tile.bytes); })) {
        return tile.step;
    }
    tile.bytes = {};
    tiles_->commit(written_++);
    return tile.step;
}

} // namespace veldara
