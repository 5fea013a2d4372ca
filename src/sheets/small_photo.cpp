#include "sheets/small_photo.h"

#include "platform/image/codec.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
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
    const std::unique_ptr<RowReader> reader = openRowReader(photo);
    reader->wantColumns(area.left, area.width);
    reader->skipRows(area.top);
    Image result = shrunk(area.width, area.height, size, stopped,
                          [&](const MutablePixelView& rows) { reader->readRows(rows); });
    result.colourProfile = reader->colourProfile();
    return result;
}

} // namespace veldara
