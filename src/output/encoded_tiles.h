// Encoded tiles: the result of making one, and the interface of those that encode ahead.
#pragma once

#include "platform/image/codec.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace veldara {

// The result of one step of a run. Every outcome but `written` ends the run.
enum class TileOutcome {
    written,
    sourceFailed,       // the tile's pixels could not be read
    turnFailed,         // the quarter turn of the tile
    compensationFailed, // enlarging the tile by the printer's trims
    encodeFailed,
    outOfSpace,
    saveFailed,
};

struct TileStep {
    TileOutcome outcome = TileOutcome::written;
    std::string reason; // of a failure
};

// What a worker made of a tile: its bytes if the step says `written`, otherwise the reason.
struct EncodedTile {
    std::vector<std::uint8_t> bytes;
    TileStep step;
};

// Encodes a run's tiles ahead on its own threads. Memory is bounded: encoding continues as tiles
// are committed. Called by one thread, with the numbers 0, 1, 2 ... in order. Destroying it
// abandons the tiles that are left.
class EncodedTiles {
  public:
    virtual ~EncodedTiles() = default;

    // Waits at most that long; true when take() will not wait.
    virtual bool waitReady(std::size_t number, std::chrono::milliseconds time) = 0;
    virtual EncodedTile take(std::size_t number) = 0;
    virtual void commit(std::size_t number) = 0;
};

} // namespace veldara
