#include "output/tile_image.h"

#include "output/attempt.h"
#include "output/edge_compensation.h"
#include "platform/error.h"
#include "platform/image/turn.h"
#include "platform/text/rounding.h"

#include <algorithm>
#include <utility>

namespace veldara {

double tileDotsPerInch(const std::vector<TileRect>& tiles, bool turned, double tilePrintWidth) {
    if (tiles.empty() || tilePrintWidth == 0) {
        throw Error("Nothing is left of a tile: its edges are trimmed by more than its size.");
    }
    const int pixels = turned ? tiles.front().height() : tiles.front().width();
    return pixels / tilePrintWidth;
}

int tileResolution(double dotsPerInch) {
    return std::max(roundHalfEven(dotsPerInch), 2);
}

TileTreatment tileTreatment(const std::vector<TileRect>& tiles, bool turned, double tilePrintWidth,
                            const std::optional<EdgeTrims>& trims) {
    const double dotsPerInch = tileDotsPerInch(tiles, turned, tilePrintWidth);
    return {turned, trims, dotsPerInch, tileResolution(dotsPerInch)};
}

Image rotateTile90(const PixelView& tile) {
    return turned(tile, Turn::counterClockwise);
}

PictureSize tileImageSize(const TileRect& tile, const TileTreatment& treatment) {
    PictureSize size{tile.width(), tile.height()};
    if (treatment.turned) {
        std::swap(size.width, size.height);
    }
    if (treatment.trims) {
        const CompensationPlan plan =
            planCompensation(size.width, size.height, treatment.dotsPerInch, *treatment.trims);
        size = {plan.width(), plan.height()};
    }
    return size;
}

TileImage makeTileImage(const PixelView& cut, const TileTreatment& treatment) {
    TileImage image(cut);
    if (treatment.turned) {
        image = TileImage(asPart(TileOutcome::turnFailed, [&] { return rotateTile90(cut); }));
    }
    if (treatment.trims) {
        image = TileImage(asPart(TileOutcome::compensationFailed, [&] {
            return applyEdgeClipComp(image.view(), treatment.dotsPerInch, *treatment.trims);
        }));
    }
    return image;
}

} // namespace veldara
