// The small picture that comes with the pieces of a JPEG: the means of the photo's pixels.
#include "platform/error.h"
#include "sheets/jpeg_cutting.h"

#include <algorithm>
#include <cmath>

namespace veldara::test {

namespace {

using namespace std::chrono_literals;

// Brighter to the right in one colour and to the bottom in another one, with stripes that a pixel
// of the small picture does not see.
Image slopes(int width, int height) {
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.row(y)[3 * x] = static_cast<std::uint8_t>(20 + 215 * x / width);
            image.row(y)[3 * x + 1] = static_cast<std::uint8_t>(20 + 215 * y / height);
            image.row(y)[3 * x + 2] = static_cast<std::uint8_t>(90 + 10 * ((x + y) % 2));
        }
    }
    return image;
}

// The mean of the share of the area that each pixel stands for, parts of pixels included.
Image meansOf(const Image& picture, const PixelRectangle& area, const SmallSize& size) {
    const auto share = [](int pixel, int small, int length, int small_count) {
        const double from = static_cast<double>(small) * length / small_count;
        const double to = static_cast<double>(small + 1) * length / small_count;
        return std::max(0.0, std::min(pixel + 1.0, to) - std::max<double>(pixel, from));
    };
    Image small(size.width, size.height);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            for (int c = 0; c < 3; ++c) {
                double sum = 0;
                double weight = 0;
                for (int row = 0; row < area.height; ++row) {
                    const double down = share(row, y, area.height, size.height);
                    for (int column = 0; down > 0 && column < area.width; ++column) {
                        const double part = down * share(column, x, area.width, size.width);
                        sum += part * picture.row(area.top + row)[3 * (area.left + column) + c];
                        weight += part;
                    }
                }
                small.row(y)[3 * x + c] = static_cast<std::uint8_t>(std::lround(sum / weight));
            }
        }
    }
    return small;
}

Image smallOf(JpegCutter& cutter) {
    for (;;) {
        if (std::optional<Image> small = cutter.small(1s)) {
            return std::move(*small);
        }
    }
}

int farthest(const Image& one, const Image& other) {
    int most = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int i = 0; i < 3 * one.width(); ++i) {
            most = std::max(most, std::abs(one.row(y)[i] - other.row(y)[i]));
        }
    }
    return most;
}

void expectMeans(const Bytes& file, const std::vector<PixelRectangle>& wanted,
                 const PixelRectangle& area, const SmallSize& size) {
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    ASSERT_TRUE(cutter->wantSmall(area, size));
    cutter->start(wanted, 2);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        cutter->next();
    }
    const Image small = smallOf(*cutter);
    ASSERT_EQ(small.width(), size.width);
    ASSERT_EQ(small.height(), size.height);
    EXPECT_LE(farthest(small, meansOf(decodedPicture(file), area, size)), 4);
}

class AnyJpegKind : public testing::TestWithParam<JpegKind> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(JpegMiniature, AnyJpegKind, testing::ValuesIn(everyJpegKind()),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(AnyJpegKind, GivesAMiniatureUnlessItHasInks) {
    const Bytes file = makeJpeg(GetParam(), slopes(401, 290));
    const std::vector<PixelRectangle> sheets = sheetsOf(401, 290, 2, 2, 0);
    if (GetParam().components == 4) {
        EXPECT_FALSE(cutterOf(file)->wantSmall({0, 0, 401, 290}, {40, 29}));
        return;
    }
    expectMeans(file, sheets, {0, 0, 401, 290}, {20, 15});
    expectMeans(file, sheets, {33, 18, 320, 250}, {16, 13}); // begins and ends inside of blocks
}

TEST(JpegMiniature, IsMadeWhereNoSheetIs) {
    const Bytes file = makeJpeg({}, slopes(400, 300));
    expectMeans(file, {{0, 0, 90, 20}}, {0, 0, 400, 300}, {40, 30});
    expectMeans(file, {{0, 280, 90, 20}}, {0, 0, 400, 40}, {40, 4});
}

TEST(JpegMiniature, IsRefusedWhereBlocksAreTooLarge) {
    const Bytes file = makeJpeg({}, slopes(400, 300));
    EXPECT_TRUE(cutterOf(file)->wantSmall({0, 0, 400, 300}, {50, 37}));
    EXPECT_FALSE(cutterOf(file)->wantSmall({0, 0, 400, 300}, {51, 37}));
    EXPECT_FALSE(cutterOf(file)->wantSmall({0, 0, 400, 300}, {50, 38}));
}

TEST(JpegMiniature, OfADamagedPhotoIsAnError) {
    Bytes file = makeJpeg({}, slopes(400, 300));
    file.resize(file.size() / 2);
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    ASSERT_TRUE(cutter->wantSmall({0, 0, 400, 300}, {40, 30}));
    cutter->start({{0, 0, 50, 10}}, 2);
    EXPECT_THROW(
        {
            cutter->next();
            smallOf(*cutter);
        },
        Error);
}

} // namespace veldara::test
