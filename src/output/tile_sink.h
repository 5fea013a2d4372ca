// Encodes a tile's rows as they are decoded from the photo.
#pragma once

#include "output/tile_image.h"
#include "platform/image/codec.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace veldara {

// Takes all rows of one tile from the top down. Not thread-safe, but may change threads.
class TileSink {
  public:
    virtual ~TileSink() = default;
    virtual void writeRows(const PixelView& rows) = 0; // throws Error
    virtual std::vector<std::uint8_t> finish() = 0;    // throws Error
};

// The sink whose file is the same as that of makeTileImage and encodeImage, byte for byte. A tile
// that is neither turned nor resampled is encoded row by row; any other is collected first. Throws
// Error.
std::unique_ptr<TileSink> openTileSink(const TileRect& tile, const TileTreatment& treatment,
                                       TileFormat type, const ColourProfile& profile);

} // namespace veldara
