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

void putHeaders(std::uint8_t* file, const PixelView& pixels, int dotsPerInch,
                std::uint32_t headerSize, std::uint32_t pixelSize, std::uint32_t profileSize) {
    const std::uint32_t pixelsAt = bmp::fileHeaderSize + headerSize;
    file[0] = 'B';
    file[1] = 'M';
    put32(file + 2, pixelsAt + pixelSize + profileSize);
    put32(file + 10, pixelsAt);
    std::uint8_t* info = file + bmp::fileHeaderSize;
    const auto perMetre = static_cast<std::uint32_t>(std::lround(dotsPerInch / 0.0254));
    put32(info, headerSize);
    put32(info + 4, static_cast<std::uint32_t>(pixels.width()));
    put32(info + 8, static_cast<std::uint32_t>(pixels.height()));
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

} // namespace

std::vector<std::uint8_t> encodeBmp(const PixelView& pixels, int dotsPerInch,
                                    const ColourProfile& profile) {
    const auto width = static_cast<std::size_t>(pixels.width());
    const auto height = static_cast<std::size_t>(pixels.height());
    const std::size_t rowSize = (3 * width + 3) / 4 * 4;
    const std::uint32_t headerSize = profile.empty() ? bmp::infoHeader : bmp::version5Header;
    const std::size_t pixelsAt = bmp::fileHeaderSize + headerSize;
    const std::size_t fileSize = pixelsAt + rowSize * height + profile.size();
    if (fileSize > std::numeric_limits<std::uint32_t>::max()) {
        throw Error("a bitmap file cannot be larger than 4 GB");
    }
    std::vector<std::uint8_t> file(fileSize);
    putHeaders(file.data(), pixels, dotsPerInch, headerSize,
               static_cast<std::uint32_t>(rowSize * height),
               static_cast<std::uint32_t>(profile.size()));
    for (std::size_t y = 0; y < height; ++y) {
        putRow(&file[pixelsAt + rowSize * (height - 1 - y)], pixels.row(static_cast<int>(y)),
               width);
    }
    std::copy(profile.begin(), profile.end(),
              file.begin() + static_cast<std::ptrdiff_t>(pixelsAt + rowSize * height));
    return file;
}

} // namespace veldara
