// Pieces of a JPEG photo with its own coefficients: nothing is encoded again.
#pragma once

#include "sheets/piece_source.h"

#include <filesystem>
#include <memory>

namespace veldara {

// Nothing when cutting the photo takes more memory than can be spared. Throws Error that names the
// photo.
std::unique_ptr<PieceSource> openJpegPieces(const std::filesystem::path& photo);

} // namespace veldara
