#include "image/files.h"
#include "platform/image/turn.h"

#include <cstring>

namespace veldara::test {

namespace {

constexpr std::pair<int, int> sizes[] = {{1, 1},   {1, 9},   {9, 1},     {31, 33}, {32, 32},
                                         {65, 64}, {150, 7}, {300, 211}, {3, 1000}};

const std::uint8_t* at(const Image& image, int x, int y) {
    return image.row(y) + std::ptrdiff_t{3} * x;
}

} // namespace

TEST(Turned, ClockwiseTakesTheLeftColumnToTheTop) {
    for (const auto& [width, height] : sizes) {
        const Image image = photo(width, height);
        const Image result = turned(image.view(), Turn::clockwise);
        ASSERT_EQ(result.width(), height);
        ASSERT_EQ(result.height(), width);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(0, std::memcmp(at(result, height - 1 - y, x), at(image, x, y), 3));
            }
        }
    }
}

TEST(Turned, CounterClockwiseTakesTheTopRowToTheLeft) {
    for (const auto& [width, height] : sizes) {
        const Image image = photo(width, height);
        const Image result = turned(image.view(), Turn::counterClockwise);
        ASSERT_EQ(result.width(), height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(0, std::memcmp(at(result, y, width - 1 - x), at(image, x, y), 3));
            }
        }
    }
}

TEST(Turned, HalfExchangesOppositeCorners) {
    for (const auto& [width, height] : sizes) {
        const Image image = photo(width, height);
        const Image result = turned(image.view(), Turn::half);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(
                    0, std::memcmp(at(result, width - 1 - x, height - 1 - y), at(image, x, y), 3));
            }
        }
    }
}

TEST(Turned, FourQuartersAreNone) {
    for (const auto& [width, height] : sizes) {
        const Image image = photo(width, height);
        for (const Turn turn : {Turn::clockwise, Turn::counterClockwise}) {
            Image result = turned(image.view(), turn);
            for (int i = 0; i < 3; ++i) {
                result = turned(result.view(), turn);
            }
            EXPECT_TRUE(same(result, image));
        }
    }
}

TEST(Turned, TwoQuartersAreAHalfAndOppositeOnesCancel) {
    const Image image = photo(123, 77);
    const Image quarter = turned(image.view(), Turn::clockwise);
    EXPECT_TRUE(same(turned(quarter.view(), Turn::clockwise), turned(image.view(), Turn::half)));
    EXPECT_TRUE(same(turned(quarter.view(), Turn::counterClockwise), image));
    const Image half = turned(image.view(), Turn::half);
    EXPECT_TRUE(same(turned(half.view(), Turn::half), image));
    EXPECT_TRUE(same(turned(image.view(), Turn::none), image));
}

TEST(Turned, AViewIsTurnedLikeAPictureOfItsOwn) {
    const Image image = photo(200, 150);
    const PixelView part = image.view().cut(17, 9, 120, 101);
    const Image copy = Image::copyOf(part);
    for (const Turn turn : {Turn::none, Turn::clockwise, Turn::half, Turn::counterClockwise}) {
        EXPECT_TRUE(same(turned(part, turn), turned(copy.view(), turn)));
    }
}

} // namespace veldara::test
