#include "sheets/piece_source.h"

#include "platform/image/input_format.h"
#include "sheets/jpeg_pieces.h"
#include "sheets/row_pieces.h"

namespace veldara {

std::unique_ptr<PieceSource> openPieceSource(const std::filesystem::path& photo) {
    if (readImageHeader(photo).format->tileFormat != TileFormat::jpeg) {
        std::unique_ptr<PieceSource> inks = openInkPieces(photo);
        return inks ? std::move(inks) : openRowPieces(photo, PieceFilter::flate, {});
    }
    if (std::unique_ptr<PieceSource> pieces = openJpegPieces(photo)) {
        return pieces;
    }
    return openRowPieces(photo, PieceFilter::dct,
                         "This progressive JPEG is too large to be cut as it is: its sheets were "
                         "encoded again, as tile files are.");
}

} // namespace veldara
