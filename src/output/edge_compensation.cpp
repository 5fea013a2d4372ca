#include "output/edge_compensation.h"

#include "platform/error.h"
#include "platform/image/resample.h"
#include "platform/text/rounding.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace veldara {
namespace {

constexpr std::size_t channels = 3;

void repeatPixel(std::uint8_t* to, const std::uint8_t* pixel, int count) {
    for (int i = 0; i < count; ++i, to += channels) {
        std::copy_n(pixel, channels, to);
    }
}

Image bordered(const PixelView& tile, const CompensationPlan& plan) {
    Image result(plan.width(), plan.height());
    const int top = plan.margins[edgeTop];
    for (int y = 0; y < plan.imageHeight; ++y) {
        borderRow(result.row(top + y), tile.row(y), plan);
    }
    const std::size_t rowBytes = channels * static_cast<std::size_t>(plan.width());
    for (int y = 0; y < top; ++y) {
        std::memcpy(result.row(y), result.row(top), rowBytes);
    }
    for (int y = top + plan.imageHeight; y < plan.height(); ++y) {
        std::memcpy(result.row(y), result.row(top + plan.imageHeight - 1), rowBytes);
    }
    return result;
}

} // namespace

void borderRow(std::uint8_t* to, const std::uint8_t* from, const CompensationPlan& plan) {
    const auto width = static_cast<std::size_t>(plan.imageWidth);
    const auto left = static_cast<std::size_t>(plan.margins[edgeLeft]);
    repeatPixel(to, from, plan.margins[edgeLeft]);
    std::memcpy(to + channels * left, from, channels * width);
    repeatPixel(to + channels * (left + width), from + channels * (width - 1),
                plan.margins[edgeRight]);
}

CompensationPlan planCompensation(int width, int height, double dotsPerInch,
                                  const EdgeTrims& trims) {
    if (!(dotsPerInch > 0) || width < 1 || height < 1) {
        throw Error("A tile without size cannot be enlarged for the printer's edges.");
    }
    CompensationPlan plan{width, height, {}};
    double effective = dotsPerInch;
    if (dotsPerInch < leastCompensationDotsPerInch) {
        const double scale = leastCompensationDotsPerInch / dotsPerInch;
        plan.imageWidth = roundHalfEven(width * scale);
        plan.imageHeight = roundHalfEven(height * scale);
        effective = leastCompensationDotsPerInch;
    }
    for (std::size_t edge = 0; edge < trims.size(); ++edge) {
        plan.margins[edge] = roundHalfEven(std::floor(effective * trims[edge]));
        if (plan.margins[edge] < 0) {
            throw Error("A tile's edge cannot be compensated by less than nothing.");
        }
    }
    return plan;
}

Image applyEdgeClipComp(const PixelView& tile, double dotsPerInch, const EdgeTrims& trims) {
    const CompensationPlan plan = planCompensation(tile.width(), tile.height(), dotsPerInch, trims);
    if (plan.imageWidth == tile.width() && plan.imageHeight == tile.height()) {
        return bordered(tile, plan);
    }
    return bordered(resampled(tile, plan.imageWidth, plan.imageHeight).view(), plan);
}

} // namespace veldara
