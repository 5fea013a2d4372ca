// Cuts pieces out of a JPEG photo in its compressed domain: a piece carries the photo's own
// coefficients, so nothing is encoded again and every pixel stays what it is in the whole photo.
//
// For a poster as one file, in the order of the sheets (row by row of the stored photo):
//
//     JpegCutter cutter(openFileBytes(photo));
//     if (!cutter.fitsMemory()) { ... encode the sheets instead, and say so ... }
//     cutter.start(rectangles);                      // one a sheet, in stored pixels
//     for (std::size_t i = 0; i < rectangles.size(); ++i) {
//         const JpegPiece piece = cutter.next();     // piece i
//         // piece.bytes is the DCTDecode stream of an image piece.width x piece.height; its first
//         // pixel is the stored photo's pixel (piece.left, piece.top), so the wanted rectangle
//         // lies at (rectangles[i].left - piece.left, rectangles[i].top - piece.top) inside of it.
//     }
//
// Write each piece out as it comes and let it go: then memory holds about one row of sheets. Pages
// that show the photo turned ask for rectangles of the photo as it is stored, row by row as they
// lie there, and turn the piece by their matrix.
#pragma once

#include "platform/image/byte_source.h"
#include "platform/image/image.h"
#include "platform/image/picture_decoder.h"
#include "sheets/jpeg_geometry.h"
#include "sheets/small_photo.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace veldara {

enum class JpegColour { grey, yCbCr, rgb, cmyk, ycck };

// What the header says of the photo, and so of its pieces.
struct JpegFacts {
    int width = 0; // as stored, before any turn by the orientation tag
    int height = 0;
    int components = 0; // 1, 3 or 4 samples a pixel
    JpegColour colour = JpegColour::yCbCr;

    // Inks with an Adobe marker count light: 255 is no ink, so a reader of the decoded samples has
    // to turn them over (in PDF: Decode [1 0 1 0 1 0 1 0]). The pieces keep the marker.
    bool inksInverted = false;

    // The ColorTransform that a DCTDecode filter has to be given: 1 where the samples are stored as
    // brightness and colour differences.
    int colourTransform = 1;

    Orientation orientation = Orientation::upright;
    int dotsPerInch = 0;   // 0: not known
    ColourProfile profile; // of the stored samples (grey, RGB or CMYK), as the file has it

    // The photo is cut as it streams by. Otherwise (progressive, or a scan for each component) its
    // coefficients have to be whole in memory, which takes that many bytes.
    bool streams = true;
    std::uint64_t coefficientBytes = 0;
};

// A whole JPEG file of its own: what was wanted, widened to whole MCUs (the blocks that the file
// codes together) and by one more on each side where the photo goes on. With that context the
// wanted pixels decode to what they are in the whole photo, also where colour is subsampled.
struct JpegPiece {
    std::vector<std::uint8_t> bytes;
    int left = 0; // of its first pixel in the stored photo
    int top = 0;
    int width = 0;
    int height = 0;
};

class JpegCutter {
  public:
    // Reads the header. Throws Error with the bare reason, as loading does, when the file is no
    // JPEG that the program reads.
    explicit JpegCutter(std::unique_ptr<ByteSource> photo);
    ~JpegCutter(); // stops what is under way, within a row of blocks: this is how to cancel
    JpegCutter(const JpegCutter&) = delete;
    JpegCutter& operator=(const JpegCutter&) = delete;

    const JpegFacts& facts() const;

    // False for a photo that does not stream and whose coefficients would take more than half of
    // the memory that is free now.
    bool fitsMemory() const;

    // Where the piece for a wanted rectangle lies in the stored photo.
    PixelRectangle pieceFor(const PixelRectangle& wanted) const;

    // Asks for a small picture of an area of the stored photo, made of the coefficients that the
    // pieces are cut from. False where they do not serve for it (see JpegMiniature). To be called
    // before start().
    bool wantSmall(const PixelRectangle& area, const SmallSize& size);

    // Starts to cut these rectangles of the stored photo, on one thread that decodes and `workers`
    // threads that encode (0: as many as the machine has cores). The pieces are the same bytes with
    // any number. To be called once. Throws Error when a rectangle is empty or not in the photo, or
    // when no thread can be started.
    void start(const std::vector<PixelRectangle>& wanted, int workers = 0);

    // Waits at most that long; true when next() will not wait.
    bool waitReady(std::chrono::milliseconds time);

    // The next piece, in the order of the rectangles. Throws Error with the bare reason when the
    // photo turns out to be damaged or cannot be read, however much of it was cut before; then what
    // was made of the pieces so far is worth nothing.
    JpegPiece next();

    // Once all pieces were taken: waits at most that long, and gives the small picture that was
    // asked for when it is there. Throws Error as next() does.
    std::optional<Image> small(std::chrono::milliseconds time);

  private:
    class Work;
    std::unique_ptr<Work> work_;
};

} // namespace veldara
