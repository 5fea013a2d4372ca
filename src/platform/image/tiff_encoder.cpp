#include "platform/error.h"
#include "platform/image/picture_encoder.h"
#include "platform/image/tiff_handle.h"

#include <algorithm>
#include <string>

namespace veldara {

namespace {

// Small enough that readers need little memory, large enough that the code tables pay.
constexpr std::uint64_t stripSize = 256 << 10;

// Offsets of an ordinary TIFF file are 32 bits wide, and LZW can make noise larger than it was.
bool needsWideOffsets(std::uint64_t pixelBytes) {
    return pixelBytes > 2'800'000'000;
}

void setFields(TIFF* tiff, const PixelView& pixels, int dotsPerInch, const ColourProfile& profile,
               std::uint32_t rowsPerStrip) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(pixels.width()));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(pixels.height()));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
    if (dotsPerInch > 0) {
        TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
        TIFFSetField(tiff, TIFFTAG_XRESOLUTION, static_cast<double>(dotsPerInch));
        TIFFSetField(tiff, TIFFTAG_YRESOLUTION, static_cast<double>(dotsPerInch));
    }
    if (!profile.empty()) {
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(profile.size()),
                     profile.data());
    }
}

} // namespace

std::vector<std::uint8_t> encodeTiff(const PixelView& pixels, int dotsPerInch,
                                     const ColourProfile& profile) {
    const std::size_t rowSize = std::size_t{3} * static_cast<std::size_t>(pixels.width());
    const auto height = static_cast<std::uint32_t>(pixels.height());
    const auto rowsPerStrip =
        static_cast<std::uint32_t>(std::clamp<std::uint64_t>(stripSize / rowSize, 1, height));
    TiffOutput output(needsWideOffsets(std::uint64_t{rowSize} * height));
    TIFF* tiff = output.handle.get();
    setFields(tiff, pixels, dotsPerInch, profile, rowsPerStrip);

    std::vector<std::uint8_t> strip(rowSize * rowsPerStrip);
    for (std::uint32_t row = 0, number = 0; row < height; row += rowsPerStrip, ++number) {
        const std::uint32_t rows = std::min(rowsPerStrip, height - row);
        for (std::uint32_t y = 0; y < rows; ++y) {
            std::copy_n(pixels.row(static_cast<int>(row + y)), rowSize, &strip[rowSize * y]);
        }
        if (TIFFWriteEncodedStrip(tiff, number, strip.data(),
                                  static_cast<tmsize_t>(rowSize * rows)) < 0) {
            throw Error("there is not enough memory");
        }
    }
    if (TIFFFlush(tiff) != 1) {
        throw Error("there is not enough memory");
    }
    output.handle.reset();
    return std::move(output.bytes);
}

} // namespace veldara
