#include "platform/image/turn.h"

#include "platform/image/operations.h"
#include "platform/image/parallel_rows.h"

#include <algorithm>
#include <cstring>

namespace veldara {

namespace {

// A block of source and target pixels that stays in the first-level cache.
constexpr int blockSide = 32;
constexpr int fewestRowsPerCore = 64;

void movePixel(std::uint8_t* to, const std::uint8_t* from) {
    to[0] = from[0];
    to[1] = from[1];
    to[2] = from[2];
}

void reversedRow(const std::uint8_t* from, std::uint8_t* to, int width) {
    from += std::ptrdiff_t{3} * (width - 1);
    for (int x = 0; x < width; ++x, to += 3, from -= 3) {
        movePixel(to, from);
    }
}

} // namespace

void exchangeSides(const PixelView& source, const MutablePixelView& target, bool mirrorColumns,
                   bool mirrorRows) {
    const int width = source.width();
    const int height = source.height();
    const std::ptrdiff_t step = mirrorColumns ? -3 : 3;
    for (int blockTop = 0; blockTop < height; blockTop += blockSide) {
        const int blockHeight = std::min(blockSide, height - blockTop);
        const int column = mirrorColumns ? height - 1 - blockTop : blockTop;
        for (int x = 0; x < width; ++x) {
            const std::uint8_t* from = source.row(blockTop) + std::ptrdiff_t{3} * x;
            std::uint8_t* to =
                target.row(mirrorRows ? width - 1 - x : x) + std::ptrdiff_t{3} * column;
            for (int y = 0; y < blockHeight; ++y) {
                movePixel(to, from);
                from += source.stride();
                to += step;
            }
        }
    }
}

void mirrorRow(std::uint8_t* row, int width) {
    std::uint8_t* other = row + std::ptrdiff_t{3} * (width - 1);
    for (; row < other; row += 3, other -= 3) {
        std::swap_ranges(row, row + 3, other);
    }
}

Image turned(const PixelView& pixels, Turn turn) {
    const int width = pixels.width();
    const int height = pixels.height();
    if (turn == Turn::none) {
        return Image::copyOf(pixels);
    }
    if (turn == Turn::half) {
        Image result(width, height);
        forRows(height, fewestRowsPerCore, [&](int first, int end) {
            for (int y = first; y < end; ++y) {
                reversedRow(pixels.row(y), result.row(height - 1 - y), width);
            }
        });
        return result;
    }
    const bool clockwise = turn == Turn::clockwise;
    Image result(height, width);
    const MutablePixelView target = result.mutableView();
    forRows(width, fewestRowsPerCore, [&](int first, int end) {
        // Columns first .. end - 1 of the source are whole rows of the target.
        const int targetTop = clockwise ? first : width - end;
        exchangeSides(pixels.cut(first, 0, end - first, height),
                      target.cut(0, targetTop, height, end - first), clockwise, !clockwise);
    });
    return result;
}

} // namespace veldara
