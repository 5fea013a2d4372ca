// What the poster will be: its printed size, the megapixels it uses, its resolution, and a word for
// its quality.
#pragma once

#include "layout/tile_grid.h"
#include "platform/measures.h"
#include "platform/text/number_text.h"

#include <string>
#include <vector>

namespace veldara {

struct OutputFigures {
    std::string size;
    std::string megapixels;
    std::string resolution;
    std::string quality;
    bool operator==(const OutputFigures&) const = default;
};

// Dots per inch of the poster, unrounded.
double posterDotsPerInch(const PosterLayout& layout);

// Millions of pixels. The zoom enters once, although the area of the crop shrinks with its square.
double posterMegapixels(const PosterLayout& layout);

// Always from dots per inch, whatever the units.
std::string qualityWord(double dotsPerInch);

// The dots per inch that a poster must exceed to earn the word. Throws Error for another word.
double qualityLimit(const std::string& word);

// All words, best first.
std::vector<std::string> qualityWords();

// The text without the suffix, when it ends with it.
std::string stripSuffix(const std::string& text, const std::string& suffix);

// "24 x 20 inches" or "61 x 50.8 cm".
std::string posterSizeText(const PosterLayout& layout, Units units, NumberStyle style = {});

// "150.0 dpi" or "59.1 dots/cm".
std::string resolutionText(double dotsPerInch, Units units, NumberStyle style = {});

// The four texts as the window shows them; without a photo all but the size read "---".
// Throws Error when a figure cannot be computed.
OutputFigures outputFigures(const PosterLayout& layout, bool imgSelected, Units units,
                            NumberStyle style = {});

} // namespace veldara
