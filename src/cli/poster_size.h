// Choosing the sheets by the poster's size: the options that state a size or a quality word become
// those that state tile counts, paper and tile rotation.
#pragma once

#include "choice/choice_texts.h"
#include "cli/options.h"
#include "platform/image/codec.h"

#include <optional>
#include <string>

namespace veldara {

// True when the options leave the tile counts to the poster's size.
bool choosesBySize(const Options& options);

struct SizeChoices {
    PosterWish wish;
    ChoiceLimits limits;
    std::vector<PaperRecord> records; // what may be used, in the units
    std::vector<ChoicePaper> papers;  // the same, as the rule takes it
    PosterChoices found;
};

// Throws Error, with what the largest or smallest poster is, when there is no choice.
SizeChoices chooseBySize(const Options& options, const ImageHeader& header,
                         const std::optional<ClipCounts>& clip);

// The options with the best choice's counts, paper and tile rotation.
Options withChoice(const Options& options, const SizeChoices& choices);

// What --choices prints: a table, or JSON.
std::string choicesText(const Options& options, const SizeChoices& choices);
std::string choicesJson(const Options& options, const SizeChoices& choices);

} // namespace veldara
