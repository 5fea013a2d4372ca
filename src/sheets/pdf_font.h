// The program's font as an object of a document: only the glyphs that are used, and a table that
// leads from codes back to characters.
#pragma once

#include "sheets/pdf_content.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

namespace veldara {

// The font for texts that PdfCharacters::codes() wrote. Throws Error.
QPDFObjectHandle embedFont(QPDF& document, const PdfCharacters& characters);

// The table from codes to characters (a CMap), for searching and copying.
std::string toUnicodeTable(const PdfCharacters& characters);

} // namespace veldara
