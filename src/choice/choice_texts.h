// What is said of posters that were chosen by their size: the papers that are offered, a choice in
// one line, and why a wish cannot be met.
#pragma once

#include "layout/poster_choice.h"
#include "paper/paper_catalogue.h"
#include "platform/measures.h"
#include "platform/text/number_text.h"

#include <optional>
#include <string>
#include <vector>

namespace veldara {

// The paper in inches, less its margins and the trims. Its tile is 0 x 0, which no poster is made
// of, when a side of the tile is outside the limits.
ChoicePaper offeredPaper(const PaperRecord& paper, Units units,
                         const std::optional<EdgeTrims>& trims);

// All papers of a catalogue, by their index there.
std::vector<ChoicePaper> offeredPapers(const std::vector<PaperRecord>& papers, Units units,
                                       const std::optional<EdgeTrims>& trims);

// A length of that many inches in the units, without zeros at its end: "36", "12.75"; "914.4".
std::string lengthNumber(double inches, Units units, NumberStyle style = {});

// "91 %"; a share is 0 to 1. Rounded down, so that only the whole photo is 100 %.
std::string shareText(double share);

// "3 x 2 sheets, on their side".
std::string sheetsText(const PosterChoice& choice);

// "3 x 2 sheets, on their side: 24 x 20 inches, 100.0 dpi (Good), 91 % of the photo". The paper's
// name stands in front where several are offered.
std::string choiceLine(const PosterChoice& choice, const ChoiceLimits& limits,
                       const std::vector<ChoicePaper>& papers, Units units, NumberStyle style = {});

// The same for a list in a window, shorter: "Letter: 3 x 2, on their side: 24 x 20 inches, Good, 91
// % of the photo".
std::string choiceRow(const PosterChoice& choice, const ChoiceLimits& limits,
                      const std::vector<ChoicePaper>& papers, Units units, NumberStyle style = {});

// The choices as a table with a heading, a line each.
std::string choiceTable(const std::vector<PosterChoice>& choices, const ChoiceLimits& limits,
                        const std::vector<ChoicePaper>& papers, Units units,
                        NumberStyle style = {});

// Why the wish cannot be met, and what the largest or smallest poster is. Empty when it can.
std::string choiceProblemText(const PosterChoices& choices, const PosterWish& wish,
                              const ChoiceLimits& limits, const std::vector<ChoicePaper>& papers,
                              Units units, NumberStyle style = {});

} // namespace veldara
