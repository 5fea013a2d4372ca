#include "sheets/font_subset.h"

#include "platform/error.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace veldara {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Flags of a composite glyph's component.
constexpr unsigned argumentsAreWords = 0x0001;
constexpr unsigned hasScale = 0x0008;
constexpr unsigned moreComponents = 0x0020;
constexpr unsigned hasTwoScales = 0x0040;
constexpr unsigned hasMatrix = 0x0080;

[[noreturn]] void refuse() {
    throw Error("The program's font could not be put into the document.");
}

// Big-endian numbers of a table; beyond its end there are none.
class Table {
  public:
    Table() = default;
    explicit Table(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    std::span<const std::uint8_t> bytes() const { return bytes_; }
    std::size_t size() const { return bytes_.size(); }
    unsigned word(std::size_t at) const {
        if (at + 2 > bytes_.size()) {
            refuse();
        }
        return static_cast<unsigned>(bytes_[at]) << 8U | bytes_[at + 1];
    }
    std::uint32_t doubleWord(std::size_t at) const {
        return static_cast<std::uint32_t>(word(at)) << 16U | word(at + 2);
    }
    Table part(std::size_t at, std::size_t count) const {
        if (at > bytes_.size() || count > bytes_.size() - at) {
            refuse();
        }
        return Table(bytes_.subspan(at, count));
    }

  private:
    std::span<const std::uint8_t> bytes_;
};

void putWord(Bytes& to, unsigned value) {
    to.push_back(static_cast<std::uint8_t>(value >> 8U));
    to.push_back(static_cast<std::uint8_t>(value));
}

void putDoubleWord(Bytes& to, std::uint32_t value) {
    putWord(to, value >> 16U);
    putWord(to, value & 0xFFFFU);
}

void setWord(Bytes& in, std::size_t at, unsigned value) {
    in.at(at) = static_cast<std::uint8_t>(value >> 8U);
    in.at(at + 1) = static_cast<std::uint8_t>(value);
}

class Font {
  public:
    explicit Font(std::span<const std::uint8_t> bytes) : whole_(bytes) {
        longOffsets_ = table("head").word(50) != 0;
        glyphCount_ = table("maxp").word(4);
        metricCount_ = table("hhea").word(34);
        if (metricCount_ == 0) {
            refuse();
        }
    }

    // Empty when the font has no such table.
    Table table(std::string_view tag) const {
        const unsigned count = whole_.word(4);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = 12 + 16 * i;
            const Table name = whole_.part(at, 4);
            if (std::equal(tag.begin(), tag.end(), name.bytes().begin())) {
                return whole_.part(whole_.doubleWord(at + 8), whole_.doubleWord(at + 12));
            }
        }
        return {};
    }

    Table glyph(std::uint32_t number) const {
        if (number >= glyphCount_) {
            refuse();
        }
        const Table places = table("loca");
        const auto place = [&](std::size_t i) -> std::size_t {
            return longOffsets_ ? places.doubleWord(4 * i) : std::size_t{2} * places.word(2 * i);
        };
        const std::size_t from = place(number);
        const std::size_t to = place(number + std::size_t{1});
        if (to < from) {
            refuse();
        }
        return table("glyf").part(from, to - from);
    }

    // Advance and left side bearing.
    std::pair<unsigned, unsigned> metric(std::uint32_t number) const {
        const Table metrics = table("hmtx");
        if (number < metricCount_) {
            return {metrics.word(4 * std::size_t{number}),
                    metrics.word(4 * std::size_t{number} + 2)};
        }
        return {
            metrics.word(4 * std::size_t{metricCount_ - 1}),
            metrics.word(4 * std::size_t{metricCount_} + 2 * std::size_t{number - metricCount_})};
    }

  private:
    Table whole_;
    bool longOffsets_ = false;
    unsigned glyphCount_ = 0;
    unsigned metricCount_ = 0;
};

// Calls visit(where the component's glyph number stands in the glyph, the number).
template <class Visit>
void visitComponents(const Table& glyph, Visit&& visit) {
    if (glyph.size() < 10 || glyph.word(0) < 0x8000) { // a contour count that is not negative
        return;
    }
    unsigned flags = moreComponents;
    for (std::size_t at = 10; (flags & moreComponents) != 0;) {
        flags = glyph.word(at);
        visit(at + 2, glyph.word(at + 2));
        at += 4 + ((flags & argumentsAreWords) != 0 ? 4U : 2U);
        at += (flags & hasScale) != 0       ? 2U
              : (flags & hasTwoScales) != 0 ? 4U
              : (flags & hasMatrix) != 0    ? 8U
                                            : 0U;
    }
}

std::set<std::uint32_t> withComponents(const Font& font, const std::set<std::uint32_t>& glyphs) {
    std::set<std::uint32_t> all{0};
    std::vector<std::uint32_t> open(glyphs.begin(), glyphs.end());
    open.push_back(0);
    while (!open.empty()) {
        const std::uint32_t number = open.back();
        open.pop_back();
        all.insert(number);
        visitComponents(font.glyph(number), [&](std::size_t, unsigned component) {
            if (all.count(component) == 0) {
                open.push_back(component);
            }
        });
    }
    return all;
}

std::uint32_t sumOf(const Bytes& table) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        sum += static_cast<std::uint32_t>(table[i]) << (24 - 8 * (i % 4));
    }
    return sum;
}

// The tables behind their directory, which lists them by their tags.
Bytes assembled(const std::map<std::string, Bytes, std::less<>>& tables) {
    unsigned power = 0;
    while ((2U << power) <= tables.size()) {
        ++power;
    }
    const auto count = static_cast<unsigned>(tables.size());
    Bytes result;
    putDoubleWord(result, 0x00010000);
    putWord(result, count);
    putWord(result, 16U << power);
    putWord(result, power);
    putWord(result, 16 * count - (16U << power));
    std::size_t at = 12 + 16 * tables.size();
    for (const auto& [tag, table] : tables) {
        result.insert(result.end(), tag.begin(), tag.end());
        putDoubleWord(result, sumOf(table));
        putDoubleWord(result, static_cast<std::uint32_t>(at));
        putDoubleWord(result, static_cast<std::uint32_t>(table.size()));
        at += (table.size() + 3) / 4 * 4;
    }
    for (const auto& [tag, table] : tables) {
        result.insert(result.end(), table.begin(), table.end());
        result.resize((result.size() + 3) / 4 * 4);
    }
    return result;
}

Bytes copyOf(const Table& table) {
    return {table.bytes().begin(), table.bytes().end()};
}

} // namespace

FontSubset subsetFont(std::span<const std::uint8_t> bytes, const std::set<std::uint32_t>& glyphs) {
    const Font font(bytes);
    FontSubset subset;
    for (const std::uint32_t number : withComponents(font, glyphs)) {
        subset.newNumber.emplace(number, static_cast<std::uint32_t>(subset.newNumber.size()));
    }

    std::map<std::string, Bytes, std::less<>> tables;
    Bytes& outlines = tables["glyf"];
    Bytes& places = tables["loca"];
    Bytes& metrics = tables["hmtx"];
    for (const auto& [number, unused] : subset.newNumber) {
        const Table glyph = font.glyph(number);
        Bytes outline = copyOf(glyph);
        visitComponents(glyph, [&](std::size_t at, unsigned component) {
            setWord(outline, at, subset.newNumber.at(component));
        });
        outline.resize((outline.size() + 3) / 4 * 4);
        putDoubleWord(places, static_cast<std::uint32_t>(outlines.size()));
        outlines.insert(outlines.end(), outline.begin(), outline.end());
        const auto [advance, bearing] = font.metric(number);
        putWord(metrics, advance);
        putWord(metrics, bearing);
    }
    putDoubleWord(places, static_cast<std::uint32_t>(outlines.size()));

    const auto count = static_cast<unsigned>(subset.newNumber.size());
    for (const char* tag : {"head", "hhea", "maxp", "cvt ", "fpgm", "prep"}) {
        const Table table = font.table(tag);
        if (table.size() > 0) {
            tables[tag] = copyOf(table);
        }
    }
    setWord(tables["head"], 50, 1); // the places are long numbers
    setWord(tables["head"], 8, 0);  // a sum over the whole file, set when the file is known
    setWord(tables["head"], 10, 0);
    setWord(tables["hhea"], 34, count);
    setWord(tables["maxp"], 4, count);
    subset.bytes = assembled(tables);
    // The head's own sum, in the directory, is that without the sum over the file.
    const std::uint32_t rest = 0xB1B0AFBA - sumOf(subset.bytes);
    const Table head = Font(subset.bytes).table("head");
    const auto at = static_cast<std::size_t>(head.bytes().data() - subset.bytes.data());
    setWord(subset.bytes, at + 8, rest >> 16U);
    setWord(subset.bytes, at + 10, rest & 0xFFFFU);
    return subset;
}

} // namespace veldara
