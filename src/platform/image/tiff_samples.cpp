#include "platform/image/tiff_samples.h"

#include "platform/error.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace veldara {

namespace {

std::uint8_t eightBits(unsigned sixteen) {
    return static_cast<std::uint8_t>((sixteen + 128) / 257);
}

unsigned onWhite(unsigned colour, unsigned alpha, TiffAlpha kind) {
    const std::uint64_t behind = 65535 - alpha;
    if (kind == TiffAlpha::premultiplied) {
        return static_cast<unsigned>(std::min<std::uint64_t>(65535, colour + behind));
    }
    return static_cast<unsigned>((std::uint64_t{colour} * alpha + 65535 * behind + 32767) / 65535);
}

} // namespace

TiffSamples::TiffSamples(const TiffLayout& layout, TIFF* tiff, const ColourProfile& profile)
    : layout_(layout) {
    switch (layout.photometric) {
    case PHOTOMETRIC_PALETTE:
        fillPalette(tiff);
        break;
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_MINISWHITE:
        grey_ = true;
        fillGreyLevels();
        break;
    case PHOTOMETRIC_SEPARATED:
        inks_.emplace(profile);
        break;
    case PHOTOMETRIC_YCBCR:
        readChromaRange(tiff);
        break;
    default:
        break;
    }
}

void TiffSamples::fillPalette(TIFF* tiff) {
    std::array<std::uint16_t*, 3> channels{};
    if (TIFFGetField(tiff, TIFFTAG_COLORMAP, &channels[0], &channels[1], &channels[2]) != 1) {
        throw Error("it has no palette");
    }
    const std::size_t entries = std::size_t{1} << layout_.bits;
    bool wide = false;
    for (const std::uint16_t* channel : channels) {
        wide = wide || std::any_of(channel, channel + entries, [](unsigned v) { return v > 255; });
    }
    for (std::size_t i = 0; i < entries; ++i) {
        for (std::size_t c = 0; c < 3; ++c) {
            // Old writers left the upper half of the numbers empty.
            palette_[i][c] =
                wide ? eightBits(channels[c][i]) : static_cast<std::uint8_t>(channels[c][i]);
        }
    }
    indexed_ = IndexedPixels(palette_, layout_.bits);
    grey_ = indexed_.grey();
}

void TiffSamples::fillGreyLevels() {
    if (layout_.bits > 8) {
        return;
    }
    const unsigned greatest = (1U << layout_.bits) - 1;
    for (unsigned i = 0; i <= greatest; ++i) {
        const unsigned level = i * 255 / greatest;
        palette_[i].fill(static_cast<std::uint8_t>(
            layout_.photometric == PHOTOMETRIC_MINISWHITE ? 255 - level : level));
    }
    indexed_ = IndexedPixels(palette_, layout_.bits);
}

void TiffSamples::readChromaRange(TIFF* tiff) {
    float* luma = nullptr;
    float* range = nullptr;
    if (TIFFGetFieldDefaulted(tiff, TIFFTAG_YCBCRCOEFFICIENTS, &luma) != 1 ||
        TIFFGetFieldDefaulted(tiff, TIFFTAG_REFERENCEBLACKWHITE, &range) != 1) {
        throw Error("its header is damaged");
    }
    std::copy_n(luma, 3, luma_.begin());
    std::copy_n(range, 6, range_.begin());
    const auto usable = [](float value) { return std::isfinite(value); };
    bool good = std::all_of(luma_.begin(), luma_.end(), usable) && luma_[1] > 0 &&
                std::all_of(range_.begin(), range_.end(), usable);
    for (std::size_t i = 0; i < 6; i += 2) {
        good = good && range_[i + 1] > range_[i];
    }
    if (!good) {
        throw Error("its header is damaged");
    }
}

void TiffSamples::convert(std::span<const std::uint8_t* const> planes, std::size_t first,
                          std::size_t count, unsigned rowInUnit, std::uint8_t* rgb) {
    if (layout_.photometric == PHOTOMETRIC_YCBCR) {
        convertChroma(planes, first, count, rowInUnit, rgb);
    } else if (layout_.photometric == PHOTOMETRIC_SEPARATED) {
        convertInks(planes, first, count, rgb);
    } else if (layout_.photometric == PHOTOMETRIC_RGB && layout_.samples == 3 &&
               layout_.bits == 8 && planes.size() == 1) {
        std::memcpy(rgb, planes[0] + 3 * first, 3 * count);
    } else if (layout_.colours == 1 && layout_.alpha == TiffAlpha::none && layout_.bits <= 8 &&
               (layout_.samples == 1 || planes.size() > 1)) {
        indexed_.convert(planes[0], first, count, rgb);
    } else {
        convertRgbOrGrey(planes, first, count, rgb);
    }
}

unsigned TiffSamples::sample16(std::span<const std::uint8_t* const> planes, std::size_t pixel,
                               unsigned sample) const {
    const std::size_t index = planes.size() > 1 ? pixel : pixel * layout_.samples + sample;
    const std::uint8_t* plane = planes[planes.size() > 1 ? sample : 0];
    if (layout_.bits == 8) {
        return plane[index] * 257U;
    }
    std::uint16_t value = 0; // in the machine's byte order: the library has swapped it
    std::memcpy(&value, plane + 2 * index, 2);
    return value;
}

void TiffSamples::convertRgbOrGrey(std::span<const std::uint8_t* const> planes, std::size_t first,
                                   std::size_t count, std::uint8_t* rgb) const {
    const bool inverted = layout_.photometric == PHOTOMETRIC_MINISWHITE;
    const bool palette = layout_.photometric == PHOTOMETRIC_PALETTE;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned alpha =
            layout_.alpha == TiffAlpha::none ? 65535 : sample16(planes, first + i, layout_.colours);
        for (unsigned c = 0; c < 3; ++c) {
            unsigned value = sample16(planes, first + i, layout_.colours == 3 ? c : 0);
            if (palette) {
                value = palette_[value / 257][c] * 257U;
            }
            value = inverted ? 65535 - value : value;
            rgb[3 * i + c] = eightBits(
                layout_.alpha == TiffAlpha::none ? value : onWhite(value, alpha, layout_.alpha));
        }
    }
}

void TiffSamples::convertInks(std::span<const std::uint8_t* const> planes, std::size_t first,
                              std::size_t count, std::uint8_t* rgb) {
    inkRow_.resize(4 * count);
    for (std::size_t i = 0; i < count; ++i) {
        for (unsigned c = 0; c < 4; ++c) {
            inkRow_[4 * i + c] = eightBits(sample16(planes, first + i, c));
        }
    }
    if (inksKept_) {
        for (std::size_t i = 0; i < count; ++i, rgb += 6) {
            std::copy_n(&inkRow_[4 * i], 4, rgb);
            rgb[4] = rgb[5] = 0;
        }
        return;
    }
    inks_->convert(inkRow_.data(), rgb, count);
    if (layout_.alpha == TiffAlpha::none) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned alpha = sample16(planes, first + i, 4);
        for (std::size_t c = 0; c < 3; ++c) {
            // No ink is white already, so that the inks are never premultiplied onto black.
            rgb[3 * i + c] = eightBits(onWhite(rgb[3 * i + c] * 257U, alpha, TiffAlpha::separate));
        }
    }
}

void TiffSamples::convertChroma(std::span<const std::uint8_t* const> planes, std::size_t first,
                                std::size_t count, unsigned rowInUnit, std::uint8_t* rgb) const {
    const std::size_t across = layout_.chromaAcross;
    const std::size_t pixelsOfUnit = across * layout_.chromaDown;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t x = first + i;
        if (planes.size() > 1) {
            chromaToRgb(planes[0][x], planes[1][x], planes[2][x], rgb + 3 * i);
            continue;
        }
        // A unit: its brightness samples row by row, then one colour difference of each kind.
        const std::uint8_t* unit = planes[0] + x / across * (pixelsOfUnit + 2);
        chromaToRgb(unit[rowInUnit * across + x % across], unit[pixelsOfUnit],
                    unit[pixelsOfUnit + 1], rgb + 3 * i);
    }
}

// The formulas of TIFF 6.0, section 21.
void TiffSamples::chromaToRgb(unsigned y, unsigned cb, unsigned cr, std::uint8_t* rgb) const {
    const auto scaled = [this](unsigned code, std::size_t i, float whole) {
        return (static_cast<float>(code) - range_[i]) * whole / (range_[i + 1] - range_[i]);
    };
    const float brightness = scaled(y, 0, 255);
    const float blueness = scaled(cb, 2, 127);
    const float redness = scaled(cr, 4, 127);
    const float red = redness * (2 - 2 * luma_[0]) + brightness;
    const float blue = blueness * (2 - 2 * luma_[2]) + brightness;
    const float green = (brightness - luma_[2] * blue - luma_[0] * red) / luma_[1];
    const auto byte = [](float value) {
        const float upToHalfMore = std::clamp(value, 0.0F, 255.0F) + 0.5F;
        return static_cast<std::uint8_t>(upToHalfMore);
    };
    rgb[0] = byte(red);
    rgb[1] = byte(green);
    rgb[2] = byte(blue);
}

} // namespace veldara
