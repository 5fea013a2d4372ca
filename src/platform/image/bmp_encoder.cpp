#include "platform/error.h"
#include "platform/image/bmp_format.h"
#include "platform/image/picture_encoder.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veldara {

namespace {

void put16(std::uint8_t* at, std::uint32_t value) {
    at[0] = static_cast<std::uint8_t>(value);
    at[1] = static_cast<std::uint8_t>(value >> 8);
}

void put32(std::uint8_t* at, std::uint32_t value) {
    put16(at, value);
    put16(at + 2, value >> 16);
}

void putHeaders(std::uint8_t* file, const PictureToEncode& picture, std::uint32_t headerSize,
                std::uint32_t pixelSize, std::uint32_t profileSize) {
    const std::uint32_t pixelsAt = bmp::fileHeaderSize + headerSize;
    file[0] = 'B';
    file[1] = 'M';
    put32(file + 2, pixelsAt + pixelSize + profileSize);
    put32(file + 10, pixelsAt);
    std::uint8_t* info = file + bmp::fileHeaderSize;
    const auto perMetre = static_cast<std::uint32_t>(std::lround(picture.dotsPerInch / 0.0254));
    put32(info, headerSize);
    put32(info + 4, static_cast<std::uint32_t>(picture.width));
    put32(info + 8, static_cast<std::uint32_t>(picture.height));
    put16(info + 12, 1); // planes
    put16(info + 14, 24);
    put32(info + 16, bmp::plain);
    put32(info + 20, pixelSize);
    put32(info + 24, perMetre);
    put32(info + 28, perMetre);
    if (profileSize != 0) {
        put32(info + bmp::colourSpaceAt, bmp::colourSpaceEmbedded);
        put32(info + bmp::intentAt, bmp::intentImages);
        put32(info + bmp::profileOffsetAt, headerSize + pixelSize);
        put32(info + bmp::profileSizeAt, profileSize);
    }
}

void putRow(std::uint8_t* stored, const std::uint8_t* rgb, std::size_t width) {
    for (std::size_t x = 0; x < width; ++x) {
        stored[3 * x] = rgb[3 * x + 2];
        stored[3 * x + 1] = rgb[3 * x + 1];
        stored[3 * x + 2] = rgb[3 * x];
    }
}

class BmpEncoder : public PictureEncoder {
  public:
    explicit BmpEncoder(const PictureToEncode& picture)
        : width_(static_cast<std::size_t>(picture.width)), rowSize_((3 * width_ + 3) / 4 * 4) {
        const std::size_t pixelSize = rowSize_ * static_cast<std::size_t>(picture.height);
        const std::uint32_t headerSize =
            picture.profile.empty() ? bmp::infoHeader : bmp::version5Header;
        const std::size_t pixelsAt = bmp::fileHeaderSize + headerSize;
        const std::size_t fileSize = pixelsAt + pixelSize + picture.profile.size();
        if (fileSize > std::numeric_limits<std::uint32_t>::max()) {
            throw Error("a bitmap file cannot be larger than 4 GB");
        }
        reserveLargePages(file_, fileSize);
        file_.resize(fileSize);
        putHeaders(file_.data(), picture, headerSize, static_cast<std::uint32_t>(pixelSize),
                   static_cast<std::uint32_t>(picture.profile.size()));
        next_ = pixelsAt + pixelSize;
        std::copy(picture.profile.begin(), picture.profile.end(),
                  file_.begin() + static_cast<std::ptrdiff_t>(next_));
    }

    // The format keeps the bottom row first.
    void writeRows(const PixelView& rows) override {
        for (int y = 0; y < rows.height(); ++y) {
            next_ -= rowSize_;
            putRow(&file_[next_], rows.row(y), width_);
        }
    }

    std::vector<std::uint8_t> finish() override { return std::move(file_); }

  private:
    std::size_t width_;
    std::size_t rowSize_;
    std::vector<std::uint8_t> file_;
    std::size_t next_ = 0; // the row written last
};

} // namespace

std::unique_ptr<PictureEncoder> openBmpEncoder(const PictureToEncode& picture) {
    return std::make_unique<BmpEncoder>(picture);
}

} // namespace veldara
