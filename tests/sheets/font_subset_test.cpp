#include "platform/image/built_in_font.h"
#include "platform/image/font_face.h"
#include "sheets/font_subset.h"

#include <vector>

#include <gtest/gtest.h>

namespace veldara {
namespace {

// A font as another reader takes it.
class ReadFont {
  public:
    explicit ReadFont(std::span<const std::uint8_t> bytes) : face_(bytes) {}
    std::uint32_t glyphs() const { return static_cast<std::uint32_t>(face_.get()->num_glyphs); }

    // Advance, left side bearing and points.
    std::vector<long> glyph(std::uint32_t number) const {
        EXPECT_EQ(FT_Load_Glyph(face_.get(), number, FT_LOAD_NO_SCALE), 0) << number;
        const FT_GlyphSlot slot = face_.get()->glyph;
        std::vector<long> values{slot->metrics.horiAdvance, slot->metrics.horiBearingX};
        for (int i = 0; i < slot->outline.n_points; ++i) {
            values.push_back(slot->outline.points[i].x);
            values.push_back(slot->outline.points[i].y);
        }
        return values;
    }

  private:
    FontFace face_;
};

std::uint32_t numberAt(const std::vector<std::uint8_t>& bytes, std::size_t at) {
    return std::uint32_t{bytes.at(at)} << 24 | std::uint32_t{bytes.at(at + 1)} << 16 |
           std::uint32_t{bytes.at(at + 2)} << 8 | std::uint32_t{bytes.at(at + 3)};
}

// Where a font's table begins.
std::size_t placeOf(const std::vector<std::uint8_t>& font, std::uint32_t tag) {
    for (std::size_t at = 12;; at += 16) {
        if (numberAt(font, at) == tag) {
            return numberAt(font, at + 8);
        }
    }
}

TEST(FontSubset, ItsGlyphsAreThoseOfTheFont) {
    const ReadFont whole(builtInFont());
    std::set<std::uint32_t> wanted;
    for (std::uint32_t number = 3; number < whole.glyphs(); number += 7) {
        wanted.insert(number);
    }
    const FontSubset subset = subsetFont(builtInFont(), wanted);
    const ReadFont read(subset.bytes);
    EXPECT_EQ(read.glyphs(), subset.newNumber.size());
    for (const auto& [number, inSubset] : subset.newNumber) {
        EXPECT_EQ(read.glyph(inSubset), whole.glyph(number)) << number;
    }
    for (const std::uint32_t number : wanted) {
        EXPECT_EQ(subset.newNumber.count(number), 1U) << number;
    }
}

// The last ones share one advance, and have their bearings behind the pairs of both.
TEST(FontSubset, TheLastGlyphsKeepTheirBearings) {
    constexpr std::uint32_t hhea = 0x68686561;
    constexpr std::uint32_t hmtx = 0x686D7478;
    const std::vector<std::uint8_t> font(builtInFont().begin(), builtInFont().end());
    const std::uint32_t pairs = numberAt(font, placeOf(font, hhea) + 32) & 0xFFFFU;
    const std::uint32_t glyphs = ReadFont(builtInFont()).glyphs();
    ASSERT_LT(pairs + 2, glyphs);
    const std::uint32_t last = glyphs - 1;
    const FontSubset subset = subsetFont(builtInFont(), {last});
    const std::size_t wanted =
        placeOf(font, hmtx) + std::size_t{4} * pairs + std::size_t{2} * (last - pairs);
    const std::size_t found =
        placeOf(subset.bytes, hmtx) + std::size_t{4} * subset.newNumber.at(last) + 2;
    EXPECT_EQ(numberAt(subset.bytes, found - 2) & 0xFFFFU, numberAt(font, wanted - 2) & 0xFFFFU);
}

TEST(FontSubset, HasTheGlyphOfMissingCharactersAndNothingThatWasNotAskedFor) {
    const FontSubset subset = subsetFont(builtInFont(), {});
    EXPECT_EQ(subset.newNumber, (std::map<std::uint32_t, std::uint32_t>{{0, 0}}));
}

TEST(FontSubset, TheSumOfTheFileIsThatOfEveryFont) {
    const FontSubset subset = subsetFont(builtInFont(), {36, 40});
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < subset.bytes.size(); at += 4) {
        sum += numberAt(subset.bytes, at);
    }
    EXPECT_EQ(sum, 0xB1B0AFBAU);
}

TEST(FontSubset, WhatIsNoFontOrNotInItIsRefused) {
    const std::vector<std::uint8_t> bytes(builtInFont().begin(), builtInFont().begin() + 4000);
    EXPECT_ANY_THROW(subsetFont(bytes, {36}));
    EXPECT_ANY_THROW(subsetFont(builtInFont(), {60000}));
}

} // namespace
} // namespace veldara
