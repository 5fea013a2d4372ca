#include "platform/image/bmp_header.h"

#include "platform/error.h"
#include "platform/image/bmp_format.h"
#include "platform/image/exif.h"
#include "platform/image/memory_limits.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

namespace veldara {

namespace {

[[noreturn]] void damaged() {
    throw Error("its header is damaged");
}

// The information header's bytes; fields beyond its end read as zero, as the longer kinds define.
class InfoHeader {
  public:
    InfoHeader(ByteSource& source, std::uint32_t size) {
        if (!source.readFully(bmp::fileHeaderSize, bytes_.data(), size)) {
            throw Error("the file ends within its header");
        }
    }
    std::uint32_t u16(std::size_t at) const {
        return bytes_[at] | static_cast<std::uint32_t>(bytes_[at + 1]) << 8;
    }
    std::uint32_t u32(std::size_t at) const { return u16(at) | u16(at + 2) << 16; }
    std::int32_t i32(std::size_t at) const { return static_cast<std::int32_t>(u32(at)); }

  private:
    std::array<std::uint8_t, bmp::version5Header> bytes_{};
};

std::uint32_t little32(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 |
           std::uint32_t{bytes[3]} << 24;
}

bool knownHeaderSize(std::uint32_t size) {
    constexpr std::array sizes = {bmp::coreHeader,          bmp::os2ShortHeader,
                                  bmp::infoHeader,          bmp::infoHeaderWithMasks,
                                  bmp::infoHeaderWithAlpha, bmp::os2Header,
                                  bmp::version4Header,      bmp::version5Header};
    return std::find(sizes.begin(), sizes.end(), size) != sizes.end();
}

void readSize(BmpHeader& header, const InfoHeader& info, bool core) {
    const std::int64_t width = core ? static_cast<std::int32_t>(info.u16(4)) : info.i32(4);
    const std::int64_t height = core ? static_cast<std::int32_t>(info.u16(6)) : info.i32(8);
    if (width <= 0 || height == 0 || std::abs(height) > std::numeric_limits<int>::max()) {
        damaged();
    }
    header.width = static_cast<int>(width);
    header.height = static_cast<int>(std::abs(height));
    header.topDown = height < 0;
    header.bitsPerPixel = core ? info.u16(10) : info.u16(14);
}

void checkKind(const BmpHeader& header, std::uint32_t headerSize) {
    const unsigned bits = header.bitsPerPixel;
    const bool masked = bits == 16 || bits == 32;
    bool good = false;
    switch (header.compression) {
    case bmp::plain:
        good = bits == 1 || bits == 4 || bits == 8 || bits == 24 || masked;
        break;
    case bmp::runLength8:
        good = bits == 8 && !header.topDown;
        break;
    case bmp::runLength4:
        good = bits == 4 && !header.topDown;
        break;
    case bmp::bitFields:
    case bmp::alphaBitFields:
        good = masked && headerSize != bmp::os2Header;
        break;
    default:
        break;
    }
    if (!good) {
        throw Error("its kind of bitmap is not supported (" + std::to_string(bits) +
                    " bits, compression " + std::to_string(header.compression) + ")");
    }
}

bool contiguous(std::uint32_t mask) {
    const std::uint32_t lowest = mask & (~mask + 1);
    return ((mask + lowest) & mask) == 0;
}

// Where the colour masks are, and what they are. Returns the bytes that they take behind the
// header.
std::uint32_t readMasks(BmpHeader& header, ByteSource& source, const InfoHeader& info,
                        std::uint32_t headerSize) {
    std::uint32_t behindHeader = 0;
    if (header.compression == bmp::plain) {
        header.masks = header.bitsPerPixel == 16
                           ? std::array<std::uint32_t, 4>{0x7C00, 0x03E0, 0x001F, 0}
                           : std::array<std::uint32_t, 4>{0xFF0000, 0x00FF00, 0x0000FF, 0};
    } else if (headerSize >= bmp::infoHeaderWithMasks) {
        header.masks = {info.u32(40), info.u32(44), info.u32(48),
                        headerSize >= bmp::infoHeaderWithAlpha ? info.u32(52) : 0};
    } else {
        behindHeader = header.compression == bmp::alphaBitFields ? 16 : 12;
        std::array<std::uint8_t, 16> bytes{};
        if (!source.readFully(bmp::fileHeaderSize + headerSize, bytes.data(), behindHeader)) {
            throw Error("the file ends within its header");
        }
        for (std::size_t i = 0; i < 4; ++i) {
            header.masks[i] = little32(&bytes[4 * i]);
        }
    }
    for (const std::uint32_t mask : header.masks) {
        if (!contiguous(mask) || (header.bitsPerPixel == 16 && mask > 0xFFFF)) {
            damaged();
        }
    }
    return behindHeader;
}

void readPalette(BmpHeader& header, ByteSource& source, std::uint64_t at, std::uint64_t entries,
                 std::size_t entrySize) {
    entries = std::min<std::uint64_t>(entries, std::uint64_t{1} << header.bitsPerPixel);
    if (header.pixelsAt > at) { // some writers count entries that they do not write
        entries = std::min<std::uint64_t>(entries, (header.pixelsAt - at) / entrySize);
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(entries) * entrySize);
    if (!source.readFully(at, bytes.data(), bytes.size())) {
        throw Error("the file ends within its palette");
    }
    for (std::size_t i = 0; i < entries; ++i) {
        const std::uint8_t* entry = &bytes[i * entrySize];
        header.palette[i] = {entry[2], entry[1], entry[0]};
    }
}

void checkPlausible(BmpHeader& header, std::uint64_t fileSize) {
    const auto width = static_cast<std::uint64_t>(header.width);
    const auto height = static_cast<std::uint64_t>(header.height);
    const std::uint64_t pixelBytes = fileSize > header.pixelsAt ? fileSize - header.pixelsAt : 0;
    if (header.runLengthCoded()) {
        // Two bytes paint 255 pixels at the most. Skipped pixels cost less, but a picture that is
        // mostly skipped is no photograph.
        if (width * height > (pixelBytes + 1) / 2 * 255) {
            throw Error(tooFewBytesReason(header.width, header.height));
        }
        return;
    }
    const std::uint64_t rowSize = (width * header.bitsPerPixel + 7) / 8;
    header.storedRowSize = (rowSize + 3) / 4 * 4;
    // Not every writer pads the last row.
    if (header.storedRowSize * (height - 1) + rowSize > pixelBytes) {
        throw Error(pixelBytes < header.storedRowSize * height / 2
                        ? tooFewBytesReason(header.width, header.height)
                        : "the file ends before its last row");
    }
}

void readProfilePlace(BmpHeader& header, const InfoHeader& info, std::uint64_t fileSize) {
    const std::uint64_t at = std::uint64_t{bmp::fileHeaderSize} + info.u32(bmp::profileOffsetAt);
    const std::uint32_t size = info.u32(bmp::profileSizeAt);
    if (info.u32(bmp::colourSpaceAt) == bmp::colourSpaceEmbedded && at + size <= fileSize) {
        header.profileAt = at;
        header.profileSize = size;
    }
}

} // namespace

BmpHeader readBmpHeader(ByteSource& source) {
    std::array<std::uint8_t, bmp::fileHeaderSize + 4> start{};
    if (!source.readFully(0, start.data(), start.size())) {
        throw Error("the file ends within its header");
    }
    const std::uint32_t headerSize = little32(&start[bmp::fileHeaderSize]);
    if (!knownHeaderSize(headerSize)) {
        damaged();
    }
    const InfoHeader info(source, headerSize);
    const bool core = headerSize == bmp::coreHeader;

    BmpHeader header;
    header.pixelsAt = little32(&start[10]);
    readSize(header, info, core);
    header.compression = headerSize >= bmp::infoHeader ? info.u32(16) : bmp::plain;
    header.dotsPerInch = headerSize >= bmp::infoHeader ? wholeDotsPerInch(info.i32(24), 0.0254) : 0;
    checkKind(header, headerSize);
    std::uint64_t end = std::uint64_t{bmp::fileHeaderSize} + headerSize;
    if (header.pixelsAt < end) {
        damaged();
    }
    if (header.bitsPerPixel == 16 || header.bitsPerPixel == 32) {
        end += readMasks(header, source, info, headerSize);
    }
    if (header.bitsPerPixel <= 8) {
        const std::uint32_t used = headerSize >= bmp::infoHeader ? info.u32(32) : 0;
        readPalette(header, source, end, used != 0 ? used : std::uint64_t{1} << header.bitsPerPixel,
                    core ? 3 : 4);
    }
    checkPlausible(header, source.size());
    if (headerSize == bmp::version5Header) {
        readProfilePlace(header, info, source.size());
    }
    return header;
}

} // namespace veldara
