// Resampling in two steps a direction: whole groups of pixels are averaged first, which costs
// little and removes most of a large photo, until about twice the wanted size is left; a cubic
// filter as wide as the remaining scale does the rest. Enlarging uses the cubic filter alone.
#include "platform/image/resample.h"

#include "platform/error.h"
#include "platform/image/parallel_rows.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace veldara {

namespace {

constexpr int largestGroup = 256; // sums of bytes stay within 16 bits
constexpr int fewestRowsPerCore = 16;

// The piecewise cubic that passes through its samples (Keys, a = -1/2).
double cubic(double x) {
    x = std::abs(x);
    if (x < 1) {
        return (1.5 * x - 2.5) * x * x + 1;
    }
    return x < 2 ? ((-0.5 * x + 2.5) * x - 4) * x + 2 : 0;
}

// How one direction is resampled: groups of source pixels, and which groups make a result pixel.
class Axis {
  public:
    Axis(int source, int target)
        : source_(source), group_(std::clamp(source / (2 * target), 1, largestGroup)),
          groups_((source + group_ - 1) / group_) {
        const double length = static_cast<double>(source) / group_;
        const double scale = length / target;
        const double stretch = std::max(1.0, scale);
        for (int i = 0; i < target; ++i) {
            addTaps((i + 0.5) * scale, stretch, length);
        }
    }

    struct Taps {
        int first = 0;
        int count = 0;
        std::size_t weights = 0; // index of the first
    };

    int group() const { return group_; }
    int groups() const { return groups_; }
    int sizeOf(int group) const { return std::min(group_, source_ - group * group_); }
    const Taps& taps(int target) const { return taps_[static_cast<std::size_t>(target)]; }
    const float* weights(const Taps& taps) const { return weights_.data() + taps.weights; }
    int mostTaps() const { return mostTaps_; }

  private:
    void addTaps(double centre, double stretch, double length) {
        const double reach = 2 * stretch;
        Taps taps;
        taps.first = std::clamp(static_cast<int>(std::floor(centre - reach)), 0, groups_ - 1);
        const int end =
            std::clamp(static_cast<int>(std::ceil(centre + reach)), taps.first + 1, groups_);
        taps.count = end - taps.first;
        taps.weights = weights_.size();
        std::vector<double> weights;
        double sum = 0;
        for (int i = taps.first; i < end; ++i) {
            // The last group may hold fewer pixels, and counts for as much less.
            const double part = std::min(1.0, length - i);
            weights.push_back(part * cubic((i + part / 2 - centre) / stretch));
            sum += weights.back();
        }
        for (const double weight : weights) {
            weights_.push_back(static_cast<float>(weight / sum));
        }
        mostTaps_ = std::max(mostTaps_, taps.count);
        taps_.push_back(taps);
    }

    int source_;
    int group_;
    int groups_;
    int mostTaps_ = 0;
    std::vector<Taps> taps_;
    std::vector<float> weights_;
};

// The rows of group averages that the filter's window needs, made when it first reaches them.
class GroupRows {
  public:
    GroupRows(const PixelView& pixels, const Axis& across, const Axis& down)
        : pixels_(pixels), across_(across), down_(down),
          rowSize_(std::size_t{3} * static_cast<std::size_t>(across.groups())),
          slots_(static_cast<std::size_t>(down.mostTaps())), rows_(rowSize_ * slots_),
          held_(slots_, -1), sums_(std::size_t{3} * static_cast<std::size_t>(pixels.width())) {}

    std::size_t rowSize() const { return rowSize_; }

    const float* row(int group) {
        const std::size_t slot = static_cast<std::size_t>(group) % slots_;
        float* row = &rows_[slot * rowSize_];
        if (held_[slot] != group) {
            make(group, row);
            held_[slot] = group;
        }
        return row;
    }

  private:
    void make(int group, float* row) {
        const int height = down_.sizeOf(group);
        const int top = group * down_.group();
        if (height == 1 && across_.group() == 1) {
            std::copy_n(pixels_.row(top), sums_.size(), row);
            return;
        }
        std::copy_n(pixels_.row(top), sums_.size(), sums_.begin());
        for (int y = 1; y < height; ++y) {
            const std::uint8_t* source = pixels_.row(top + y);
            std::uint16_t* sums = sums_.data();
            for (std::size_t i = 0; i < sums_.size(); ++i) {
                sums[i] = static_cast<std::uint16_t>(sums[i] + source[i]);
            }
        }
        switch (across_.group()) { // the common ones unrolled
        case 1:
            average<1>(height, row);
            break;
        case 2:
            average<2>(height, row);
            break;
        case 3:
            average<3>(height, row);
            break;
        case 4:
            average<4>(height, row);
            break;
        default:
            average<0>(height, row);
            break;
        }
    }

    template <int fixedGroup>
    void average(int height, float* row) const {
        const int group = fixedGroup > 0 ? fixedGroup : across_.group();
        const int whole = pixels_.width() / group;
        const std::uint16_t* sums = sums_.data();
        const float scale = 1.0F / static_cast<float>(group * height);
        for (int i = 0; i < whole; ++i, row += 3) {
            sumGroup<fixedGroup>(sums, group, scale, row);
            sums += 3 * group;
        }
        const int rest = pixels_.width() - whole * group;
        if (rest > 0) {
            sumGroup<0>(sums, rest, 1.0F / static_cast<float>(rest * height), row);
        }
    }

    template <int fixedGroup>
    static void sumGroup(const std::uint16_t* sums, int group, float scale, float* average) {
        const int count = fixedGroup > 0 ? fixedGroup : group;
        std::uint32_t c0 = 0;
        std::uint32_t c1 = 0;
        std::uint32_t c2 = 0;
        for (int x = 0; x < count; ++x) {
            c0 += sums[3 * x];
            c1 += sums[3 * x + 1];
            c2 += sums[3 * x + 2];
        }
        average[0] = static_cast<float>(static_cast<std::int32_t>(c0)) * scale;
        average[1] = static_cast<float>(static_cast<std::int32_t>(c1)) * scale;
        average[2] = static_cast<float>(static_cast<std::int32_t>(c2)) * scale;
    }

    const PixelView& pixels_;
    const Axis& across_;
    const Axis& down_;
    std::size_t rowSize_;
    std::size_t slots_;
    std::vector<float> rows_;
    std::vector<int> held_;
    std::vector<std::uint16_t> sums_;
};

std::uint8_t byteOf(float value) {
    const float upToHalfMore = std::clamp(value, 0.0F, 255.0F) + 0.5F; // cut off, it is rounded
    return static_cast<std::uint8_t>(upToHalfMore);
}

void filterAcross(const Axis& across, const float* column, std::uint8_t* result, int width) {
    for (int x = 0; x < width; ++x) {
        const Axis::Taps& taps = across.taps(x);
        const float* weights = across.weights(taps);
        const float* from = column + std::ptrdiff_t{3} * taps.first;
        float c0 = 0;
        float c1 = 0;
        float c2 = 0;
        for (int i = 0; i < taps.count; ++i) {
            c0 += weights[i] * from[3 * i];
            c1 += weights[i] * from[3 * i + 1];
            c2 += weights[i] * from[3 * i + 2];
        }
        result[3 * x] = byteOf(c0);
        result[3 * x + 1] = byteOf(c1);
        result[3 * x + 2] = byteOf(c2);
    }
}

void resampleRows(const PixelView& pixels, const Axis& across, const Axis& down,
                  const MutablePixelView& result, int first, int end) {
    GroupRows groups(pixels, across, down);
    std::vector<float> column(groups.rowSize());
    for (int y = first; y < end; ++y) {
        const Axis::Taps& taps = down.taps(y);
        const float* weights = down.weights(taps);
        std::fill(column.begin(), column.end(), 0.0F);
        for (int i = 0; i < taps.count; ++i) {
            const float weight = weights[i];
            const float* row = groups.row(taps.first + i);
            float* sum = column.data();
            for (std::size_t x = 0; x < column.size(); ++x) {
                sum[x] += weight * row[x];
            }
        }
        filterAcross(across, column.data(), result.row(y), result.width());
    }
}

} // namespace

Image resampled(const PixelView& pixels, int width, int height) {
    if (pixels.empty()) {
        throw Error("A picture without pixels cannot be resampled.");
    }
    if (width == pixels.width() && height == pixels.height()) {
        return Image::copyOf(pixels);
    }
    Image result(width, height);
    const Axis across(pixels.width(), width);
    const Axis down(pixels.height(), height);
    const MutablePixelView rows = result.mutableView();
    forRows(height, fewestRowsPerCore,
            [&](int first, int end) { resampleRows(pixels, across, down, rows, first, end); });
    return result;
}

} // namespace veldara
