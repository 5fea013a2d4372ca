#include "layout/output_figures.h"

#include "platform/text/characters.h"

namespace veldara {
namespace {

// Width and height of the whole poster in inches.
CropSize posterInches(const PosterLayout& layout) {
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
    return fullCropSize(layout).width / posterInches(layout).width * zoomFactor(layout.zoom);
}

double posterMegapixels(const PosterLayout& layout) {
    const CropSize full = fullCropSize(layout);
    return full.width * full.height * zoomFactor(layout.zoom) / 1000000;
}

std::string qualityWord(double dotsPerInch) {
    if (dotsPerInch > 200) {
        return "Excellent";
    }
    if (dotsPerInch > 140) {
        return "Very Good";
    }
    if (dotsPerInch > 90) {
        return "Good";
    }
    if (dotsPerInch > 70) {
        return "Fair";
    }
    if (dotsPerInch > 35) {
        return "Good from a distance";
    }
    return "Fair from a distance";
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
    const CropSize poster = posterInches(layout);
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
