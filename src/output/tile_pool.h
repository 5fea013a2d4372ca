// Whole tiles encoded by a small pool of threads.
#pragma once

#include "output/encoded_tiles.h"
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

// How many threads work: the number that is asked for, or as many as the machine has cores.
std::size_t workerCount(int asked);

class TilePool : public EncodedTiles {
  public:
    // Starts at once. The source outlives the pool. No more tiles than workers are in work, and one
    // more is kept encoded while one is being written.
    TilePool(TileSource& source, std::size_t tiles, const TileTreatment& treatment, FileType type,
             int workers);
    ~TilePool() override;
    TilePool(const TilePool&) = delete;
    TilePool& operator=(const TilePool&) = delete;

    bool waitReady(std::size_t number, std::chrono::milliseconds time) override;
    EncodedTile take(std::size_t number) override;
    void commit(std::size_t number) override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace veldara
