#include "platform/image/tiff_layout.h"

#include "platform/error.h"
#include "platform/image/exif.h"
#include "platform/image/memory_limits.h"

#include <algorithm>
#include <limits>
#include <string>

namespace veldara {

namespace {

[[noreturn]] void unsupported(const std::string& what) {
    throw Error("its kind of TIFF is not supported (" + what + ")");
}

[[noreturn]] void damaged() {
    throw Error("its header is damaged");
}

template <class Number>
Number field(TIFF* tiff, std::uint32_t tag, Number otherwise) {
    Number value = otherwise;
    return TIFFGetFieldDefaulted(tiff, tag, &value) == 1 ? value : otherwise;
}

void readSize(TiffLayout& layout, TIFF* tiff) {
    layout.width = field<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH, 0);
    layout.height = field<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH, 0);
    constexpr auto most = static_cast<std::uint32_t>(std::numeric_limits<int>::max());
    if (layout.width == 0 || layout.height == 0 || layout.width > most || layout.height > most) {
        damaged();
    }
}

void readCompression(TiffLayout& layout, TIFF* tiff) {
    layout.compression = field<std::uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    switch (layout.compression) {
    case COMPRESSION_NONE:
    case COMPRESSION_PACKBITS:
    case COMPRESSION_LZW:
    case COMPRESSION_DEFLATE:
    case COMPRESSION_ADOBE_DEFLATE:
    case COMPRESSION_JPEG:
    case COMPRESSION_CCITTRLE:
    case COMPRESSION_CCITTFAX3:
    case COMPRESSION_CCITTFAX4:
        return;
    default:
        unsupported("compression " + std::to_string(layout.compression));
    }
}

void readSamples(TiffLayout& layout, TIFF* tiff) {
    layout.bits = field<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    layout.samples = field<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    layout.separatePlanes = layout.samples > 1 &&
                            field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) ==
                                PLANARCONFIG_SEPARATE;
    const auto format = field<std::uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID) {
        unsupported("samples that are not whole numbers");
    }
    std::uint16_t photometric = 0;
    if (TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric) == 1) {
        layout.photometric = photometric;
    } else {
        layout.photometric = layout.samples >= 3 ? PHOTOMETRIC_RGB
                             : layout.fax()      ? PHOTOMETRIC_MINISWHITE
                                                 : PHOTOMETRIC_MINISBLACK;
    }
}

unsigned coloursOf(unsigned photometric) {
    switch (photometric) {
    case PHOTOMETRIC_MINISWHITE:
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_PALETTE:
        return 1;
    case PHOTOMETRIC_RGB:
    case PHOTOMETRIC_YCBCR:
        return 3;
    case PHOTOMETRIC_SEPARATED:
        return 4;
    default:
        unsupported("colour kind " + std::to_string(photometric));
    }
}

void checkSamples(const TiffLayout& layout) {
    if (layout.samples < layout.colours || layout.samples > 16) {
        damaged();
    }
    const bool few = layout.bits == 1 || layout.bits == 2 || layout.bits == 4;
    const bool oneSample = layout.samples == 1 || layout.separatePlanes;
    const bool wide = layout.bits == 16 && layout.photometric != PHOTOMETRIC_PALETTE &&
                      layout.photometric != PHOTOMETRIC_YCBCR;
    if (layout.bits != 8 && !wide && !(few && oneSample && layout.colours == 1)) {
        unsupported(std::to_string(layout.bits) + " bits");
    }
}

void readAlpha(TiffLayout& layout, TIFF* tiff) {
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    if (TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) != 1 || count == 0 ||
        layout.samples <= layout.colours || layout.bits < 8) {
        return;
    }
    layout.alpha = kinds[0] == EXTRASAMPLE_ASSOCALPHA   ? TiffAlpha::premultiplied
                   : kinds[0] == EXTRASAMPLE_UNASSALPHA ? TiffAlpha::separate
                                                        : TiffAlpha::none;
}

// Colour differences coded by JPEG are turned into RGB by that decoder; all others are left to us.
void readChroma(TiffLayout& layout, TIFF* tiff) {
    if (layout.photometric != PHOTOMETRIC_YCBCR) {
        return;
    }
    if (layout.compression == COMPRESSION_JPEG && !layout.separatePlanes) {
        TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        layout.photometric = PHOTOMETRIC_RGB;
        return;
    }
    std::uint16_t across = 2;
    std::uint16_t down = 2;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_YCBCRSUBSAMPLING, &across, &down);
    const auto usual = [](unsigned factor) { return factor == 1 || factor == 2 || factor == 4; };
    if (!usual(across) || !usual(down)) {
        damaged();
    }
    layout.chromaAcross = across;
    layout.chromaDown = down;
    if (layout.separatePlanes && across * down != 1) {
        unsupported("separate planes of different sizes");
    }
    if (layout.samples != 3) {
        unsupported("YCbCr with " + std::to_string(layout.samples) + " samples");
    }
}

void readBlocks(TiffLayout& layout, TIFF* tiff) {
    layout.tiled = TIFFIsTiled(tiff) != 0;
    layout.blockWidth = layout.width;
    if (layout.tiled) {
        layout.blockWidth = field<std::uint32_t>(tiff, TIFFTAG_TILEWIDTH, 0);
        layout.blockHeight = field<std::uint32_t>(tiff, TIFFTAG_TILELENGTH, 0);
    } else {
        layout.blockHeight =
            std::min(layout.height, field<std::uint32_t>(tiff, TIFFTAG_ROWSPERSTRIP, 0xFFFFFFFF));
    }
    if (layout.blockWidth == 0 || layout.blockHeight == 0) {
        damaged();
    }
}

// The fewest bytes that such a page can be coded in, from the densest code of each compression.
std::uint64_t fewestBytes(const TiffLayout& layout, TIFF* tiff) {
    if (layout.fax()) {
        return layout.height / 8; // a row like the one above is a single bit
    }
    const auto blockSize = static_cast<std::uint64_t>(
        layout.tiled ? TIFFTileSize64(tiff) : TIFFVStripSize64(tiff, layout.height));
    const std::uint64_t blocks = layout.tiled ? TIFFNumberOfTiles(tiff) : layout.planes();
    if (blockSize == 0 || blocks == 0 ||
        blockSize > std::numeric_limits<std::uint64_t>::max() / blocks) {
        damaged();
    }
    const std::uint64_t size = blockSize * blocks;
    switch (layout.compression) {
    case COMPRESSION_NONE:
        return size;
    case COMPRESSION_PACKBITS:
        return size / 64;
    case COMPRESSION_LZW:
        return size / 1500;
    case COMPRESSION_JPEG:
        return size / 1400;
    default:
        return size / 1040; // Deflate
    }
}

// Every strip or tile lies within the file; a truncated file is refused at once.
void checkBlocksLieInFile(const TiffLayout& layout, TIFF* tiff, std::uint64_t fileSize) {
    const std::uint32_t count = layout.tiled ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t at = TIFFGetStrileOffset(tiff, i);
        const std::uint64_t size = TIFFGetStrileByteCount(tiff, i);
        if (size == 0 || size > fileSize || at > fileSize - size) {
            throw Error("its picture data is damaged or incomplete");
        }
    }
}

} // namespace

bool TiffLayout::fax() const {
    return compression == COMPRESSION_CCITTRLE || compression == COMPRESSION_CCITTFAX3 ||
           compression == COMPRESSION_CCITTFAX4;
}

TiffLayout readTiffLayout(TIFF* tiff, std::uint64_t fileSize) {
    TiffLayout layout;
    readSize(layout, tiff);
    readCompression(layout, tiff);
    readSamples(layout, tiff);
    layout.colours = coloursOf(layout.photometric);
    checkSamples(layout);
    readAlpha(layout, tiff);
    readChroma(layout, tiff);
    readBlocks(layout, tiff);
    if (fewestBytes(layout, tiff) > fileSize) {
        throw Error(
            tooFewBytesReason(static_cast<int>(layout.width), static_cast<int>(layout.height)));
    }
    checkBlocksLieInFile(layout, tiff, fileSize);

    layout.orientation = orientationOf(field<std::uint16_t>(tiff, TIFFTAG_ORIENTATION, 1));
    const auto unit = field<std::uint16_t>(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    if (unit != RESUNIT_NONE) {
        layout.dotsPerInch = wholeDotsPerInch(field<float>(tiff, TIFFTAG_XRESOLUTION, 0),
                                              unit == RESUNIT_CENTIMETER ? 2.54 : 1.0);
    }
    return layout;
}

} // namespace veldara
