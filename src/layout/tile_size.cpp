#include "layout/tile_size.h"

namespace veldara {
namespace {

// A decimal length such as 148 - 64.475 - 64.475 misses its limit by the last bits of a double;
// nobody can mean or measure a billionth of an inch.
constexpr double slack = 1e-9;

} // namespace

bool isBelow(double length, double least) {
    return !(length >= least - slack);
}

bool isAbove(double length, double most) {
    return !(length <= most + slack);
}

bool isWithin(double length, double least, double most) {
    return !isBelow(length, least) && !isAbove(length, most);
}

double ToInches(double value, Units units) {
    return units == Units::inches ? value : value / millimetresPerInch;
}

bool isTileSideInRange(double inches) {
    return isWithin(inches, minTileInches, maxTileInches);
}

bool IsTileSizeInRange(double width, double height, int units) {
    const double factor = units == 1 ? millimetresPerInch : 1.0;
    return isWithin(width, minTileInches * factor, maxTileInches * factor) &&
           isWithin(height, minTileInches * factor, maxTileInches * factor);
}

std::optional<TileSize> checkTileSizesNoTrim(double width, double height, Units units) {
    const TileSize size{ToInches(width, units), ToInches(height, units)};
    if (!isTileSideInRange(size.width) || !isTileSideInRange(size.height)) {
        return std::nullopt;
    }
    return size;
}

std::optional<TileSize> checkTileSizes(double width, double height, Units units,
                                       const std::optional<EdgeTrims>& trims) {
    std::optional<TileSize> size = checkTileSizesNoTrim(width, height, units);
    if (size && trims) {
        size->width = size->width - (*trims)[edgeRight] - (*trims)[edgeLeft];
        size->height = size->height - (*trims)[edgeTop] - (*trims)[edgeBottom];
    }
    return size;
}

std::string tileMinText(NumberStyle style) {
    return plainNumber(minTileInches, style);
}

std::string tileMaxText(NumberStyle style) {
    return plainNumber(maxTileInches, style);
}

Message tileSizeMessage(Units units, NumberStyle style) {
    const auto shown = [&](double value) { return trimmed(formatNumber(value, "##0.00", style)); };
    const std::string inches = shown(minTileInches) + " to " + shown(maxTileInches) + " inches";
    std::string text;
    if (units == Units::inches) {
        text = "You have entered invalid print tile sizes.  The width and height need to "
               "be in the range of " +
               inches + ".";
    } else {
        text = "You have entered an invalid tile print size.  The width and height need to "
               "be in the range of " +
               shown(minTileInches * millimetresPerInch) + " to " +
               shown(maxTileInches * millimetresPerInch) + " millimeters (" + inches + ").";
    }
    return criticalMessage("Invalid Tile Print Size Entered", text);
}

} // namespace veldara
