#include "choice/choice_texts.h"

#include "layout/output_figures.h"
#include "layout/tile_size.h"
#include "platform/text/characters.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldara {
namespace {

using Row = std::array<std::string, 6>;

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(width - std::min(width, characterCount(text)), ' ');
}

Row rowOf(const PosterChoice& choice, const ChoiceLimits& limits,
          const std::vector<ChoicePaper>& papers, Units units, NumberStyle style) {
    return {sheetsText(choice),
            papers[static_cast<std::size_t>(choice.paper)].name,
            posterSizeText(layoutOf(choice, limits, papers), units, style),
            resolutionText(choice.dotsPerInch, units, style) + " (" + choice.quality + ")",
            shareText(choice.photoShare),
            shareText(choice.paperCutAway)};
}

std::string lengthText(double inches, Units units, NumberStyle style) {
    return lengthNumber(inches, units, style) + (units == Units::inches ? " inches" : " mm");
}

std::string ofTheWish(const PosterWish& wish, const PosterChoice& limit, Units units,
                      NumberStyle style) {
    if (wish.width && wish.height) {
        return lengthText(limit.width, units, style) + " wide and " +
               lengthText(limit.height, units, style) + " high";
    }
    return wish.width ? lengthText(limit.width, units, style) + " wide"
                      : lengthText(limit.height, units, style) + " high";
}

} // namespace

ChoicePaper offeredPaper(const PaperRecord& paper, Units units,
                         const std::optional<EdgeTrims>& trims) {
    ChoicePaper offered{paper.name, ToInches(paper.width, units), ToInches(paper.height, units), 0,
                        0};
    if (const auto tile = checkTileSizes(paper.tileWidth(), paper.tileHeight(), units, trims)) {
        offered.tileWidth = tile->width;
        offered.tileHeight = tile->height;
    }
    return offered;
}

std::vector<ChoicePaper> offeredPapers(const std::vector<PaperRecord>& papers, Units units,
                                       const std::optional<EdgeTrims>& trims) {
    std::vector<ChoicePaper> offered;
    std::transform(papers.begin(), papers.end(), std::back_inserter(offered),
                   [&](const PaperRecord& paper) { return offeredPaper(paper, units, trims); });
    return offered;
}

std::string lengthNumber(double inches, Units units, NumberStyle style) {
    const bool isInches = units == Units::inches;
    const double shown = isInches ? inches : inches * millimetresPerInch;
    const std::string text = formatNumber(shown, isInches ? "##0.00" : "##0.0", style);
    return plainNumber(readNumber(text, style).value_or(shown), style);
}

std::string shareText(double share) {
    // A share that is whole but for the last bits of a double is whole.
    return std::to_string(static_cast<int>(std::floor(share * 100 + 1e-6))) + " %";
}

std::string sheetsText(const PosterChoice& choice) {
    return std::to_string(choice.tilesWide) + " x " + std::to_string(choice.tilesHigh) +
           (choice.sheets == 1 ? " sheet" : " sheets") +
           (choice.tilesTurned ? (choice.sheets == 1 ? ", on its side" : ", on their side") : "");
}

std::string choiceLine(const PosterChoice& choice, const ChoiceLimits& limits,
                       const std::vector<ChoicePaper>& papers, Units units, NumberStyle style) {
    const Row row = rowOf(choice, limits, papers, units, style);
    return (papers.size() > 1 ? row[1] + ": " : "") + row[0] + ": " + row[2] + ", " + row[3] +
           ", " + row[4] + " of the photo";
}

std::string choiceRow(const PosterChoice& choice, const ChoiceLimits& limits,
                      const std::vector<ChoicePaper>& papers, Units units, NumberStyle style) {
    const Row row = rowOf(choice, limits, papers, units, style);
    const std::string sheets = papers.size() > 1
                                   ? row[1] + ": " + std::to_string(choice.tilesWide) + " x " +
                                         std::to_string(choice.tilesHigh) +
                                         (choice.tilesTurned ? ", on their side" : "")
                                   : row[0];
    return sheets + ": " + row[2] + ", " + choice.quality + ", " + row[4] + " of the photo";
}

std::string choiceTable(const std::vector<PosterChoice>& choices, const ChoiceLimits& limits,
                        const std::vector<ChoicePaper>& papers, Units units, NumberStyle style) {
    std::vector<Row> rows{
        {"sheets", "paper", "size", "resolution", "photo kept", "paper cut away"}};
    for (const PosterChoice& choice : choices) {
        rows.push_back(rowOf(choice, limits, papers, units, style));
    }
    std::array<std::size_t, std::tuple_size_v<Row>> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], characterCount(row[i]));
        }
    }
    std::string table;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += i + 1 < row.size() ? padded(row[i], widths[i] + 2) : row[i];
        }
        table += line + "\n";
    }
    return table;
}

std::string choiceProblemText(const PosterChoices& choices, const PosterWish& wish,
                              const ChoiceLimits& limits, const std::vector<ChoicePaper>& papers,
                              Units units, NumberStyle style) {
    if (choices.problem == ChoiceProblem::none) {
        return {};
    }
    if (choices.problem == ChoiceProblem::tooSmall) {
        return "The smallest poster is " + lengthText(minTileInches, units, style) +
               " wide and high.";
    }
    if (!choices.limit) {
        return "No poster can be made: the paper, its margins or the photo leave too little of a "
               "tile.";
    }
    const std::string largest = ofTheWish(wish, *choices.limit, units, style);
    const std::string most = std::to_string(maximumTilesPerSide);
    switch (choices.problem) {
    case ChoiceProblem::tooLarge:
        return most + " by " + most + " sheets are too few for that; the largest poster is " +
               largest + " (" + choiceLine(*choices.limit, limits, papers, units, style) + ").";
    case ChoiceProblem::tooManySheets:
        return "The photo has fewer than " + std::to_string(minimumTilePixels) +
               " pixels for each side of so many tiles; the largest poster is " + largest + " (" +
               choiceLine(*choices.limit, limits, papers, units, style) + ").";
    default:
        return "Even one sheet has no more than " +
               resolutionText(choices.limit->dotsPerInch, units, style) + ", which is \"" +
               choices.limit->quality + "\".";
    }
}

} // namespace veldara
