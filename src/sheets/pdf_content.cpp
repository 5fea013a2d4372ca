#include "sheets/pdf_content.h"

#include "platform/text/characters.h"
#include "platform/text/number_text.h"

#include <cmath>
#include <iterator>

namespace veldara {
namespace {

std::string joined(std::initializer_list<double> numbers, std::string_view operation) {
    std::string text;
    for (const double number : numbers) {
        text += pdfNumber(number) + " ";
    }
    return text.append(operation) + "\n";
}

double colourPart(std::uint8_t part) {
    return part / 255.0;
}

// A picture whose edge lies on the border between two pixels of the device is stretched by a whole
// pixel where a renderer counts the next one as touched. This little less (70 nanometres, but more
// than the numbers are rounded by) keeps its edges off that border.
constexpr double offBorder = 0.0002;

void keepOff(double& start, double& length) {
    const double inward = length > 0 ? offBorder : length < 0 ? -offBorder : 0;
    start += inward;
    length -= 2 * inward;
}

PageMatrix keptOffBorders(PageMatrix m) {
    const bool sideways = std::abs(m.b) > std::abs(m.a);
    keepOff(m.e, sideways ? m.c : m.a);
    keepOff(m.f, sideways ? m.b : m.d);
    return m;
}

class Content {
  public:
    Content(const SheetPage& page, const PdfPicture& picture, const PdfCharacters& characters)
        : page_(page), picture_(picture), characters_(characters) {}

    std::string draw() {
        for (const PageItem& item : page_.items) {
            std::visit([this](const auto& kind) { add(kind); }, item);
        }
        return std::move(text_);
    }

  private:
    double up(double y) const { return page_.height - y; }

    void add(const PagePhoto& photo) {
        const PageRect& target = photo.target;
        const PageMatrix m =
            keptOffBorders(pieceMatrix(picture_.frame, picture_.pixels, photo, page_.height));
        text_ += "q\n";
        text_ += joined({target.left, up(target.bottom), target.width(), target.height()}, "re");
        text_ += "W n\n";
        text_ += joined({m.a, m.b, m.c, m.d, m.e, m.f}, "cm");
        text_ += "/Photo Do\nQ\n";
    }

    void add(const PageLine& line) {
        text_ += "q\n" + strokeColour(line.colour) + joined({line.width}, "w");
        if (line.dash > 0) {
            text_ += "[" + pdfNumber(line.dash) + "] 0 d\n";
        }
        text_ += joined({line.from.x, up(line.from.y)}, "m") +
                 joined({line.to.x, up(line.to.y)}, "l") + "S\nQ\n";
    }

    void add(const PageShape& shape) {
        text_ += "q\n";
        text_ += shape.outline > 0 ? strokeColour(shape.colour) + joined({shape.outline}, "w")
                                   : fillColour(shape.colour);
        const char* operation = "m";
        for (const PagePoint& point : shape.points) {
            text_ += joined({point.x, up(point.y)}, operation);
            operation = "l";
        }
        text_ += shape.outline > 0 ? "s\nQ\n" : "f\nQ\n";
    }

    void add(const PageText& text) {
        if (text.text.empty()) {
            return;
        }
        text_ += "BT\n" + fillColour(text.colour) + "/Text " + pdfNumber(text.size) + " Tf\n";
        const double x = text.start.x;
        const double y = up(text.start.y);
        text_ += text.direction == TextDirection::up ? joined({0, 1, -1, 0, x, y}, "Tm")
                                                     : joined({1, 0, 0, 1, x, y}, "Tm");
        text_ += "<" + characters_.codes(text.text) + "> Tj\nET\n";
    }

    static std::string fillColour(const PageColour& colour) {
        return joined({colourPart(colour.red), colourPart(colour.green), colourPart(colour.blue)},
                      "rg");
    }
    static std::string strokeColour(const PageColour& colour) {
        return joined({colourPart(colour.red), colourPart(colour.green), colourPart(colour.blue)},
                      "RG");
    }

    const SheetPage& page_;
    const PdfPicture& picture_;
    const PdfCharacters& characters_;
    std::string text_;
};

} // namespace

std::string pdfNumber(double value) {
    constexpr double decimals = 10000;
    const double rounded = std::round(value * decimals) / decimals;
    return plainNumber(rounded == 0 ? 0 : rounded); // never a negative zero
}

void PdfCharacters::add(const SheetPage& page) {
    for (const PageItem& item : page.items) {
        if (const auto* text = std::get_if<PageText>(&item)) {
            const std::u32string points = codePoints(text->text);
            characters_.insert(points.begin(), points.end());
        }
    }
}

std::string PdfCharacters::codes(std::string_view utf8) const {
    constexpr const char* digits = "0123456789ABCDEF";
    std::string result;
    for (const char32_t character : codePoints(utf8)) {
        const auto found = characters_.find(character);
        const auto code = static_cast<unsigned>(
            found == characters_.end() ? 0 : std::distance(characters_.begin(), found) + 1);
        for (const unsigned shift : {12U, 8U, 4U, 0U}) {
            result += digits[code >> shift & 0xFU];
        }
    }
    return result;
}

std::string pdfContent(const SheetPage& page, const PdfPicture& picture,
                       const PdfCharacters& characters) {
    return Content(page, picture, characters).draw();
}

} // namespace veldara
