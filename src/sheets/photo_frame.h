// Between the photo as its file stores it and the photo as the user sees it: the camera's
// orientation tag and the user's quarter turns in one. Pieces are cut from the stored photo, and
// the page turns them.
#pragma once

#include "layout/tile_grid.h"
#include "platform/image/picture_decoder.h"
#include "platform/image/turn.h"
#include "sheets/jpeg_geometry.h"
#include "sheets/sheet_page.h"

namespace veldara {

// First the sides are exchanged, then columns and rows mirrored.
struct PhotoFrame {
    int width = 0; // as turned
    int height = 0;
    bool exchanged = false;
    bool mirroredColumns = false;
    bool mirroredRows = false;
    bool operator==(const PhotoFrame&) const = default;
};

// The frame of a photo stored with those sides: first the orientation tag, then the turn.
PhotoFrame photoFrame(int storedWidth, int storedHeight, Orientation orientation, Turn turn);

// A point of the stored photo in the photo as turned, in pixels.
PagePoint turnedPoint(const PhotoFrame& frame, PagePoint stored);

// The stored pixels that those pixels of the turned photo are.
PixelRectangle storedPixels(const PhotoFrame& frame, const TileRect& turned);

// Where a point of the turned photo appears on the page.
PagePoint pagePoint(const PagePhoto& photo, PagePoint turned);

// The matrix that brings a picture's unit square (its bottom left corner at 0, 0) to its place:
// x' = a x + c y + e, y' = b x + d y + f, y growing upward from the page's bottom edge.
struct PageMatrix {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
};
PageMatrix pieceMatrix(const PhotoFrame& frame, const PixelRectangle& storedPiece,
                       const PagePhoto& photo, double pageHeight);

} // namespace veldara
