#include "sheets/jpeg_miniature.h"

#include <algorithm>

namespace veldara {

namespace {

constexpr int whole = 256; // a pixel's side, in the unit of the shares

int blockWidth(const jpeg_decompress_struct& photo, int component) {
    return DCTSIZE * photo.max_h_samp_factor / photo.comp_info[component].h_samp_factor;
}

int blockHeight(const jpeg_decompress_struct& photo, int component) {
    return DCTSIZE * photo.max_v_samp_factor / photo.comp_info[component].v_samp_factor;
}

std::uint8_t sample(double value) {
    return static_cast<std::uint8_t>(std::clamp(value + 0.5, 0.0, 255.0));
}

} // namespace

bool JpegMiniature::serves(const jpeg_decompress_struct& photo, const PixelRectangle& area,
                           const SmallSize& size) {
    const J_COLOR_SPACE colour = photo.jpeg_color_space;
    return (colour == JCS_GRAYSCALE || colour == JCS_YCbCr || colour == JCS_RGB) &&
           area.width >= DCTSIZE * size.width && area.height >= DCTSIZE * size.height;
}

JpegMiniature::JpegMiniature(const jpeg_decompress_struct& photo, const PixelRectangle& area,
                             const SmallSize& size)
    : size_(size), colour_(photo.jpeg_color_space), photo_(photo) {
    const int mcuHeight = DCTSIZE * photo.max_v_samp_factor;
    rowsNeeded_ = (area.bottom() + mcuHeight - 1) / mcuHeight;
    const auto pixels =
        static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    for (int i = 0; i < photo.num_components; ++i) {
        Plane plane;
        plane.columns = sharesOf(blockWidth(photo, i), area.left, area.width, size.width);
        plane.rows = sharesOf(blockHeight(photo, i), area.top, area.height, size.height);
        plane.rowsInMcu = photo.comp_info[i].v_samp_factor;
        plane.sums.resize(pixels);
        plane.inRow.resize(static_cast<std::size_t>(size.width));
        planes_.push_back(std::move(plane));
    }
}

std::vector<JpegMiniature::Share> JpegMiniature::sharesOf(int blockSide, int first, int length,
                                                          int pixels) {
    const auto placeOf = [&](int block) {
        const std::int64_t place = std::int64_t{block} * blockSide - first;
        return static_cast<int>(std::clamp<std::int64_t>(place, 0, length) * pixels * whole /
                                length);
    };
    std::vector<Share> shares;
    for (int block = first / blockSide; block * blockSide < first + length; ++block) {
        const int end = placeOf(block + 1);
        for (int place = placeOf(block); place < end;) {
            const int pixel = place / whole;
            const int next = std::min(end, (pixel + 1) * whole);
            shares.push_back({block, pixel, next - place});
            place = next;
        }
    }
    return shares;
}

void JpegMiniature::add(const JpegCoefficients& coefficients, int mcuRow) {
    for (std::size_t i = 0; i < planes_.size(); ++i) {
        Plane& plane = planes_[i];
        const int component = static_cast<int>(i);
        // Known since the scan's header was read.
        plane.step = photo_.comp_info[component].quant_table->quantval[0];
        const int end = (mcuRow + 1) * plane.rowsInMcu;
        int summed = -1;
        while (plane.nextRow < plane.rows.size() && plane.rows[plane.nextRow].block < end) {
            const Share& share = plane.rows[plane.nextRow++];
            if (share.block != summed) {
                sumRow(plane, coefficients.blocks(component, share.block));
                summed = share.block;
            }
            std::int64_t* const sums =
                plane.sums.data() + std::ptrdiff_t{size_.width} * share.pixel;
            for (std::size_t x = 0; x < plane.inRow.size(); ++x) {
                sums[x] += plane.inRow[x] * share.weight;
            }
        }
    }
}

void JpegMiniature::sumRow(Plane& plane, const JBLOCK* blocks) {
    std::fill(plane.inRow.begin(), plane.inRow.end(), 0);
    for (const Share& share : plane.columns) {
        plane.inRow[static_cast<std::size_t>(share.pixel)] +=
            std::int64_t{blocks[share.block][0]} * share.weight;
    }
}

// The coefficient is eight times the mean, which counts from the middle of the samples' range.
double JpegMiniature::valueAt(std::size_t plane, std::size_t pixel) const {
    constexpr double parts = 8.0 * whole * whole;
    return 128 + static_cast<double>(planes_[plane].sums[pixel] * planes_[plane].step) / parts;
}

Image JpegMiniature::picture() const {
    Image image(size_.width, size_.height);
    std::size_t pixel = 0;
    for (int y = 0; y < size_.height; ++y) {
        std::uint8_t* out = image.row(y);
        for (int x = 0; x < size_.width; ++x, ++pixel, out += 3) {
            const double first = valueAt(0, pixel);
            if (colour_ == JCS_GRAYSCALE) {
                std::fill_n(out, 3, sample(first));
                continue;
            }
            const double second = valueAt(1, pixel);
            const double third = valueAt(2, pixel);
            if (colour_ == JCS_RGB) {
                out[0] = sample(first);
                out[1] = sample(second);
                out[2] = sample(third);
                continue;
            }
            const double blue = second - 128; // differences, as JFIF defines them
            const double red = third - 128;
            out[0] = sample(first + 1.402 * red);
            out[1] = sample(first - 0.344136 * blue - 0.714136 * red);
            out[2] = sample(first + 1.772 * blue);
        }
    }
    return image;
}

} // namespace veldara
