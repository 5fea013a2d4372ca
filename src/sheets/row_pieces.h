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

// The same for a photo of printing inks, which stay what they are, with 8 bits each. Nothing when
// the photo has other colours. Throws Error that names the photo.
std::unique_ptr<PieceSource> openInkPieces(const std::filesystem::path& photo);

} // namespace veldara
