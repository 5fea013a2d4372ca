// Lines of text in the built-in font. Unhinted outlines, so that the pixels depend on nothing but
// the text and the size.
#include "platform/image/text_drawing.h"

#include "platform/error.h"
#include "platform/image/built_in_font.h"
#include "platform/image/font_face.h"
#include "platform/text/characters.h"

#include <algorithm>

namespace veldara {

namespace {

constexpr FT_Long unitsPerPixel = 64; // FreeType's 26.6 fixed point

// The font at one size.
class Font {
  public:
    explicit Font(int pixelSize) {
        if (pixelSize <= 0 || FT_Set_Pixel_Sizes(face(), 0, static_cast<FT_UInt>(pixelSize)) != 0) {
            throw Error("The text could not be drawn.");
        }
    }

    FT_Face face() const { return face_.get(); }
    FT_Pos ascender() const { return roundedUp(face()->size->metrics.ascender); }
    FT_Pos descender() const { return roundedUp(-face()->size->metrics.descender); }

    static FT_Pos roundedUp(FT_Pos length) { return (length + unitsPerPixel - 1) / unitsPerPixel; }

  private:
    FontFace face_{builtInFont()};
};

// Calls place(glyph's pen position) with each glyph loaded in turn; returns the whole advance.
template <class Place>
FT_Pos layOut(const Font& font, const std::string& text, FT_Int32 flags, Place&& place) {
    FT_Pos pen = 0;
    FT_UInt previous = 0;
    for (std::size_t at = 0; at < text.size();) {
        const FT_UInt glyph = FT_Get_Char_Index(font.face(), takeCodePoint(text, at));
        FT_Vector kerning{};
        if (previous != 0 &&
            FT_Get_Kerning(font.face(), previous, glyph, FT_KERNING_UNFITTED, &kerning) == 0) {
            pen += kerning.x;
        }
        if (FT_Load_Glyph(font.face(), glyph, flags) == 0) {
            place(pen);
            pen += font.face()->glyph->linearHoriAdvance / 1024; // 16.16 to 26.6
        }
        previous = glyph;
    }
    return pen;
}

void blend(std::uint8_t& pixel, unsigned colour, unsigned coverage) {
    pixel =
        static_cast<std::uint8_t>((pixel * (25500 - coverage) + colour * coverage + 12750) / 25500);
}

} // namespace

TextSize measureText(const std::string& utf8, int pixelSize) {
    const Font font(pixelSize);
    const FT_Pos width = layOut(font, utf8, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP, [](FT_Pos) {});
    return {static_cast<int>(Font::roundedUp(width)),
            static_cast<int>(font.ascender() + font.descender())};
}

void drawText(const MutablePixelView& pixels, int x, int y, const std::string& utf8, int pixelSize,
              std::uint8_t c0, std::uint8_t c1, std::uint8_t c2, int opacity) {
    const Font font(pixelSize);
    const auto strength = static_cast<unsigned>(std::clamp(opacity, 0, 100));
    const FT_Pos baseline = y + font.ascender();
    layOut(font, utf8, FT_LOAD_RENDER | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP, [&](FT_Pos pen) {
        const FT_GlyphSlot glyph = font.face()->glyph;
        const FT_Bitmap& bitmap = glyph->bitmap;
        const FT_Pos left = x + (pen + unitsPerPixel / 2) / unitsPerPixel + glyph->bitmap_left;
        const FT_Pos top = baseline - glyph->bitmap_top;
        for (FT_Pos row = 0; row < static_cast<FT_Pos>(bitmap.rows); ++row) {
            if (top + row < 0 || top + row >= pixels.height()) {
                continue;
            }
            const std::uint8_t* coverage = bitmap.buffer + row * bitmap.pitch;
            std::uint8_t* line = pixels.row(static_cast<int>(top + row));
            for (FT_Pos column = 0; column < static_cast<FT_Pos>(bitmap.width); ++column) {
                if (left + column < 0 || left + column >= pixels.width()) {
                    continue;
                }
                std::uint8_t* pixel = line + 3 * (left + column);
                const unsigned part = coverage[column] * strength;
                blend(pixel[0], c0, part);
                blend(pixel[1], c1, part);
                blend(pixel[2], c2, part);
            }
        }
    });
}

} // namespace veldara
