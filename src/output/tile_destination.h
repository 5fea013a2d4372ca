// Where the encoded tiles of a run go.
#pragma once

#include <cstdint>
#include <vector>

namespace veldara {

// Takes the tiles of one run one by one, and then either finish() or giveUp(). All calls come from
// one thread at a time. What was put is safe on disk when finish() has returned; a destination may
// keep it elsewhere until then.
class TileDestination {
  public:
    virtual ~TileDestination() = default;

    // The file of the next tile, in the tiles' order. Throws Error.
    virtual void put(std::vector<std::uint8_t> tile) = 0;

    // After the last tile. Throws Error.
    virtual void finish() = 0;

    // The run ended before its last tile, or finish() failed.
    virtual void giveUp() noexcept = 0;
};

} // namespace veldara
