#include "image/files.h"
#include "platform/error.h"
#include "platform/image/resample.h"
#include "platform/image/turn.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldara::test {

namespace {

constexpr std::pair<int, int> sizes[] = {{1, 1},   {1, 100}, {100, 1},   {50, 40},  {64, 64},
                                         {97, 63}, {333, 5}, {200, 160}, {640, 490}};

std::array<double, 3> meanOf(const Image& image) {
    std::array<double, 3> sums{};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            for (std::size_t c = 0; c < 3; ++c) {
                sums[c] += image.row(y)[3 * static_cast<std::size_t>(x) + c];
            }
        }
    }
    for (double& sum : sums) {
        sum /= static_cast<double>(image.width()) * image.height();
    }
    return sums;
}

// A picture without sharp edges.
Image smooth(int width, int height) {
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double u = (x + 0.5) / width;
            const double v = (y + 0.5) / height;
            std::uint8_t* p = image.row(y) + std::ptrdiff_t{3} * x;
            p[0] = static_cast<std::uint8_t>(std::lround(20 + 200 * u));
            p[1] = static_cast<std::uint8_t>(std::lround(230 - 190 * v));
            p[2] = static_cast<std::uint8_t>(
                std::lround(128 + 100 * std::sin(6 * u) * std::cos(5 * v)));
        }
    }
    return image;
}

} // namespace

TEST(Resampled, TheSameSizeIsTheSamePicture) {
    for (const auto& [width, height] : sizes) {
        const Image image = photo(width, height);
        EXPECT_TRUE(same(resampled(image.view(), width, height), image));
    }
}

TEST(Resampled, OneColourStaysThatColour) {
    for (const int level : {0, 1, 77, 128, 254, 255}) {
        const auto value = static_cast<std::uint8_t>(level);
        for (const auto& [width, height] : sizes) {
            const Image image = Image::filled(width, height, value, 255, 0);
            for (const auto& [newWidth, newHeight] : sizes) {
                EXPECT_TRUE(same(resampled(image.view(), newWidth, newHeight),
                                 Image::filled(newWidth, newHeight, value, 255, 0)))
                    << width << " x " << height << " to " << newWidth << " x " << newHeight;
            }
        }
    }
}

TEST(Resampled, TheMeanIsKept) {
    const Image image = photo(611, 433);
    const auto before = meanOf(image);
    for (const auto& [width, height] :
         {std::pair{305, 216}, {200, 160}, {97, 63}, {40, 400}, {21, 13}, {900, 700}}) {
        const auto after = meanOf(resampled(image.view(), width, height));
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_NEAR(after[c], before[c], 2.5) << width << " x " << height;
        }
    }
}

TEST(Resampled, ASmoothPictureKeepsItsShape) {
    const Image image = smooth(640, 480);
    for (const auto& [width, height] : {std::pair{320, 240},
                                        {213, 160},
                                        {100, 75},
                                        {91, 61},
                                        {640, 100},
                                        {1000, 750},
                                        {641, 481}}) {
        EXPECT_LE(distance(resampled(image.view(), width, height), smooth(width, height)), 2)
            << width << " x " << height;
    }
}

TEST(Resampled, NothingMovesWhenTheScaleLeavesAPartialGroup) {
    // 1001 pixels to 100: groups of five leave one pixel over at the right.
    const Image image = smooth(1001, 503);
    EXPECT_LE(distance(resampled(image.view(), 100, 50), smooth(100, 50)), 2);
}

TEST(Resampled, MirroredPicturesGiveMirroredResults) {
    const Image image = photo(240, 180);
    const Image half = turned(image.view(), Turn::half);
    const Image one = turned(resampled(image.view(), 60, 45).view(), Turn::half);
    EXPECT_LE(distance(resampled(half.view(), 60, 45), one), 1);
}

TEST(Resampled, EnlargingPassesThroughTheOldPixels) {
    // Three times as large, every third pixel lies exactly on an old one.
    const Image image = photo(30, 20);
    const Image large = resampled(image.view(), 90, 60);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 30; ++x) {
            for (int c = 0; c < 3; ++c) {
                ASSERT_EQ(large.row(3 * y + 1)[3 * (3 * x + 1) + c], image.row(y)[3 * x + c]);
            }
        }
    }
}

TEST(Resampled, EnlargingKeepsAParabola) {
    // The cubic is exact for polynomials of the second degree, so only rounding is left. These
    // samples are whole numbers: (i + 1/2)^2 - 1/4.
    constexpr int width = 16;
    Image image(width, 1);
    for (int i = 0; i < width; ++i) {
        std::fill_n(image.row(0) + std::ptrdiff_t{3} * i, 3, static_cast<std::uint8_t>(i * i + i));
    }
    const Image large = resampled(image.view(), 3 * width, 1);
    for (int i = 6; i < 3 * (width - 2); ++i) { // at the ends it has no neighbours
        const double x = (i + 0.5) / 3;
        ASSERT_NEAR(large.row(0)[3 * i], x * x - 0.25, 0.501) << i;
    }
}

TEST(Resampled, FineStripesBecomeGrey) {
    Image image(800, 600);
    for (int y = 0; y < 600; ++y) {
        for (int i = 0; i < 2400; ++i) {
            image.row(y)[i] = i / 3 % 2 == 0 ? 0 : 255;
        }
    }
    const Image small = resampled(image.view(), 100, 75);
    for (int y = 0; y < 75; ++y) {
        for (int i = 15; i < 285; ++i) {
            ASSERT_NEAR(small.row(y)[i], 127, 12);
        }
    }
}

TEST(Resampled, AViewIsResampledLikeAPictureOfItsOwn) {
    const Image image = photo(200, 150);
    const PixelView part = image.view().cut(17, 9, 120, 101);
    EXPECT_TRUE(same(resampled(part, 37, 41), resampled(Image::copyOf(part).view(), 37, 41)));
}

TEST(Resampled, RefusesEmptyPicturesAndSizes) {
    const Image image = photo(4, 4);
    EXPECT_THROW(resampled({}, 5, 5), Error);
    EXPECT_THROW(resampled(image.view(), 0, 5), Error);
    EXPECT_THROW(resampled(image.view(), 5, -1), Error);
}

} // namespace veldara::test
