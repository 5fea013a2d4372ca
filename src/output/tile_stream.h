// Tiles out of a photo that is never whole in memory: while one thread decodes the next rows, the
// others encode what is there of every tile that the rows belong to.
#pragma once

#include "output/encoded_tiles.h"
#include "output/tile_image.h"

#include <memory>
#include <vector>

namespace veldara {

class TileStream : public EncodedTiles {
  public:
    // tiles: as calcTileCoord gave them, tilesWide in a row, none of them empty. Starts at once, on
    // `workers` threads (0: as many as the machine has cores). Holds a few rows of the photo, and
    // what is encoded of two rows of tiles; tiles that are turned or resampled are held whole.
    TileStream(std::unique_ptr<RowReader> photo, std::vector<TileRect> tiles, int tilesWide,
               const TileTreatment& treatment, FileType type, int workers);
    ~TileStream() override;
    TileStream(const TileStream&) = delete;
    TileStream& operator=(const TileStream&) = delete;

    bool waitReady(std::size_t number, std::chrono::milliseconds time) override;
    EncodedTile take(std::size_t number) override;
    void commit(std::size_t number) override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace veldara
