#include "image/tiff_files.h"

#include "support/temp_folder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

#include <tiffio.h>

namespace veldara::test {

namespace {

using Pixel = std::array<int, 3>;

Pixel at(const Image& image, int x, int y) {
    const std::uint8_t* p = image.row(y) + std::ptrdiff_t{3} * x;
    return {p[0], p[1], p[2]};
}

int rounded(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

// The palette of the test: any colours that differ.
Pixel paletteColour(int index) {
    return {(index * 53 + 20) & 255, (index * 101 + 3) & 255, (255 - index * 17) & 255};
}

// One pixel's samples, and what they mean.
struct Samples {
    std::array<int, 5> values{};
    Pixel meaning{};
};

// Alpha of the test: all of its values turn up.
int alphaAt(int x, int y, int greatest) {
    return (x * 31 + y * 17) * 7 % (greatest + 1);
}

Pixel onWhite(const std::array<double, 3>& colour, double alpha, bool premultiplied) {
    Pixel result{};
    for (std::size_t c = 0; c < 3; ++c) {
        const double part = premultiplied ? colour[c] : colour[c] * alpha;
        result[c] = rounded(std::min(1.0, part + 1 - alpha) * 255);
    }
    return result;
}

Samples greySamples(const TiffKind& kind, const Pixel& photo, int x, int y, int greatest) {
    Samples samples;
    const int value =
        kind.bits == 16 ? (photo[1] * 257 + x * 3 + y) % 65536 : photo[1] * (greatest + 1) / 256;
    samples.values[0] = value;
    double level = static_cast<double>(value) / greatest;
    level = kind.photometric == 0 ? 1 - level : level;
    samples.meaning.fill(rounded(kind.bits < 8 ? std::floor(level * 255 + 1e-9) : level * 255));
    if (kind.samples == 2) {
        samples.values[1] = alphaAt(x, y, greatest);
        if (kind.extra > 0) {
            samples.meaning =
                onWhite({level, level, level}, static_cast<double>(samples.values[1]) / greatest,
                        kind.extra == 1);
        }
    }
    return samples;
}

Samples rgbSamples(const TiffKind& kind, const Pixel& photo, int x, int y, int greatest) {
    Samples samples;
    std::array<double, 3> colour{};
    const int alpha = alphaAt(x, y, greatest);
    for (std::size_t c = 0; c < 3; ++c) {
        int value = kind.bits == 16 ? (photo[c] * 257 + x * 5 + y) % 65536 : photo[c];
        if (kind.extra == 1) {
            value = static_cast<int>(static_cast<long long>(value) * alpha / greatest);
        }
        samples.values[c] = value;
        colour[c] = static_cast<double>(value) / greatest;
        samples.meaning[c] = rounded(colour[c] * 255);
    }
    if (kind.samples == 4) {
        samples.values[3] = alpha;
        if (kind.extra > 0) {
            samples.meaning =
                onWhite(colour, static_cast<double>(alpha) / greatest, kind.extra == 1);
        }
    }
    return samples;
}

Samples inkSamples(const TiffKind& kind, const Pixel& photo, int x, int y, int greatest) {
    Samples samples;
    const int factor = kind.bits == 16 ? 257 : 1;
    const int black = photo[0] / 3;
    std::array<double, 3> colour{};
    for (std::size_t c = 0; c < 3; ++c) {
        samples.values[c] = photo[c] * factor;
        samples.meaning[c] = rounded((255.0 - photo[c]) * (255 - black) / 255);
        colour[c] = samples.meaning[c] / 255.0;
    }
    samples.values[3] = black * factor;
    if (kind.samples == 5) {
        samples.values[4] = alphaAt(x, y, greatest);
        samples.meaning = onWhite(colour, static_cast<double>(samples.values[4]) / greatest, false);
    }
    return samples;
}

// BT.601 in the full range, as TIFF's defaults have it: Cb and Cr around 128, 127 steps to each
// side of the reference.
Samples chromaSamples(const Pixel& photo) {
    Samples samples;
    samples.values = {photo[0], (photo[1] + 128) / 2, (photo[2] + 128) / 2, 0, 0};
    const double y = samples.values[0];
    const double cb = (samples.values[1] - 128.0) * 127 / 127;
    const double cr = (samples.values[2] - 128.0) * 127 / 127;
    const double red = y + cr * (2 - 2 * 0.299);
    const double blue = y + cb * (2 - 2 * 0.114);
    const double green = (y - 0.114 * blue - 0.299 * red) / 0.587;
    samples.meaning = {rounded(std::clamp(red, 0.0, 255.0)), rounded(std::clamp(green, 0.0, 255.0)),
                       rounded(std::clamp(blue, 0.0, 255.0))};
    return samples;
}

Samples samplesAt(const TiffKind& kind, const Image& picture, int x, int y) {
    const Pixel photo = at(picture, x, y);
    const int greatest = (1 << kind.bits) - 1;
    switch (kind.photometric) {
    case 0:
    case 1:
        return greySamples(kind, photo, x, y, greatest);
    case 3: {
        Samples samples;
        samples.values[0] = photo[1] * (greatest + 1) / 256;
        samples.meaning = paletteColour(samples.values[0]);
        return samples;
    }
    case 5:
        return inkSamples(kind, photo, x, y, greatest);
    case 6: {
        if (kind.compression == COMPRESSION_JPEG) {
            return rgbSamples(kind, photo, x, y, greatest); // the library makes the differences
        }
        // Shared differences are those of the first pixel of the unit.
        const Pixel first = at(picture, x / kind.across * kind.across, y / kind.down * kind.down);
        return chromaSamples({photo[0], first[1], first[2]});
    }
    default:
        return rgbSamples(kind, photo, x, y, greatest);
    }
}

void putSample(Bytes& row, const TiffKind& kind, int index, int value) {
    if (kind.bits == 16) {
        const auto number = static_cast<std::uint16_t>(value); // the library swaps when it must
        std::memcpy(&row[2 * static_cast<std::size_t>(index)], &number, 2);
        return;
    }
    const int perByte = 8 / kind.bits;
    const int shift = 8 - kind.bits - index % perByte * kind.bits;
    auto& byte = row[static_cast<std::size_t>(index / perByte)];
    byte = static_cast<std::uint8_t>(byte | value << shift);
}

// A rectangle's samples, of one plane (or of all together when plane is -1), padded with zeros.
Bytes blockBytes(const TiffKind& kind, const Image& picture, int left, int top, int width,
                 int height, int plane) {
    Bytes block;
    const int perPixel = plane < 0 ? kind.samples : 1;
    for (int y = top; y < top + height; ++y) {
        Bytes row(static_cast<std::size_t>((width * perPixel * kind.bits + 7) / 8));
        for (int x = left; x < std::min(left + width, picture.width()) && y < picture.height();
             ++x) {
            const Samples samples = samplesAt(kind, picture, x, y);
            for (int s = 0; s < perPixel; ++s) {
                putSample(row, kind, (x - left) * perPixel + s,
                          samples.values[static_cast<std::size_t>(plane < 0 ? s : plane)]);
            }
        }
        append(block, row);
    }
    return block;
}

// Data units: brightness of across x down pixels, then one difference of each kind.
Bytes unitBytes(const TiffKind& kind, const Image& picture, int left, int top, int width,
                int height) {
    Bytes block;
    for (int y = top; y < top + height; y += kind.down) {
        for (int x = left; x < left + width; x += kind.across) {
            for (int i = 0; i < kind.across * kind.down; ++i) {
                const int px = std::min(x + i % kind.across, picture.width() - 1);
                const int py = std::min(y + i / kind.across, picture.height() - 1);
                block.push_back(
                    static_cast<std::uint8_t>(samplesAt(kind, picture, px, py).values[0]));
            }
            const Samples first = samplesAt(kind, picture, std::min(x, picture.width() - 1),
                                            std::min(y, picture.height() - 1));
            block.push_back(static_cast<std::uint8_t>(first.values[1]));
            block.push_back(static_cast<std::uint8_t>(first.values[2]));
        }
    }
    return block;
}

void setFields(TIFF* tiff, const TiffKind& kind, int width, int height) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.samples);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.separate ? 2 : 1);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, kind.orientation);
    if (kind.predictor != 1) {
        TIFFSetField(tiff, TIFFTAG_PREDICTOR, kind.predictor);
    }
    if (kind.faxOptions != 0) {
        TIFFSetField(tiff, TIFFTAG_GROUP3OPTIONS, kind.faxOptions);
    }
    if (kind.extra >= 0) {
        const auto extra = static_cast<std::uint16_t>(kind.extra);
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &extra);
    }
    if (kind.photometric == 6) {
        TIFFSetField(tiff, TIFFTAG_YCBCRSUBSAMPLING, kind.across, kind.down);
        if (kind.compression == COMPRESSION_JPEG) {
            TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        }
    }
    if (kind.compression == COMPRESSION_JPEG) {
        TIFFSetField(tiff, TIFFTAG_JPEGQUALITY, 95);
    }
    if (kind.resolution > 0) {
        TIFFSetField(tiff, TIFFTAG_XRESOLUTION, kind.resolution);
        TIFFSetField(tiff, TIFFTAG_YRESOLUTION, kind.resolution);
        TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, kind.resolutionUnit);
    }
    if (!kind.profile.empty()) {
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(kind.profile.size()),
                     kind.profile.data());
    }
    if (kind.tileSide > 0) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, kind.tileSide);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, kind.tileSide);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, kind.rowsPerStrip);
    }
}

void setPalette(TIFF* tiff, const TiffKind& kind) {
    std::array<std::vector<std::uint16_t>, 3> channels;
    for (int i = 0; i < 1 << kind.bits; ++i) {
        for (std::size_t c = 0; c < 3; ++c) {
            channels[c].push_back(static_cast<std::uint16_t>(paletteColour(i)[c] * 257));
        }
    }
    TIFFSetField(tiff, TIFFTAG_COLORMAP, channels[0].data(), channels[1].data(),
                 channels[2].data());
}

void writeBlocks(TIFF* tiff, const TiffKind& kind, const Image& picture) {
    const bool units = kind.across * kind.down > 1 && kind.compression != COMPRESSION_JPEG;
    const int blockWidth = kind.tileSide > 0 ? kind.tileSide : picture.width();
    const int blockHeight = kind.tileSide > 0 ? kind.tileSide : kind.rowsPerStrip;
    std::uint32_t number = 0;
    for (int plane = kind.separate ? 0 : -1; plane < (kind.separate ? kind.samples : 0); ++plane) {
        for (int y = 0; y < picture.height(); y += blockHeight) {
            for (int x = 0; x < picture.width(); x += blockWidth) {
                const int height =
                    kind.tileSide > 0 ? blockHeight : std::min(blockHeight, picture.height() - y);
                Bytes block = units ? unitBytes(kind, picture, x, y, blockWidth, height)
                                    : blockBytes(kind, picture, x, y, blockWidth, height, plane);
                const auto size = static_cast<tmsize_t>(block.size());
                const tmsize_t wrote =
                    kind.tileSide > 0 ? TIFFWriteEncodedTile(tiff, number, block.data(), size)
                                      : TIFFWriteEncodedStrip(tiff, number, block.data(), size);
                if (wrote < 0) {
                    std::abort();
                }
                ++number;
            }
        }
    }
}

Image expectedPicture(const TiffKind& kind, const Image& picture) {
    Image expected(picture.width(), picture.height());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const Pixel meaning = samplesAt(kind, picture, x, y).meaning;
            for (std::size_t c = 0; c < 3; ++c) {
                expected.row(y)[3 * static_cast<std::size_t>(x) + c] =
                    static_cast<std::uint8_t>(meaning[c]);
            }
        }
    }
    return expected;
}

} // namespace

TiffFile makeTiff(const TiffKind& kind, int width, int height) {
    const TempFolder folder;
    const std::filesystem::path path = folder.path() / "made.tif";
    const Image picture = photo(width, height);
    const std::string mode =
        std::string("w") + (kind.big ? "8" : "4") + (kind.bigEndian ? "b" : "l");
    TIFFSetWarningHandler(nullptr); // the old Deflate code is meant
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(
        TIFFOpen(path.string().c_str(), mode.c_str()), TIFFClose);
    setFields(tiff.get(), kind, width, height);
    if (kind.photometric == 3) {
        setPalette(tiff.get(), kind);
    }
    writeBlocks(tiff.get(), kind, picture);
    TIFFFlush(tiff.get());
    std::ifstream stream(path, std::ios::binary);
    return {Bytes(std::istreambuf_iterator<char>(stream), {}), expectedPicture(kind, picture)};
}

std::vector<TiffKind> everyTiffSampleKind() {
    std::vector<TiffKind> kinds;
    const auto add = [&](const char* name, int bits, int samples, int photometric, int extra = -1) {
        TiffKind kind;
        kind.name = name;
        kind.bits = bits;
        kind.samples = samples;
        kind.photometric = photometric;
        kind.extra = extra;
        kinds.push_back(kind);
    };
    add("bilevel", 1, 1, 1);
    add("bilevelInverted", 1, 1, 0);
    add("grey2", 2, 1, 1);
    add("grey4", 4, 1, 1);
    add("grey8", 8, 1, 1);
    add("grey8Inverted", 8, 1, 0);
    add("grey16", 16, 1, 1);
    add("grey16Inverted", 16, 1, 0);
    add("greyAlpha", 8, 2, 1, 2);
    add("greyAlphaPremultiplied", 8, 2, 1, 1);
    add("grey16Alpha", 16, 2, 1, 2);
    add("greyUnknownExtra", 8, 2, 1, 0);
    add("greyTwoUnknownExtras", 8, 3, 1);
    add("palette1", 1, 1, 3);
    add("palette2", 2, 1, 3);
    add("palette4", 4, 1, 3);
    add("palette8", 8, 1, 3);
    add("paletteUnknownExtra", 8, 2, 3, 0);
    add("rgb8", 8, 3, 2);
    add("rgb16", 16, 3, 2);
    add("rgbAlpha8", 8, 4, 2, 2);
    add("rgbPremultiplied8", 8, 4, 2, 1);
    add("rgbUnknownExtra", 8, 4, 2, 0);
    add("rgbAlpha16", 16, 4, 2, 2);
    add("rgbPremultiplied16", 16, 4, 2, 1);
    add("inks8", 8, 4, 5);
    add("inks16", 16, 4, 5);
    add("inksAlpha8", 8, 5, 5, 2);
    add("inksAlpha16", 16, 5, 5, 2);
    add("chroma11", 8, 3, 6);
    for (const auto& [across, down] : {std::pair{2, 1}, {2, 2}, {4, 2}, {1, 2}}) {
        add("chroma", 8, 3, 6);
        kinds.back().across = across;
        kinds.back().down = down;
        kinds.back().rowsPerStrip = 8;
        kinds.back().name += std::to_string(across) + std::to_string(down);
    }
    return kinds;
}

std::uint32_t dataPositionOfBareTiff(std::size_t fields) {
    return static_cast<std::uint32_t>(8 + 2 + 12 * fields + 4);
}

TiffKind tiffKindNamed(const std::string& name) {
    for (const TiffKind& kind : everyTiffSampleKind()) {
        if (kind.name == name) {
            return kind;
        }
    }
    throw std::invalid_argument("no kind " + name);
}

Bytes bareTiff(const std::vector<std::pair<unsigned, std::uint32_t>>& fields, const Bytes& data) {
    Bytes file = {'I', 'I', 42, 0, 8, 0, 0, 0};
    put16(file, static_cast<unsigned>(fields.size()));
    for (const auto& [tag, value] : fields) {
        put16(file, tag);
        put16(file, 4); // 32-bit number
        put32(file, 1);
        put32(file, value);
    }
    put32(file, 0);
    append(file, data);
    return file;
}

} // namespace veldara::test
