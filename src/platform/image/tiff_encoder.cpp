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

void setFields(TIFF* tiff, const PictureToEncode& picture, std::uint32_t rowsPerStrip) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(picture.width));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(picture.height));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
    if (picture.dotsPerInch > 0) {
        TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
        TIFFSetField(tiff, TIFFTAG_XRESOLUTION, static_cast<double>(picture.dotsPerInch));
        TIFFSetField(tiff, TIFFTAG_YRESOLUTION, static_cast<double>(picture.dotsPerInch));
    }
    if (!picture.profile.empty()) {
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(picture.profile.size()),
                     picture.profile.data());
    }
}

std::size_t rowSizeOf(const PictureToEncode& picture) {
    return std::size_t{3} * static_cast<std::size_t>(picture.width);
}

class TiffEncoder : public PictureEncoder {
  public:
    explicit TiffEncoder(const PictureToEncode& picture)
        : rowSize_(rowSizeOf(picture)),
          rowsPerStrip_(std::clamp<std::size_t>(stripSize / rowSize_, 1,
                                                static_cast<std::size_t>(picture.height))),
          output_(
              needsWideOffsets(std::uint64_t{rowSize_} * static_cast<unsigned>(picture.height))),
          strip_(rowSize_ * rowsPerStrip_) {
        setFields(output_.handle.get(), picture, static_cast<std::uint32_t>(rowsPerStrip_));
    }

    void writeRows(const PixelView& rows) override {
        for (int y = 0; y < rows.height(); ++y) {
            std::copy_n(rows.row(y), rowSize_, &strip_[rowSize_ * rowsInStrip_]);
            if (++rowsInStrip_ == rowsPerStrip_) {
                writeStrip();
            }
        }
    }

    std::vector<std::uint8_t> finish() override {
        if (rowsInStrip_ > 0) {
            writeStrip();
        }
        if (TIFFFlush(output_.handle.get()) != 1) {
            throw Error("there is not enough memory");
        }
        output_.handle.reset();
        return std::move(output_.bytes);
    }

  private:
    // The predictor works within the buffer that it is given.
    void writeStrip() {
        if (TIFFWriteEncodedStrip(output_.handle.get(), stripNumber_++, strip_.data(),
                                  static_cast<tmsize_t>(rowSize_ * rowsInStrip_)) < 0) {
            throw Error("there is not enough memory");
        }
        rowsInStrip_ = 0;
    }

    std::size_t rowSize_;
    std::size_t rowsPerStrip_;
    TiffOutput output_;
    std::vector<std::uint8_t> strip_;
    std::size_t rowsInStrip_ = 0;
    std::uint32_t stripNumber_ = 0;
};

} // namespace

std::unique_ptr<PictureEncoder> openTiffEncoder(const PictureToEncode& picture) {
    return std::make_unique<TiffEncoder>(picture);
}

} // namespace veldara
