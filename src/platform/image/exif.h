// The two facts that the program wants from a camera's Exif block: which side is up, and how many
// pixels go to an inch.
#pragma once

#include "platform/image/picture_decoder.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace veldara {

struct ExifFacts {
    Orientation orientation = Orientation::upright;
    int dotsPerInch = 0; // 0: not given
};

// Reads the first directory of an Exif block (the TIFF structure, without the "Exif" label before
// it). Damaged blocks give what could be read; they say nothing about the pixels.
ExifFacts readExif(std::span<const std::uint8_t> block);

// Dots per inch from a number per unit; 0 when it makes no sense.
int wholeDotsPerInch(double perUnit, double unitsPerInch);

} // namespace veldara
