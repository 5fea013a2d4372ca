// The checks of the paper and margins dialog, in their order, and the message for the first that
// fails.
#pragma once

#include "paper/paper_catalogue.h"
#include "platform/dialogs.h"
#include "platform/measures.h"
#include "platform/text/number_text.h"

#include <array>
#include <optional>
#include <string>

namespace veldara {

enum class PaperFault { none, paper, margin };

struct PaperCheck {
    PaperFault fault = PaperFault::none; // which of the entries is wrong
    std::string text;                    // the message for it
    bool ok() const { return fault == PaperFault::none; }
};

// What is entered, in the units; nothing where a box holds no number.
struct PaperEntries {
    std::optional<double> width;
    std::optional<double> height;
    std::array<std::optional<double>, 4> margins; // top, right, bottom, left

    // What the margins leave of the paper; only of entries that are all numbers.
    double tileWidth() const { return *width - *margins[edgeRight] - *margins[edgeLeft]; }
    double tileHeight() const { return *height - *margins[edgeTop] - *margins[edgeBottom]; }
};

// A paper with the margins that it has now.
PaperEntries entriesOf(const PaperRecord& paper);

// Reads the texts of the boxes.
PaperEntries readPaperEntries(const std::string& width, const std::string& height,
                              const std::array<std::string, 4>& margins, NumberStyle style = {});

constexpr double minPaperInches = 0.5;
constexpr double minPaperMillimetres = 12;

// The limits of a tile's side are in inches.
PaperCheck checkPaper(const PaperEntries& entries, Units units, double leastInches,
                      double mostInches, NumberStyle style = {});

// The message box of a failed check.
Message invalidPaperMessage(const PaperCheck& check);

} // namespace veldara
