// The drawing operators of a page (ISO 32000-1, chapters 8 and 9) from its description.
#pragma once

#include "sheets/photo_frame.h"
#include "sheets/sheet_page.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace veldara {

// A length in a document: four decimals, which are less than a thousandth of a millimetre.
std::string pdfNumber(double value);

// The characters of a document's texts, each with a code of its own, so that every text can be
// searched for whether or not the font has a glyph for it.
class PdfCharacters {
  public:
    // Takes the characters of all texts of the page.
    void add(const SheetPage& page);

    // Code points in the order of their codes, which begin at 1. Complete after the last add().
    const std::set<char32_t>& characters() const { return characters_; }

    // The text as a string of two-byte codes, in hexadecimal digits.
    std::string codes(std::string_view utf8) const;

  private:
    std::set<char32_t> characters_;
};

// The stored pixels that the page's picture holds, and the frame that turns them.
struct PdfPicture {
    PhotoFrame frame;
    PixelRectangle pixels;
};

// The page's items as operators. The picture is the resource /Photo, the font /Text.
std::string pdfContent(const SheetPage& page, const PdfPicture& picture,
                       const PdfCharacters& characters);

} // namespace veldara
