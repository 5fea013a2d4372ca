// The facts of a TIFF page that decide how its samples are found and what they mean.
#pragma once

#include "platform/image/picture_decoder.h"
#include "platform/image/tiff_handle.h"

#include <cstdint>

namespace veldara {

enum class TiffAlpha { none, premultiplied, separate };

struct TiffLayout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    unsigned bits = 1;                 // of a sample
    unsigned samples = 1;              // of a pixel
    unsigned colours = 1;              // samples that are colour; the others are alpha or unknown
    TiffAlpha alpha = TiffAlpha::none; // of sample number `colours`
    unsigned photometric = 0;
    unsigned compression = 1;
    bool separatePlanes = false;
    bool tiled = false;
    std::uint32_t blockWidth = 0;  // of a tile; the picture's width for strips
    std::uint32_t blockHeight = 0; // of a tile or a strip
    unsigned chromaAcross = 1;     // pixels that share a colour difference (uncoded YCbCr)
    unsigned chromaDown = 1;
    int dotsPerInch = 0;
    Orientation orientation = Orientation::upright;

    bool fax() const;
    unsigned planes() const { return separatePlanes ? samples : 1; }
    std::uint32_t blocksAcross() const { return (width + blockWidth - 1) / blockWidth; }
};

// Reads the first page's facts. Throws Error with the bare reason when the page is of an
// unsupported kind or promises more than the file can hold.
TiffLayout readTiffLayout(TIFF* tiff, std::uint64_t fileSize);

} // namespace veldara
