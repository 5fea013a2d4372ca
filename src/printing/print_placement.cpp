#include "printing/print_placement.h"

#include "sheets/sheet_page.h"

#include <algorithm>
#include <cmath>

namespace veldara {
namespace {

constexpr std::size_t channels = 3;

int dotsOf(double points, double perInch) {
    return std::max(1, static_cast<int>(std::lround(points / pointsPerInch * perInch)));
}

} // namespace

std::vector<PlacedBand> placedBands(double pageWidth, double pageHeight, const PrinterDots& dots,
                                    std::size_t mostBytes) {
    const int width = dotsOf(pageWidth, dots.perInchAcross);
    const int height = dotsOf(pageHeight, dots.perInchAcross);
    const std::size_t rowBytes = channels * static_cast<std::size_t>(width);
    const int most = static_cast<int>(
        std::clamp<std::size_t>(mostBytes / rowBytes, 1, static_cast<std::size_t>(height)));
    const auto down = [&](int row) {
        return static_cast<int>(std::lround(row * dots.perInchDown / dots.perInchAcross)) -
               dots.offsetDown;
    };
    std::vector<PlacedBand> bands;
    for (int row = 0; row < height; row += most) {
        const int rows = std::min(most, height - row);
        bands.push_back(
            {row, rows, -dots.offsetAcross, down(row), width, down(row + rows) - down(row)});
    }
    return bands;
}

} // namespace veldara
