// Whole tiles encoded by a small pool of threads.
#pragma once

#include "output/threaded_tiles.h"
#include "output/tile_image.h"

#include <memory>
#include <vector>

namespace veldara {

// A tile's pixels in the photo, and whatever keeps them in memory.
struct TilePixels {
    PixelView view;
    std::shared_ptr<const void> owner;
};

// Where tiles' pixels come from. tile() is called for 0, 1, 2 ... in order, by one thread at a
// time.
class TileSource {
  public:
    virtual ~TileSource() = default;
    virtual TilePixels tile(std::size_t number) = 0; // throws Error
    virtual const ColourProfile& colourProfile() const = 0;
};

// A whole photo in memory, which outlives the source.
class WholePhotoSource : public TileSource {
  public:
    WholePhotoSource(const Image& photo, std::vector<TileRect> tiles)
        : photo_(photo), tiles_(std::move(tiles)) {}
    TilePixels tile(std::size_t number) override;
    const ColourProfile& colourProfile() const override { return photo_.colourProfile; }

  private:
    const Image& photo_;
    std::vector<TileRect> tiles_;
};

// The number of threads: `asked`, or if that is 0 as many as the machine has cores.
std::size_t workerCount(int asked);

class TilePool : public ThreadedTiles {
  public:
    // Starts at once. The source outlives the pool. At most one tile for each worker is being
    // encoded, and one more is kept encoded while another is being written.
    TilePool(TileSource& source, std::size_t tiles, const TileTreatment& treatment, TileFormat type,
             int workers);
    ~TilePool() override;
    TilePool(const TilePool&) = delete;
    TilePool& operator=(const TilePool&) = delete;

  private:
    struct State;
    TileWorkers& workers() override;
    std::unique_ptr<State> state_;
};

} // namespace veldara
