#include "output/tile_run.h"

#include "output/attempt.h"
#include "platform/error.h"
#include "platform/files/whole_file.h"

#include <utility>

namespace veldara {
namespace {

bool checkDiskSpaceForTile(const EncodedTile& tile, std::optional<std::uint64_t> freeSpace) {
    return !freeSpace || *freeSpace >= tile.bytes.size();
}

} // namespace

TileRun::TileRun(std::unique_ptr<EncodedTiles> tiles, std::size_t count,
                 std::unique_ptr<TileDestination> destination)
    : tiles_(std::move(tiles)), count_(count), destination_(std::move(destination)) {}

TileRun::~TileRun() {
    if (!done()) {
        destination_->giveUp();
    }
}

bool TileRun::waitReady(std::chrono::milliseconds time) {
    return tiles_->waitReady(written_, time);
}

TileStep TileRun::next(std::optional<std::uint64_t> freeSpace) {
    if (done()) {
        throw Error("All tiles are written already.");
    }
    EncodedTile tile = tiles_->take(written_);
    if (tile.step.outcome != TileOutcome::written) {
        return tile.step;
    }
    if (!checkDiskSpaceForTile(tile, freeSpace)) {
        return {TileOutcome::outOfSpace, {}};
    }
    const bool last = written_ + 1 == count_;
    const bool taken = attempt(tile.step, TileOutcome::saveFailed, [&] {
        destination_->put(std::move(tile.bytes));
        if (last) {
            destination_->finish();
        }
    });
    if (taken) {
        tiles_->commit(written_++);
    }
    return tile.step;
}

} // namespace veldara
