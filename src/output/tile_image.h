// One tile's picture: cut out of the photo byte for byte, turned by a quarter when tiles are
// turned, enlarged when edges are compensated, with the resolution that makes it print at its size.
#pragma once

#include "layout/tile_grid.h"
#include "platform/image/image.h"
#include "platform/measures.h"

#include <optional>
#include <vector>

namespace veldara {

// How every tile of one run is made.
struct TileTreatment {
    bool turned = false;
    std::optional<EdgeTrims> trims; // edge compensation, when it is on
    double dotsPerInch = 0;         // unrounded
    int resolution = 2;             // whole dots per inch, as written into the files
};

// Unrounded dots per inch of every tile of a run: the pixels of the first tile that are printed
// across a tile's width, by that width in inches (less the trims when edges are compensated).
// Throws Error when the width is 0.
double tileDotsPerInch(const std::vector<TileRect>& tiles, bool turned, double tilePrintWidth);

// The same rounded half to even, and never below 2.
int tileResolution(double dotsPerInch);

// The treatment for these tiles.
TileTreatment tileTreatment(const std::vector<TileRect>& tiles, bool turned, double tilePrintWidth,
                            const std::optional<EdgeTrims>& trims);

// A tile that is turned or enlarged is a picture of its own; any other is a view of the photo.
class TileImage {
  public:
    explicit TileImage(const PixelView& photoPixels) : view_(photoPixels) {}
    explicit TileImage(Image image) : own_(std::move(image)), view_(own_.view()) {}
    const PixelView& view() const { return view_; }

  private:
    Image own_;
    PixelView view_;
};

// A quarter turn counter-clockwise.
Image rotateTile90(const PixelView& tile);

// The width and height in pixels of the picture made of a tile of that size.
struct PictureSize {
    int width = 0;
    int height = 0;
};
PictureSize tileImageSize(const TileRect& tile, const TileTreatment& treatment);

// cut: the tile's pixels in the photo. Throws Error, which tells a failed turn from failed
// compensation (see attempt.h).
TileImage makeTileImage(const PixelView& cut, const TileTreatment& treatment);

} // namespace veldara
