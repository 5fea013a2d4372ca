// TIFF files of every kind, with the pixels that they must give.
#pragma once

#include "image/files.h"

#include <string>
#include <utility>
#include <vector>

namespace veldara::test {

struct TiffKind {
    std::string name;
    int bits = 8;
    int samples = 3;
    int photometric = 2; // TIFF 6.0: 0 white is zero, 1 black is zero, 2 RGB, 3 palette,
                         // 5 inks, 6 YCbCr
    int extra = -1;      // kind of the last sample: 0 unknown, 1 premultiplied alpha, 2 alpha
    int across = 1;      // pixels that share colour differences
    int down = 1;
    bool separate = false; // planes
    int tileSide = 0;      // 0: strips
    int rowsPerStrip = 7;
    int compression = 1;
    int predictor = 1;
    unsigned faxOptions = 0;
    bool bigEndian = false;
    bool big = false; // 64-bit offsets
    int orientation = 1;
    double resolution = 0;
    int resolutionUnit = 2;
    Bytes profile;
};

// The file, and the pixels by the definitions of the format.
struct TiffFile {
    Bytes bytes;
    Image expected;
};

// A picture of the kind, made from photo(width, height).
TiffFile makeTiff(const TiffKind& kind, int width, int height);

// Every kind of sample, uncompressed, in strips.
std::vector<TiffKind> everyTiffSampleKind();
TiffKind tiffKindNamed(const std::string& name);

// A page made by hand from bare fields (tag, value), all of them 32-bit numbers, with the data
// behind them: for headers that lie.
Bytes bareTiff(const std::vector<std::pair<unsigned, std::uint32_t>>& fields, const Bytes& data);
std::uint32_t dataPositionOfBareTiff(std::size_t fields);

} // namespace veldara::test
