// Pieces that are encoded from the photo's rows as they are decoded: of photos that are no JPEG
// without loss, and of a JPEG that cannot be cut as tile files are encoded.
#pragma once

#include "sheets/piece_source.h"

#include <filesystem>
#include <memory>
#include <string>

namespace veldara {

// Throws Error that names the photo.
std::unique_ptr<PieceSource> openRowPieces(const std::filesystem::path& photo, PieceFilter filter,
                                           const std::string& notice);

} // namespace veldara
