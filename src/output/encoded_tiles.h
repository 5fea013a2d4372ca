// Tiles on their way from the photo to the disk: what comes of one, and who encodes them ahead.
#pragma once

#include "platform/image/codec.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace veldara {

// What one step of a run came to. Every outcome but `written` ends the run.
enum class TileOutcome {
    written,
    sourceFailed,       // the tile's pixels could not be had
    compensationFailed, // the tile could not be turned or enlarged
    encodeFailed,
    outOfSpace,
    saveFailed,
};

struct TileStep {
    TileOutcome outcome = TileOutcome::written;
    std::string reason; // of a failure
};

// A tile as a worker left it: bytes when the step says `written`, else why there are none.
struct EncodedTile {
    std::vector<std::uint8_t> bytes;
    TileStep step;
};

// Encodes a run's tiles ahead on threads of its own, and keeps what is in memory bounded: it goes
// on as tiles are committed. Called by one thread, with the numbers 0, 1, 2 ... in order.
// Destroying it leaves the rest undone.
class EncodedTiles {
  public:
    virtual ~EncodedTiles() = default;

    // Waits at most that long; true when take() will not wait.
    virtual bool waitReady(std::size_t number, std::chrono::milliseconds time) = 0;
    virtual EncodedTile take(std::size_t number) = 0;
    virtual void commit(std::size_t number) = 0;
};

} // namespace veldara
