#include "sheets/page_font.h"

#include <thread>

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(PageFont, KnowsWhichGlyphShowsACharacter) {
    EXPECT_NE(pageGlyph(U'A'), 0U);
    EXPECT_NE(pageGlyph(U'A'), pageGlyph(U'B'));
    EXPECT_NE(pageGlyph(U'\u20AC'), 0U);
    EXPECT_EQ(pageGlyph(U'\U0001F30A'), 0U);
    EXPECT_EQ(pageGlyph(U'\uE000'), 0U) << "between characters that it has";
}

TEST(PageFont, WidthsAreThoseOfTheFont) {
    // Of the font's own table, whose em has 2048 units.
    EXPECT_NEAR(glyphAdvance(pageGlyph(U'i')), 1000 * 569.0 / 2048, 1e-6);
    EXPECT_EQ(glyphAdvance(1U << 20), 0);
    EXPECT_NEAR(pageTextWidth("ii", 10), 2 * glyphAdvance(pageGlyph(U'i')) / 100, 1e-9);
    const FontMetrics metrics = pageFontMetrics();
    EXPECT_NEAR(metrics.capHeight, 1000 * 1493.0 / 2048, 1e-6);
    EXPECT_GT(metrics.ascent, metrics.capHeight);
    EXPECT_LT(metrics.descent, 0);
    EXPECT_LT(metrics.left, metrics.right);
    EXPECT_LT(metrics.bottom, metrics.top);
}

TEST(PageFont, TextIsShortenedToAsMuchAsFits) {
    const std::string ellipsis = "\xE2\x80\xA6";
    const auto roomFor = [](const std::string& text) { return pageTextWidth(text, 10) + 1e-9; };
    EXPECT_EQ(shortenedText("mmmm", 10, roomFor("mmmm")), "mmmm");
    EXPECT_EQ(shortenedText("mmmmm", 10, roomFor("mmm" + ellipsis)), "mmm" + ellipsis);
    EXPECT_EQ(shortenedText("mmmm", 10, roomFor("mm" + ellipsis)), "mm" + ellipsis);
    EXPECT_EQ(shortenedText("mmmm", 10, roomFor("m" + ellipsis)), "m" + ellipsis);
    EXPECT_EQ(shortenedText("mmmm", 10, roomFor(ellipsis)), "") << "an ellipsis alone says nothing";
}

// Every band of a printed page is drawn on a thread of its own, which ends with it.
TEST(PageFont, ServesThreadsThatEnd) {
    const double wanted = pageTextWidth("row 1 of 2", 8);
    for (int i = 0; i < 20; ++i) {
        double found = 0;
        std::thread drawing([&] { found = pageTextWidth("row 1 of 2", 8); });
        drawing.join();
        EXPECT_EQ(found, wanted);
    }
}

} // namespace
} // namespace veldara
