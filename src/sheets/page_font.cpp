#include "sheets/page_font.h"

#include "platform/error.h"
#include "platform/image/built_in_font.h"
#include "platform/image/font_face.h"
#include "platform/text/characters.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include FT_ADVANCES_H

namespace veldara {
namespace {

// What is asked of the font, in font units made thousandths of an em. A face of the library's may
// be used by one thread at a time, and pages are laid out on any: so it is read once, and nothing
// of the library is kept.
struct FontTable {
    FontMetrics metrics;
    std::string name = "PageFont";
    std::vector<std::pair<char32_t, std::uint32_t>> glyphs; // by character, ascending
    std::vector<double> advances;                           // by glyph
};

[[noreturn]] void refuse() {
    throw Error("The text could not be laid out.");
}

double thousandths(FT_Face face, FT_Pos units) {
    return 1000.0 * static_cast<double>(units) / static_cast<double>(face->units_per_EM);
}

FontMetrics readMetrics(FT_Face face) {
    FontMetrics metrics;
    metrics.ascent = thousandths(face, face->ascender);
    metrics.descent = thousandths(face, face->descender);
    // Measured: tables of older versions do not say it.
    if (FT_Load_Char(face, 'H', FT_LOAD_NO_SCALE) != 0) {
        refuse();
    }
    metrics.capHeight = thousandths(face, face->glyph->metrics.horiBearingY);
    metrics.left = thousandths(face, face->bbox.xMin);
    metrics.bottom = thousandths(face, face->bbox.yMin);
    metrics.right = thousandths(face, face->bbox.xMax);
    metrics.top = thousandths(face, face->bbox.yMax);
    return metrics;
}

FontTable readFont() {
    const FontFace font(builtInFont());
    const FT_Face face = font.get();
    FontTable table;
    table.metrics = readMetrics(face);
    if (const char* name = FT_Get_Postscript_Name(face)) {
        table.name = name;
    }
    FT_UInt glyph = 0;
    for (FT_ULong character = FT_Get_First_Char(face, &glyph); glyph != 0;
         character = FT_Get_Next_Char(face, character, &glyph)) {
        table.glyphs.emplace_back(static_cast<char32_t>(character), glyph);
    }
    std::vector<FT_Fixed> advances(static_cast<std::size_t>(face->num_glyphs));
    if (FT_Get_Advances(face, 0, static_cast<FT_UInt>(advances.size()), FT_LOAD_NO_SCALE,
                        advances.data()) != 0) {
        refuse();
    }
    std::transform(advances.begin(), advances.end(), std::back_inserter(table.advances),
                   [&](FT_Fixed units) { return thousandths(face, units); });
    return table;
}

const FontTable& font() {
    static const FontTable table = readFont();
    return table;
}

} // namespace

FontMetrics pageFontMetrics() {
    return font().metrics;
}

std::string pageFontName() {
    return font().name;
}

std::uint32_t pageGlyph(char32_t character) {
    const auto& glyphs = font().glyphs;
    const auto found =
        std::lower_bound(glyphs.begin(), glyphs.end(), std::pair(character, std::uint32_t{0}));
    return found != glyphs.end() && found->first == character ? found->second : 0;
}

double glyphAdvance(std::uint32_t glyph) {
    const std::vector<double>& advances = font().advances;
    return glyph < advances.size() ? advances[glyph] : 0;
}

double pageTextWidth(std::string_view utf8, double size) {
    double width = 0;
    for (const char32_t character : codePoints(utf8)) {
        width += glyphAdvance(pageGlyph(character));
    }
    return width * size / 1000;
}

std::string shortenedText(std::string_view utf8, double size, double width) {
    if (pageTextWidth(utf8, size) <= width) {
        return std::string(utf8);
    }
    const std::string ellipsis = "\xE2\x80\xA6";
    for (std::size_t count = characterCount(utf8); count > 1; --count) {
        std::string text = sleft(utf8, count - 1) + ellipsis;
        if (pageTextWidth(text, size) <= width) {
            return text;
        }
    }
    return {};
}

} // namespace veldara
