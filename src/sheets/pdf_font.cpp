#include "sheets/pdf_font.h"

#include "platform/image/built_in_font.h"
#include "sheets/font_subset.h"
#include "sheets/page_font.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace veldara {
namespace {

std::string hexadecimal(unsigned value, int digits) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%0*X", digits, value);
    return text.data();
}

// UTF-16, big-endian, as the table wants it.
std::string unicodeDigits(char32_t character) {
    if (character < 0x10000) {
        return hexadecimal(character, 4);
    }
    const unsigned rest = character - 0x10000;
    return hexadecimal(0xD800 + (rest >> 10U), 4) + hexadecimal(0xDC00 + (rest & 0x3FFU), 4);
}

QPDFObjectHandle name(const std::string& text) {
    return QPDFObjectHandle::newName(text);
}

QPDFObjectHandle thousandths(double value) {
    return QPDFObjectHandle::newInteger(std::llround(value));
}

QPDFObjectHandle streamOf(QPDF& document, const std::vector<std::uint8_t>& bytes) {
    return document.newStream(std::string(bytes.begin(), bytes.end()));
}

// Six capitals that belong to this choice of glyphs, as names of subsets begin.
std::string subsetName(const PdfCharacters& characters) {
    std::uint64_t hash = 14695981039346656037U; // FNV-1a
    for (const char32_t character : characters.characters()) {
        hash = (hash ^ character) * 1099511628211U;
    }
    std::string tag;
    for (int i = 0; i < 6; ++i, hash /= 26) {
        tag += static_cast<char>('A' + hash % 26);
    }
    return "/" + tag + "+" + pageFontName();
}

QPDFObjectHandle descriptor(QPDF& document, const std::string& fontName, const FontSubset& subset) {
    const FontMetrics metrics = pageFontMetrics();
    QPDFObjectHandle file = streamOf(document, subset.bytes);
    file.getDict().replaceKey(
        "/Length1", QPDFObjectHandle::newInteger(static_cast<long long>(subset.bytes.size())));
    QPDFObjectHandle result = QPDFObjectHandle::newDictionary();
    result.replaceKey("/Type", name("/FontDescriptor"));
    result.replaceKey("/FontName", name(fontName));
    result.replaceKey("/Flags", QPDFObjectHandle::newInteger(4)); // symbolic: no standard encoding
    QPDFObjectHandle box = QPDFObjectHandle::newArray();
    for (const double edge : {metrics.left, metrics.bottom, metrics.right, metrics.top}) {
        box.appendItem(thousandths(edge));
    }
    result.replaceKey("/FontBBox", box);
    result.replaceKey("/ItalicAngle", QPDFObjectHandle::newInteger(0));
    result.replaceKey("/Ascent", thousandths(metrics.ascent));
    result.replaceKey("/Descent", thousandths(metrics.descent));
    result.replaceKey("/CapHeight", thousandths(metrics.capHeight));
    result.replaceKey("/StemV", QPDFObjectHandle::newInteger(80));
    result.replaceKey("/FontFile2", file);
    return document.makeIndirectObject(result);
}

} // namespace

std::string toUnicodeTable(const PdfCharacters& characters) {
    std::string text = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                       "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                       "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                       "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    constexpr std::size_t mostInOneBlock = 100; // the format's own limit
    std::size_t left = characters.characters().size();
    std::size_t inBlock = 0;
    unsigned code = 0;
    for (const char32_t character : characters.characters()) {
        if (inBlock == 0) {
            inBlock = std::min(left, mostInOneBlock);
            text += std::to_string(inBlock) + " beginbfchar\n";
        }
        text += "<" + hexadecimal(++code, 4) + "> <" + unicodeDigits(character) + ">\n";
        --left;
        if (--inBlock == 0) {
            text += "endbfchar\n";
        }
    }
    return text + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

QPDFObjectHandle embedFont(QPDF& document, const PdfCharacters& characters) {
    std::set<std::uint32_t> glyphs;
    for (const char32_t character : characters.characters()) {
        glyphs.insert(pageGlyph(character));
    }
    const FontSubset subset = subsetFont(builtInFont(), glyphs);

    // Code 0 stands for nothing; each further one leads to its character's glyph.
    std::vector<std::uint8_t> glyphOfCode{0, 0};
    QPDFObjectHandle widths = QPDFObjectHandle::newArray();
    for (const char32_t character : characters.characters()) {
        const std::uint32_t glyph = pageGlyph(character);
        const std::uint32_t number = subset.newNumber.at(glyph);
        glyphOfCode.push_back(static_cast<std::uint8_t>(number >> 8U));
        glyphOfCode.push_back(static_cast<std::uint8_t>(number));
        widths.appendItem(QPDFObjectHandle::newReal(pdfNumber(glyphAdvance(glyph))));
    }
    QPDFObjectHandle widthTable = QPDFObjectHandle::newArray();
    widthTable.appendItem(QPDFObjectHandle::newInteger(1));
    widthTable.appendItem(widths);

    const std::string fontName = subsetName(characters);
    QPDFObjectHandle glyphFont = QPDFObjectHandle::newDictionary();
    glyphFont.replaceKey("/Type", name("/Font"));
    glyphFont.replaceKey("/Subtype", name("/CIDFontType2"));
    glyphFont.replaceKey("/BaseFont", name(fontName));
    glyphFont.replaceKey(
        "/CIDSystemInfo",
        QPDFObjectHandle::parse("<< /Registry (Adobe) /Ordering (Identity) /Supplement 0 >>"));
    glyphFont.replaceKey("/FontDescriptor", descriptor(document, fontName, subset));
    glyphFont.replaceKey("/W", widthTable);
    glyphFont.replaceKey("/CIDToGIDMap", streamOf(document, glyphOfCode));

    QPDFObjectHandle font = QPDFObjectHandle::newDictionary();
    font.replaceKey("/Type", name("/Font"));
    font.replaceKey("/Subtype", name("/Type0"));
    font.replaceKey("/BaseFont", name(fontName));
    font.replaceKey("/Encoding", name("/Identity-H"));
    QPDFObjectHandle descendants = QPDFObjectHandle::newArray();
    descendants.appendItem(document.makeIndirectObject(glyphFont));
    font.replaceKey("/DescendantFonts", descendants);
    font.replaceKey("/ToUnicode", document.newStream(toUnicodeTable(characters)));
    return document.makeIndirectObject(font);
}

} // namespace veldara
