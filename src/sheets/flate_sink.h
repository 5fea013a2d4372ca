// Rows of a piece as the stream of an image object: zlib, each row behind a PNG predictor.
#pragma once

#include "output/tile_sink.h"

#include <memory>

namespace veldara {

enum class FlateRows {
    grey, // equal triples; the stream has one byte for each
    rgb,
    inks // pairs of pixels, see ink_rows.h; the stream has four bytes for each
};

// The width is that of the stream's rows in pixels. Throws Error.
std::unique_ptr<TileSink> openFlateSink(int width, FlateRows kind = FlateRows::rgb);

} // namespace veldara
