// The print size of one tile: its limits, its conversion to inches, what the printer's trims leave
// of it, and the message that explains the limits.
#pragma once

#include "platform/dialogs.h"
#include "platform/measures.h"
#include "platform/text/number_text.h"

#include <optional>
#include <string>

namespace veldara {

constexpr double minTileInches = 0.75;
constexpr double maxTileInches = 50.0;

// Inches.
struct TileSize {
    double width = 0;
    double height = 0;
    bool operator==(const TileSize&) const = default;
};

double ToInches(double value, Units units);

// Comparisons of lengths with their limits, limits included. They overlook what the last bits of a
// double make of a decimal length.
bool isBelow(double length, double least);
bool isAbove(double length, double most);
bool isWithin(double length, double least, double most);

// One side, in inches, lies within the limits, both included.
bool isTileSideInRange(double inches);

// Both sides lie within the limits, in millimetres when the units flag is exactly 1, else in
// inches.
bool IsTileSizeInRange(double width, double height, int units);

// The size in inches, or nothing when a side is outside the limits.
std::optional<TileSize> checkTileSizesNoTrim(double width, double height, Units units);

// The same less the trims, which are taken off after the limits were tested and not tested again: a
// side may come out below the minimum, even zero or negative. No trims: compensation is off.
std::optional<TileSize> checkTileSizes(double width, double height, Units units,
                                       const std::optional<EdgeTrims>& trims);

// The limits as plain numbers: "0.75" and "50".
std::string tileMinText(NumberStyle style = {});
std::string tileMaxText(NumberStyle style = {});

// What is shown when the size is outside the limits; it is worded differently in the two units.
Message tileSizeMessage(Units units, NumberStyle style = {});

} // namespace veldara
