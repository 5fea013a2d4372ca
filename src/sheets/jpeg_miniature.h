// A small picture of an area of a JPEG photo, made while its coefficients stream by: the first one
// of a block is the mean of its 64 samples, so no pixel has to be computed for it.
#pragma once

#include "platform/image/image.h"
#include "sheets/jpeg_coefficients.h"
#include "sheets/jpeg_geometry.h"
#include "sheets/small_photo.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldara {

class JpegMiniature {
  public:
    // Whether the photo's means are fine enough for a picture of that size: each of its pixels
    // stands for a block or more. Photos of four inks have to be mixed by their profile first.
    static bool serves(const jpeg_decompress_struct& photo, const PixelRectangle& area,
                       const SmallSize& size);

    // The area lies in the photo as it is stored, and so does the picture.
    JpegMiniature(const jpeg_decompress_struct& photo, const PixelRectangle& area,
                  const SmallSize& size);

    int rowsNeeded() const { return rowsNeeded_; } // of MCUs, from the photo's top

    // To be called once for each row of MCUs that is needed, while its coefficients are there.
    void add(const JpegCoefficients& coefficients, int mcuRow);

    // Each pixel the mean of its share of the area.
    Image picture() const;

  private:
    // The part of a block that falls into a pixel, in 256ths of a pixel's side.
    struct Share {
        int block = 0;
        int pixel = 0;
        int weight = 0;
    };
    struct Plane {
        std::vector<Share> columns;
        std::vector<Share> rows;
        std::size_t nextRow = 0;
        int rowsInMcu = 1;
        std::int64_t step = 1;           // that the first coefficient counts in
        std::vector<std::int64_t> sums;  // of each pixel
        std::vector<std::int64_t> inRow; // of the pixels of one row, weighted across alone
    };

    static std::vector<Share> sharesOf(int blockSide, int first, int length, int pixels);
    void sumRow(Plane& plane, const JBLOCK* blocks);
    double valueAt(std::size_t plane, std::size_t pixel) const;

    SmallSize size_;
    J_COLOR_SPACE colour_;
    int rowsNeeded_ = 0;
    const jpeg_decompress_struct& photo_;
    std::vector<Plane> planes_;
};

} // namespace veldara
