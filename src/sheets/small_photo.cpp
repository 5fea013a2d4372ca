#include "sheets/small_photo.h"

#include "platform/error.h"
#include "platform/image/codec.h"
#include "platform/image/colour.h"
#include "platform/image/jpeg_file.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace veldara {
namespace {

constexpr std::size_t channels = 3;

// The sums of the pixels that one row of the small picture stands for.
class RowSums {
  public:
    RowSums(int areaWidth, int smallWidth)
        : sums_(channels * static_cast<std::size_t>(smallWidth)),
          counts_(static_cast<std::size_t>(smallWidth)) {
        for (int x = 0; x < areaWidth; ++x) {
            columns_.push_back(static_cast<std::size_t>(std::int64_t{x} * smallWidth / areaWidth));
        }
    }

    void add(const std::uint8_t* row) {
        for (const std::size_t column : columns_) {
            for (std::size_t c = 0; c < channels; ++c) {
                sums_[channels * column + c] += *row++;
            }
            ++counts_[column];
        }
    }

    void take(std::uint8_t* row) {
        for (std::size_t i = 0; i < sums_.size(); ++i) {
            const std::uint64_t count = std::max<std::uint64_t>(counts_[i / channels], 1);
            row[i] = static_cast<std::uint8_t>((sums_[i] + count / 2) / count);
        }
        std::fill(sums_.begin(), sums_.end(), 0);
        std::fill(counts_.begin(), counts_.end(), 0);
    }

  private:
    std::vector<std::size_t> columns_; // of the small picture, for each of the area's
    std::vector<std::uint64_t> sums_;
    std::vector<std::uint64_t> counts_;
};

// Gives the next rows of the area, as many as the view has.
using ReadRows = std::function<void(const MutablePixelView&)>;

// The mean of each pixel's share of an area of that size.
Image shrunk(int areaWidth, int areaHeight, const SmallSize& size,
             const std::function<void()>& stopped, const ReadRows& readRows) {
    Image result(size.width, size.height);
    RowSums sums(areaWidth, size.width);
    constexpr int rowsAtOnce = 16;
    Image rows(areaWidth, std::min(rowsAtOnce, areaHeight));
    int current = 0;
    for (int y = 0; y < areaHeight; y += rows.height()) {
        stopped();
        const int count = std::min(rows.height(), areaHeight - y);
        readRows(rows.mutableView().cut(0, 0, areaWidth, count));
        for (int i = 0; i < count; ++i) {
            const auto target = static_cast<int>(std::int64_t{y + i} * size.height / areaHeight);
            if (target != current) {
                sums.take(result.row(current));
                current = target;
            }
            sums.add(rows.row(i));
        }
    }
    sums.take(result.row(current));
    return result;
}

// How many times smaller the decoder can make a JPEG photo by itself (2, 4 or 8; 1: not at all) and
// still give the small picture two pixels for one.
int decoderScale(const PixelRectangle& area, const SmallSize& size) {
    int scale = 1;
    while (scale < 8 && std::min(area.width / size.width, area.height / size.height) >= 4 * scale) {
        scale *= 2;
    }
    return scale;
}

// A JPEG photo that streams, decoded at a fraction of its size: most of the work falls away.
// Nothing when the photo is of another kind.
std::optional<Image> smallJpeg(ByteSource& source, const PixelRectangle& area,
                               const SmallSize& size, const std::function<void()>& stopped) {
    const int scale = decoderScale(area, size);
    std::array<std::uint8_t, 2> start{};
    if (scale == 1 || !source.readFully(0, start.data(), start.size()) || start[0] != 0xFF ||
        start[1] != 0xD8) {
        return std::nullopt;
    }
    JpegFile file(source);
    jpeg_decompress_struct& state = file.state();
    if (!file.hasOneScan() || state.num_components == 4 ||
        file.exifFacts().orientation != Orientation::upright) {
        return std::nullopt;
    }
    state.out_color_space = JCS_RGB;
    state.scale_num = 1;
    state.scale_denom = static_cast<unsigned>(scale);
    file.errors().guard([&] { jpeg_start_decompress(&state); });
    const int left = area.left / scale;
    const int width = std::max(area.right() / scale - left, 1);
    const int top = area.top / scale;
    const int height = std::max(area.bottom() / scale - top, 1);
    std::vector<JSAMPLE> line(channels * state.output_width);
    const auto nextLine = [&] {
        file.errors().guard([&] {
            JSAMPROW row = line.data();
            jpeg_read_scanlines(&state, &row, 1);
        });
    };
    for (int y = 0; y < top; ++y) {
        nextLine();
    }
    Image result = shrunk(width, height, size, stopped, [&](const MutablePixelView& rows) {
        for (int y = 0; y < rows.height(); ++y) {
            nextLine();
            std::copy_n(line.begin() + static_cast<std::ptrdiff_t>(channels) * left,
                        channels * static_cast<std::size_t>(width), rows.row(y));
        }
    });
    result.colourProfile =
        profileForRgbRows(file.profile(), state.jpeg_color_space == JCS_GRAYSCALE);
    return result;
}

} // namespace

SmallSize smallSize(const PixelRectangle& area, int longest) {
    const double scale =
        std::min(1.0, static_cast<double>(longest) / std::max(area.width, area.height));
    const auto side = [&](int length) {
        return std::max(1, static_cast<int>(std::lround(length * scale)));
    };
    return {side(area.width), side(area.height)};
}

Image smallPhoto(const std::filesystem::path& photo, const PixelRectangle& area, int longest,
                 const std::function<void()>& stopped) {
    const SmallSize size = smallSize(area, longest);
    try {
        const std::unique_ptr<ByteSource> source = openFileBytes(photo);
        if (std::optional<Image> small = smallJpeg(*source, area, size, stopped)) {
            return std::move(*small);
        }
    } catch (const Error& error) {
        throw Error("Could not read \"" + pathText(photo) + "\": " + error.what() + ".");
    }
    const std::unique_ptr<RowReader> reader = openRowReader(photo);
    reader->wantColumns(area.left, area.width);
    reader->skipRows(area.top);
    Image result = shrunk(area.width, area.height, size, stopped,
                          [&](const MutablePixelView& rows) { reader->readRows(rows); });
    result.colourProfile = reader->colourProfile();
    return result;
}

} // namespace veldara
