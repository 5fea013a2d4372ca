#include "sheets/photo_frame.h"

#include <algorithm>
#include <utility>

namespace veldara {
namespace {

struct Steps {
    bool exchanged;
    bool mirroredColumns;
    bool mirroredRows;
};

Steps stepsOf(Orientation orientation) {
    switch (orientation) {
    case Orientation::upright:
        break;
    case Orientation::mirrored:
        return {false, true, false};
    case Orientation::halfTurned:
        return {false, true, true};
    case Orientation::flipped:
        return {false, false, true};
    case Orientation::transposed:
        return {true, false, false};
    case Orientation::clockwise:
        return {true, true, false};
    case Orientation::transversed:
        return {true, true, true};
    case Orientation::counterClockwise:
        return {true, false, true};
    }
    return {false, false, false};
}

Orientation orientationOfTurn(Turn turn) {
    switch (turn) {
    case Turn::none:
        break;
    case Turn::clockwise:
        return Orientation::clockwise;
    case Turn::half:
        return Orientation::halfTurned;
    case Turn::counterClockwise:
        return Orientation::counterClockwise;
    }
    return Orientation::upright;
}

} // namespace

PhotoFrame photoFrame(int storedWidth, int storedHeight, Orientation orientation, Turn turn) {
    Steps steps = stepsOf(orientation);
    const Steps second = stepsOf(orientationOfTurn(turn));
    if (second.exchanged) { // columns become rows, and so do their mirrors
        steps.exchanged = !steps.exchanged;
        std::swap(steps.mirroredColumns, steps.mirroredRows);
    }
    PhotoFrame frame{storedWidth, storedHeight, steps.exchanged,
                     steps.mirroredColumns != second.mirroredColumns,
                     steps.mirroredRows != second.mirroredRows};
    if (frame.exchanged) {
        std::swap(frame.width, frame.height);
    }
    return frame;
}

PagePoint turnedPoint(const PhotoFrame& frame, PagePoint stored) {
    if (frame.exchanged) {
        std::swap(stored.x, stored.y);
    }
    return {frame.mirroredColumns ? frame.width - stored.x : stored.x,
            frame.mirroredRows ? frame.height - stored.y : stored.y};
}

PixelRectangle storedPixels(const PhotoFrame& frame, const TileRect& turned) {
    PixelRectangle result{turned.left, turned.top, turned.width(), turned.height()};
    if (frame.mirroredColumns) {
        result.left = frame.width - result.right();
    }
    if (frame.mirroredRows) {
        result.top = frame.height - result.bottom();
    }
    if (frame.exchanged) {
        std::swap(result.left, result.top);
        std::swap(result.width, result.height);
    }
    return result;
}

PagePoint pagePoint(const PagePhoto& photo, PagePoint turned) {
    const PhotoRect& source = photo.source;
    const PageRect& target = photo.target;
    const double across = (turned.x - source.left) / source.width();
    const double down = (turned.y - source.top) / source.height();
    if (photo.turned) {
        return {target.left + down * target.width(), target.bottom - across * target.height()};
    }
    return {target.left + across * target.width(), target.top + down * target.height()};
}

PageMatrix pieceMatrix(const PhotoFrame& frame, const PixelRectangle& storedPiece,
                       const PagePhoto& photo, double pageHeight) {
    const auto place = [&](double x, double y) {
        PagePoint point = pagePoint(photo, turnedPoint(frame, {x, y}));
        point.y = pageHeight - point.y;
        return point;
    };
    const double left = storedPiece.left;
    const double top = storedPiece.top;
    const double right = storedPiece.right();
    const double bottom = storedPiece.bottom();
    const PagePoint origin = place(left, bottom);
    const PagePoint across = place(right, bottom);
    const PagePoint up = place(left, top);
    return {across.x - origin.x,
            across.y - origin.y,
            up.x - origin.x,
            up.y - origin.y,
            origin.x,
            origin.y};
}

} // namespace veldara
