#include "image/files.h"
#include "platform/error.h"
#include "platform/image/text_drawing.h"

#include <algorithm>

namespace veldara::test {

namespace {

const std::string sample = "Edge Test Print";

struct Box {
    int left = 1 << 20, top = 1 << 20, right = -1, bottom = -1;
};

// Where the picture differs from white.
Box inkOf(const Image& image) {
    Box box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.row(y)[3 * x + 1] != 255) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                       std::max(box.bottom, y)};
            }
        }
    }
    return box;
}

Image drawn(const std::string& text, int size, int opacity = 100) {
    Image image = Image::filled(900, 200, 255, 255, 255);
    drawText(image.mutableView(), 50, 40, text, size, 0, 0, 0, opacity);
    return image;
}

} // namespace

TEST(Text, GrowsWithItsSize) {
    TextSize before;
    for (int size = 6; size <= 200; ++size) {
        const TextSize now = measureText(sample, size);
        EXPECT_GT(now.width, before.width);
        EXPECT_GE(now.height, before.height);
        EXPECT_GE(now.height, size);
        EXPECT_LE(now.height, 2 * size);
        before = now;
    }
}

TEST(Text, InkStaysInItsBox) {
    for (const int size : {6, 12, 40, 90}) {
        const TextSize box = measureText(sample, size);
        const Box ink = inkOf(drawn(sample, size));
        EXPECT_GE(ink.left, 50 - 1);
        EXPECT_LE(ink.right, 50 + box.width);
        EXPECT_GE(ink.top, 40);
        EXPECT_LT(ink.bottom, 40 + box.height);
        // and fills most of it
        EXPECT_GT(ink.right - ink.left, box.width * 9 / 10 - 2);
        EXPECT_GT(ink.bottom - ink.top, box.height / 2);
    }
}

TEST(Text, FullInkHasTheColourAndHalfOpacityHalfOfIt) {
    const Image full = drawn("lll", 80);
    const Image half = drawn("lll", 80, 50);
    int darkest = 255;
    int darkestHalf = 255;
    for (int y = 0; y < full.height(); ++y) {
        for (int i = 0; i < 3 * full.width(); ++i) {
            darkest = std::min<int>(darkest, full.row(y)[i]);
            darkestHalf = std::min<int>(darkestHalf, half.row(y)[i]);
        }
    }
    EXPECT_EQ(darkest, 0);
    EXPECT_NEAR(darkestHalf, 127, 1);
    EXPECT_EQ(inkOf(drawn("lll", 80, 0)).right, -1);
}

TEST(Text, ColoursAreKeptApart) {
    Image image = Image::filled(200, 100, 255, 255, 255);
    drawText(image.mutableView(), 5, 5, "MMM", 60, 10, 20, 30, 100);
    bool found = false;
    for (int x = 0; x < 200; ++x) {
        const std::uint8_t* p = image.row(40) + std::ptrdiff_t{3} * x;
        found = found || (p[0] == 10 && p[1] == 20 && p[2] == 30);
    }
    EXPECT_TRUE(found);
}

TEST(Text, IsClippedAtEveryEdge) {
    // Memory tools see any pixel that is written outside.
    const Image whole = drawn(sample, 60);
    for (const auto& [x, y] :
         {std::pair{-100, -20}, {850, 10}, {10, 180}, {-2000, 0}, {0, -2000}}) {
        Image image = Image::filled(900, 200, 255, 255, 255);
        drawText(image.mutableView(), x, y, sample, 60, 0, 0, 0, 100);
    }
    Image part = Image::filled(100, 50, 255, 255, 255);
    drawText(part.mutableView(), 50 - 120, 40 - 60, sample, 60, 0, 0, 0, 100);
    EXPECT_TRUE(same(part.view(), whole.view().cut(120, 60, 100, 50)));
}

TEST(Text, AnyBytesAreText) {
    EXPECT_EQ(measureText("", 20).width, 0);
    EXPECT_GT(measureText("", 20).height, 0);
    EXPECT_GT(measureText("Grüße 漢字 ✓", 20).width, measureText("Gre", 20).width);
    EXPECT_GT(measureText("\xC3\xA9", 20).width, 0);
    EXPECT_EQ(measureText("\xC3\xA9", 20).width, measureText("é", 20).width);
    for (unsigned seed = 1; seed <= 50; ++seed) {
        const Bytes bytes = noise(40, seed);
        const std::string text(bytes.begin(), bytes.end());
        drawn(text, 17);
    }
    drawn("\xF0\x9F", 17); // ends within a character
}

TEST(Text, RefusesSizesBelowOne) {
    EXPECT_THROW(measureText("a", 0), Error);
    EXPECT_THROW(measureText("a", -3), Error);
}

TEST(Text, IsTheSameEverywhere) {
    // Known once and for all, so that a change of font or layout is noticed on every system.
    const TextSize size = measureText(sample, 100);
    EXPECT_EQ(size.width, 743);
    EXPECT_EQ(size.height, 117);
}

} // namespace veldara::test
