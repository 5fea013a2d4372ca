// Encodes tiles without holding the whole photo in memory: while one thread decodes the next rows,
// the others encode the decoded rows of every tile they belong to.
#pragma once

#include "output/threaded_tiles.h"
#include "output/tile_image.h"
#include "output/tile_sink.h"

#include <functional>
#include <memory>
#include <vector>

namespace veldara {

// Opens the sink of a tile, by its number from 0. Called by any of the threads. Throws Error.
using TileSinks = std::function<std::unique_ptr<TileSink>(std::size_t tile)>;

class TileStream : public ThreadedTiles {
  public:
    // tiles: rectangles of the photo, none of them empty, row by row, about tilesWide in a row; a
    // row may reach into the next, but not beyond it. The rest as below.
    TileStream(std::unique_ptr<RowReader> photo, std::vector<TileRect> tiles, int tilesWide,
               TileSinks sinks, int workers);

    // tiles: as calcTileCoord gave them, tilesWide in a row, none of them empty. Starts at once, on
    // `workers` threads (0: as many as the machine has cores). Holds a few rows of the photo, and
    // what is encoded of two rows of tiles; tiles that are turned or resampled are held whole.
    TileStream(std::unique_ptr<RowReader> photo, std::vector<TileRect> tiles, int tilesWide,
               const TileTreatment& treatment, TileFormat type, int workers);
    ~TileStream() override;
    TileStream(const TileStream&) = delete;
    TileStream& operator=(const TileStream&) = delete;

  private:
    void begin(std::unique_ptr<RowReader> photo, std::vector<TileRect> tiles, int tilesWide,
               TileSinks sinks, int workers);

    struct State;
    TileWorkers& workers() override;
    std::unique_ptr<State> state_;
};

} // namespace veldara
