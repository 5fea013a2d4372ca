// The program's own font as pages need it: which glyph shows a character, and how wide it is.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veldara {

// In thousandths of an em, for a document that lays its glyphs out itself.
struct FontMetrics {
    double ascent = 0;
    double descent = 0; // below the base line, negative
    double capHeight = 0;
    double left = 0; // the box around all glyphs
    double bottom = 0;
    double right = 0;
    double top = 0;
};

// Throws Error when the font cannot be read.
FontMetrics pageFontMetrics();

// The font's name as documents give it, without blanks.
std::string pageFontName();

// 0 where the font has no glyph for the character.
std::uint32_t pageGlyph(char32_t character);

// The advance of a glyph in thousandths of an em.
double glyphAdvance(std::uint32_t glyph);

// The width of a line of text in points at that size in points per em, without kerning.
double pageTextWidth(std::string_view utf8, double size);

// The text, or as much of its beginning as fits in that width, with an ellipsis behind it. Empty
// when not even one character and the ellipsis fit.
std::string shortenedText(std::string_view utf8, double size, double width);

} // namespace veldara
