#include "layout/output_figures.h"

#include "platform/error.h"
#include "platform/text/characters.h"

#include <array>

namespace veldara {
namespace {

struct Quality {
    const char* word;
    double above; // dots per inch; the word holds for more than these
};

// Best first.
constexpr std::array<Quality, 6> qualities{{{"Excellent", 200},
                                            {"Very Good", 140},
                                            {"Good", 90},
                                            {"Fair", 70},
                                            {"Good from a distance", 35},
                                            {"Fair from a distance", 0}}};

// Of the whole poster, in inches.
struct PrintSize {
    double width = 0;
    double height = 0;
};

PrintSize printSize(const PosterLayout& layout) {
    const double width = layout.tilesTurned ? layout.tileHeightInches : layout.tileWidthInches;
    const double height = layout.tilesTurned ? layout.tileWidthInches : layout.tileHeightInches;
    return {layout.tilesWide * width, layout.tilesHigh * height};
}

// Formatted and turned back into the plain number, which drops the zeros at its end.
std::string shortened(double value, const char* pattern, NumberStyle style) {
    const std::string text = formatNumber(value, pattern, style);
    return trimmed(plainNumber(readNumber(text, style).value_or(value), style));
}

} // namespace

double posterDotsPerInch(const PosterLayout& layout) {
    return fullCropSize(layout).width / printSize(layout).width * zoomFactor(layout.zoom);
}

double posterMegapixels(const PosterLayout& layout) {
    const CropSize full = fullCropSize(layout);
    return full.width * full.height * zoomFactor(layout.zoom) / 1000000;
}

std::string qualityWord(double dotsPerInch) {
    for (const Quality& quality : qualities) {
        if (dotsPerInch > quality.above) {
            return quality.word;
        }
    }
    return qualities.back().word;
}

double qualityLimit(const std::string& word) {
    for (const Quality& quality : qualities) {
        if (word == quality.word) {
            return quality.above;
        }
    }
    throw Error("There is no quality word \"" + word + "\".");
}

std::vector<std::string> qualityWords() {
    std::vector<std::string> words;
    words.reserve(qualities.size());
    for (const Quality& quality : qualities) {
        words.emplace_back(quality.word);
    }
    return words;
}

std::string stripSuffix(const std::string& text, const std::string& suffix) {
    const std::size_t length = characterCount(text);
    const std::size_t tail = characterCount(suffix);
    if (tail > length || sRight(text, tail) != suffix) {
        return text;
    }
    return sleft(text, length - tail);
}

std::string posterSizeText(const PosterLayout& layout, Units units, NumberStyle style) {
    const PrintSize poster = printSize(layout);
    if (units == Units::inches) {
        return shortened(poster.width, "##0.00", style) + " x " +
               shortened(poster.height, "##0.00", style) + " inches";
    }
    return shortened(poster.width * centimetresPerInch, "##0.0", style) + " x " +
           shortened(poster.height * centimetresPerInch, "##0.0", style) + " cm";
}

std::string resolutionText(double dotsPerInch, Units units, NumberStyle style) {
    const bool inches = units == Units::inches;
    const double shown = inches ? dotsPerInch : dotsPerInch / centimetresPerInch;
    return stripSuffix(trimmed(formatNumber(shown, "###0.0", style)), ".") +
           (inches ? " dpi" : " dots/cm");
}

OutputFigures outputFigures(const PosterLayout& layout, bool imgSelected, Units units,
                            NumberStyle style) {
    OutputFigures figures{posterSizeText(layout, units, style), "---", "---", "---"};
    if (imgSelected) {
        const double dotsPerInch = posterDotsPerInch(layout);
        figures.megapixels = formatNumber(posterMegapixels(layout), "##0.00", style);
        figures.resolution = resolutionText(dotsPerInch, units, style);
        figures.quality = qualityWord(dotsPerInch);
    }
    return figures;
}

} // namespace veldara
