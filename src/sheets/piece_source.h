// The pieces of the photo that a document's pages carry, one a sheet, as the streams of image
// objects. Where they come from depends on the photo's file: cut out of a JPEG, or encoded.
#pragma once

#include "platform/image/image.h"
#include "platform/image/picture_decoder.h"
#include "sheets/jpeg_geometry.h"
#include "sheets/small_photo.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veldara {

enum class PieceColour { grey, rgb, cmyk };

enum class PieceFilter {
    dct,  // JPEG
    flate // zlib, rows with the predictors of PNG
};

// What all pieces of one photo have in common.
struct PieceFacts {
    int width = 0; // of the stored photo that the pieces are cut from
    int height = 0;
    Orientation orientation = Orientation::upright; // of that photo
    PieceColour colour = PieceColour::rgb;
    PieceFilter filter = PieceFilter::flate;
    bool inverted = false;    // 255 is no ink
    int colourTransform = -1; // of the DCT filter; below 0: as the stream itself says
    ColourProfile profile;    // of those samples; empty: none
    std::string notice;       // what the person should know, one sentence; mostly empty
};

class PieceSource {
  public:
    PieceSource() = default;
    PieceSource(const PieceSource&) = delete;
    PieceSource& operator=(const PieceSource&) = delete;
    virtual ~PieceSource() = default; // stops what is under way

    virtual const PieceFacts& facts() const = 0;

    // The stored pixels that the piece for these wanted ones holds.
    virtual PixelRectangle pieceFor(const PixelRectangle& wanted) const = 0;

    // Asks for a small picture of an area of the stored photo, which comes along with the pieces.
    // False where that would take another pass over the photo. To be called before start().
    virtual bool wantSmall(const PixelRectangle& /*area*/, const SmallSize& /*size*/) {
        return false;
    }

    // Starts to make the pieces, which lie in rows of about `across`. To be called once. Throws
    // Error.
    virtual void start(std::vector<PixelRectangle> wanted, int across) = 0;

    // The next piece's stream, in the order of start(). `stopped` is asked while it waits, and
    // throws when the run is to end. Throws Error.
    virtual std::vector<std::uint8_t> next(const std::function<void()>& stopped) = 0;

    // After the last piece: the small picture, if wantSmall() promised it. As next() otherwise.
    virtual Image small(const std::function<void()>& /*stopped*/) { return {}; }
};

// The source that suits the photo's file: JPEG pieces where the photo is a JPEG, else lossless
// ones. Throws Error that names the photo.
std::unique_ptr<PieceSource> openPieceSource(const std::filesystem::path& photo);

} // namespace veldara
