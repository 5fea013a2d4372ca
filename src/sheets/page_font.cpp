#include "sheets/page_font.h"

#include "platform/error.h"
#include "platform/image/built_in_font.h"
#include "platform/text/characters.h"

#include <memory>
#include <type_traits>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

namespace veldara {
namespace {

struct DoneLibrary {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
};
struct DoneFace {
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};

// Unscaled outlines: what is asked of it are lengths in font units.
class PageFont {
  public:
    PageFont() {
        FT_Library library = nullptr;
        FT_Face face = nullptr;
        const std::span<const std::uint8_t> bytes = builtInFont();
        if (FT_Init_FreeType(&library) != 0) {
            throw Error("The text could not be laid out.");
        }
        library_.reset(library);
        if (FT_New_Memory_Face(library, bytes.data(), static_cast<FT_Long>(bytes.size()), 0,
                               &face) != 0) {
            throw Error("The text could not be laid out.");
        }
        face_.reset(face);
    }
    FT_Face face() const { return face_.get(); }
    double thousandths(long units) const {
        return 1000.0 * static_cast<double>(units) / static_cast<double>(face_->units_per_EM);
    }

  private:
    std::unique_ptr<std::remove_pointer_t<FT_Library>, DoneLibrary> library_;
    std::unique_ptr<std::remove_pointer_t<FT_Face>, DoneFace> face_;
};

// A face may be used by one thread at a time.
const PageFont& font() {
    static thread_local const PageFont opened;
    return opened;
}

} // namespace

FontMetrics pageFontMetrics() {
    const PageFont& opened = font();
    const FT_Face face = opened.face();
    FontMetrics metrics;
    metrics.ascent = opened.thousandths(face->ascender);
    metrics.descent = opened.thousandths(face->descender);
    const auto* table = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    metrics.capHeight = table != nullptr && table->version >= 2 && table->sCapHeight > 0
                            ? opened.thousandths(table->sCapHeight)
                            : metrics.ascent;
    metrics.left = opened.thousandths(face->bbox.xMin);
    metrics.bottom = opened.thousandths(face->bbox.yMin);
    metrics.right = opened.thousandths(face->bbox.xMax);
    metrics.top = opened.thousandths(face->bbox.yMax);
    return metrics;
}

std::string pageFontName() {
    const char* name = FT_Get_Postscript_Name(font().face());
    return name != nullptr ? name : "PageFont";
}

std::uint32_t pageGlyph(char32_t character) {
    return FT_Get_Char_Index(font().face(), character);
}

double glyphAdvance(std::uint32_t glyph) {
    const PageFont& opened = font();
    if (FT_Load_Glyph(opened.face(), glyph, FT_LOAD_NO_SCALE) != 0) {
        return 0;
    }
    return opened.thousandths(opened.face()->glyph->metrics.horiAdvance);
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
