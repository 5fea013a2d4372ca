#include "platform/image/turn.h"

#include "platform/image/parallel_rows.h"

#include <algorithm>
#include <cstring>

namespace veldara {

namespace {

// A block of source and target pixels that stays in the first-level cache.
constexpr int blockSide = 64;
constexpr int fewestRowsPerCore = 64;

// Gathers pixels that lie step bytes apart into a row. Four bytes at once are moved faster than
// three, and the next pixel overwrites the fourth; where there is no next pixel on one of both
// sides, it must be three.
void gather(const std::uint8_t* from, std::ptrdiff_t step, std::uint8_t* to, int count,
            bool fourthIsReadable) {
    if (fourthIsReadable) {
        for (; count > 1; --count) {
            std::memcpy(to, from, 4);
            from += step;
            to += 3;
        }
    }
    for (; count > 0; --count) {
        std::memcpy(to, from, 3);
        from += step;
        to += 3;
    }
}

void reversedRow(const std::uint8_t* from, std::uint8_t* to, int width) {
    from += std::ptrdiff_t{3} * (width - 1);
    gather(from, -3, to, 1, false);
    gather(from - 3, -3, to + 3, width - 1, true);
}

} // namespace

void exchangeSides(const PixelView& source, const MutablePixelView& target, bool mirrorColumns,
                   bool mirrorRows) {
    const int width = source.width();
    const int height = source.height();
    for (int top = 0; top < height; top += blockSide) {
        const int blockHeight = std::min(blockSide, height - top);
        // The target's columns are filled from left to right, whichever source row that begins
        // with.
        const int firstRow = mirrorColumns ? top + blockHeight - 1 : top;
        const int column = mirrorColumns ? height - top - blockHeight : top;
        const std::ptrdiff_t step = mirrorColumns ? -source.stride() : source.stride();
        for (int left = 0; left < width; left += blockSide) {
            const int right = std::min(left + blockSide, width);
            for (int x = left; x < right; ++x) {
                gather(source.row(firstRow) + std::ptrdiff_t{3} * x, step,
                       target.row(mirrorRows ? width - 1 - x : x) + std::ptrdiff_t{3} * column,
                       blockHeight, x < width - 1);
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
