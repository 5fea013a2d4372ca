#include "calibration/test_target.h"

#include "platform/image/text_drawing.h"
#include "platform/image/tile_format.h"
#include "platform/text/rounding.h"

#include <algorithm>
#include <array>

namespace veldara {
namespace {

constexpr const char* testWords = "Edge Test Print";
constexpr int smallestText = 6;
constexpr int largestText = 200;

using Colour = std::array<std::uint8_t, 3>;

// From the edge inward.
constexpr std::array<Colour, 4> stripeColours{Colour{180, 120, 0}, Colour{0, 0, 255},
                                              Colour{0, 255, 0}, Colour{255, 0, 0}};

// Columns left .. right - 1 of rows top .. bottom - 1, clipped to the picture.
void fill(const MutablePixelView& pixels, int left, int top, int right, int bottom,
          const Colour& colour) {
    for (int y = std::max(top, 0); y < std::min(bottom, pixels.height()); ++y) {
        for (int x = std::max(left, 0); x < std::min(right, pixels.width()); ++x) {
            std::copy(colour.begin(), colour.end(),
                      pixels.row(y) + std::size_t{3} * static_cast<std::size_t>(x));
        }
    }
}

TextSize boxLimits(int imageWidth, int imageHeight, double fraction) {
    return {roundHalfEven(imageWidth * fraction), roundHalfEven(imageHeight * fraction)};
}

// The first size that does not fit, and how large the words were at the last size that was tried.
struct FoundSize {
    int pixelSize = 0;
    TextSize measured;
};

FoundSize findTextSize(int imageWidth, int imageHeight, double fraction) {
    const TextSize limits = boxLimits(imageWidth, imageHeight, fraction);
    FoundSize found{smallestText, {}};
    for (; found.pixelSize <= largestText; ++found.pixelSize) {
        found.measured = measureText(testWords, found.pixelSize);
        if (found.measured.width > limits.width || found.measured.height > limits.height) {
            break;
        }
    }
    return found;
}

} // namespace

Image createTestImage(double heightInches, double widthInches) {
    Image image = Image::filled(roundHalfEven(widthInches * testTargetDotsPerInch),
                                roundHalfEven(heightInches * testTargetDotsPerInch), 255, 255, 255);
    paintTestStripes(image.mutableView());
    drawTestImageText(image.mutableView());
    image.dotsPerInch = testTargetDotsPerInch;
    return image;
}

void paintTestStripes(const MutablePixelView& pixels) {
    const int width = pixels.width();
    const int height = pixels.height();
    constexpr int band = testStripePixels;
    for (int i = 0; i < static_cast<int>(stripeColours.size()); ++i) {
        const Colour& colour = stripeColours[static_cast<std::size_t>(i)];
        const int outer = i * band;
        fill(pixels, 0, outer, width, outer + band, colour);
        fill(pixels, 0, height - outer - band, width, height - outer, colour);
    }
    for (int i = 0; i < static_cast<int>(stripeColours.size()); ++i) {
        const Colour& colour = stripeColours[static_cast<std::size_t>(i)];
        const int outer = i * band;
        fill(pixels, outer, outer, outer + band, height - outer, colour);
        fill(pixels, width - outer - band, outer, width - outer, height - outer, colour);
    }
}

int testTextSize(int imageWidth, int imageHeight, double fraction) {
    return findTextSize(imageWidth, imageHeight, fraction).pixelSize;
}

void drawTestImageText(const MutablePixelView& pixels, double fraction) {
    const FoundSize found = findTextSize(pixels.width(), pixels.height(), fraction);
    const int x = roundHalfEven(pixels.width() / 2.0 - found.measured.width / 2.0);
    const int y = roundHalfEven(pixels.height() / 2.0 - found.measured.height / 2.0);
    drawText(pixels, x, y, testWords, found.pixelSize, 0, 0, 0, 100);
}

SaveFileRequest testTargetSaveRequest(const std::string& defaultName) {
    SaveFileRequest request;
    request.title = "Save Test Target";
    for (const TileFormatRow& row : tileFormats()) {
        request.filters.push_back({std::string(row.filterText), "*" + std::string(row.ending)});
    }
    request.defaultName = defaultName.empty() ? "edge_clipping_test" : defaultName;
    return request;
}

} // namespace veldara
