// From the poster that somebody wants to the sheets that it takes: tries every tile count on every
// paper, upright and on its side, and gives the choices that come nearest, best first.
#pragma once

#include "layout/tile_grid.h"

#include <optional>
#include <string>
#include <vector>

namespace veldara {

// A paper that may be used. Inches; the tile is what its margins, and the trims when compensation
// is on, leave of it.
struct ChoicePaper {
    std::string name;
    double paperWidth = 0;
    double paperHeight = 0;
    double tileWidth = 0;
    double tileHeight = 0;
};

// What is wanted: a width, a height or both (the poster is at least that large), or a quality word
// (as large as it keeps the word). Inches.
struct PosterWish {
    std::optional<double> width;
    std::optional<double> height;
    std::optional<std::string> quality;
};

// What the choice has to live with.
struct ChoiceLimits {
    int photoWidth = 0; // pixels of the photo as turned
    int photoHeight = 0;
    int zoom = 0;           // 0 to 400: percent added to 100
    bool sheetsTurn = true; // sheets may lie on their side
};

struct PosterChoice {
    int paper = 0; // index of the papers that were offered
    int tilesWide = 0;
    int tilesHigh = 0;
    bool tilesTurned = false;
    double width = 0; // of the poster, inches
    double height = 0;
    int sheets = 0;
    double photoShare = 0; // of the photo's area that is on the poster, 0 to 1
    double dotsPerInch = 0;
    std::string quality;     // the word of qualityWord
    double paperCutAway = 0; // share of the sheets' area that is not on the poster, 0 to 1
};

// Why there is no choice.
enum class ChoiceProblem {
    none,
    tooSmall,      // the wish is below the smallest side of a tile
    tooLarge,      // the most sheets of the largest paper do not reach it
    tooManySheets, // it can be reached, but its tiles have too few pixels of this photo
    noQuality,     // a single sheet has fewer dots per inch than the word asks for
};

struct PosterChoices {
    std::vector<PosterChoice> best; // best first; empty when there is a problem
    ChoiceProblem problem = ChoiceProblem::none;
    // The largest possible poster: the widest for a wish of width, the highest for one of
    // height. For a quality word the poster of one sheet with the most dots per inch. Nothing where
    // no poster is possible at all.
    std::optional<PosterChoice> limit;
};

// Fewer pixels than these make no picture of a tile's side.
constexpr int minimumTilePixels = 25;

// Every paper is tried with 1 to 25 tiles each way, upright and turned. A wished side is reached
// with at most one sheet's side beyond it. Best is the poster nearest to the wish (the lengths
// beyond it added up), or the largest that keeps the quality word; among equals the largest share
// of the photo, then the fewest sheets, then upright sheets, then the paper that was offered first.
// At most `most` choices, and at most three of one paper lying the same way, so that others are
// seen beside them. A wish must hold a side or a word, not both. Throws Error for a photo without
// pixels.
PosterChoices choosePoster(const PosterWish& wish, const ChoiceLimits& limits,
                           const std::vector<ChoicePaper>& papers, std::size_t most = 20);

// The layout that a choice stands for: the crop is centred.
PosterLayout layoutOf(const PosterChoice& choice, const ChoiceLimits& limits,
                      const std::vector<ChoicePaper>& papers);

} // namespace veldara
