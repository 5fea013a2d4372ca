// Rows of a piece as the stream of an image object: zlib, each row behind a PNG predictor.
#pragma once

#include "output/tile_sink.h"

#include <memory>

namespace veldara {

// The rows' width in pixels is given; they are RGB. Throws Error.
std::unique_ptr<TileSink> openFlateSink(int width);

} // namespace veldara
