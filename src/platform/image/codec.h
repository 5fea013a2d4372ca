// Picture files: what is in one, its pixels as a whole or row by row, and the way back into bytes.
#pragma once

#include "platform/image/image.h"
#include "platform/image/tile_format.h"
#include "platform/stop_flag.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace veldara {

struct InputFormat;

// What the header of a picture file promises. Width and height are those of the upright picture,
// after the camera's orientation tag is applied.
struct ImageHeader {
    const InputFormat* format = nullptr; // a row of the table
    bool lossy = false;                  // this very picture gave up detail when it was saved
    int width = 0;
    int height = 0;
    int dotsPerInch = 0; // 0: not known
};

// Reads only as much of the file as the header takes; the content decides on the type.
// Throws Error (naming the file and the reason) when it is missing, empty, or no such picture.
ImageHeader readImageHeader(const std::filesystem::path& file);

// Decodes the whole picture, upright, as 8-bit RGB. Throws Error; never returns a picture of which
// a part was missing. Another thread may set the flag, which is looked at after every band of rows:
// then throws WorkStopped.
Image loadImage(const std::filesystem::path& file, const StopFlag& stop = StopFlag());

// Decodes a picture from the top to the bottom without ever holding it whole. Files that can only
// be decoded whole (turned by their orientation tag, progressive, bottom-up and compressed ...) are
// decoded into memory first; the reader says so.
class RowReader {
  public:
    virtual ~RowReader() = default;
    virtual const ImageHeader& header() const = 0;
    virtual const ColourProfile& colourProfile() const = 0;

    // As PictureDecoder::greyProfile().
    virtual std::optional<ColourProfile> greyProfile() const { return std::nullopt; }

    // True when rows are decoded as they are asked for.
    virtual bool streams() const = 0;

    // Only the columns left .. left + width - 1 are wanted from now on (default: all). To be called
    // before the first row.
    virtual void wantColumns(int left, int width) = 0;

    // Skips rows without returning them, decoding as little as the format allows.
    virtual void skipRows(int count) = 0;

    // The next rows.height() rows; rows.width() is the width of the wanted columns. Throws Error.
    virtual void readRows(const MutablePixelView& rows) = 0;
};

std::unique_ptr<RowReader> openRowReader(const std::filesystem::path& file);

// A picture on its way into the bytes of a file, from the top row to the bottom row: JPEG at
// quality 95 without chroma subsampling, TIFF with LZW and the horizontal predictor, BMP 24-bit;
// the resolution and the profile in every one. It holds little more than the encoded bytes. May be
// used by one thread after the other.
class RowEncoder {
  public:
    virtual ~RowEncoder() = default;

    // The next rows, as wide as the picture. Throws Error.
    virtual void writeRows(const PixelView& rows) = 0;

    // The file, after the last row. Throws Error when rows are missing.
    virtual std::vector<std::uint8_t> finish() = 0;
};

// Throws Error when the format cannot hold such a picture.
std::unique_ptr<RowEncoder> openRowEncoder(int width, int height, TileFormat format,
                                           int dotsPerInch, const ColourProfile& profile);

// The same for a picture that is whole in memory.
std::vector<std::uint8_t> encodeImage(const PixelView& pixels, TileFormat format, int dotsPerInch,
                                      const ColourProfile& profile);

} // namespace veldara
