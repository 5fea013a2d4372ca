#include "image/files.h"
#include "platform/error.h"

#include <cstring>
#include <utility>

namespace veldara::test {

TEST(PixelView, CutSharesThePixels) {
    const Image image = photo(20, 10);
    const PixelView part = image.view().cut(3, 4, 10, 5);
    EXPECT_EQ(part.width(), 10);
    EXPECT_EQ(part.height(), 5);
    EXPECT_EQ(part.row(0), image.row(4) + 9);
    const PixelView inner = part.cut(9, 4, 1, 1);
    EXPECT_EQ(inner.row(0), image.row(8) + 36);
}

TEST(PixelView, CutMustLieWithin) {
    Image image = photo(20, 10);
    EXPECT_NO_THROW(image.view().cut(0, 0, 20, 10));
    EXPECT_NO_THROW(image.view().cut(20, 10, 0, 0));
    EXPECT_THROW(image.view().cut(1, 0, 20, 10), Error);
    EXPECT_THROW(image.view().cut(0, 1, 20, 10), Error);
    EXPECT_THROW(image.view().cut(-1, 0, 2, 2), Error);
    EXPECT_THROW(image.view().cut(0, -1, 2, 2), Error);
    EXPECT_THROW(image.view().cut(0, 0, -1, 2), Error);
    EXPECT_THROW(image.view().cut(0x7FFFFFFF, 0, 0x7FFFFFFF, 2), Error);
    EXPECT_THROW(image.mutableView().cut(0, 0, 21, 1), Error);
}

TEST(Image, MovingLeavesAnEmptyPicture) {
    Image one = photo(5, 4);
    one.dotsPerInch = 72;
    one.colourProfile = {1, 2, 3};
    const Image copy = Image::copyOf(one.view());
    Image two = std::move(one);
    EXPECT_TRUE(same(two, copy));
    EXPECT_EQ(two.dotsPerInch, 72);
    EXPECT_EQ(two.colourProfile.size(), 3U);
    // NOLINTBEGIN: the state after the move is what is tested
    EXPECT_TRUE(one.empty());
    EXPECT_EQ(one.height(), 0);
    EXPECT_EQ(one.dotsPerInch, 0);
    EXPECT_TRUE(one.colourProfile.empty());
    // NOLINTEND
    Image three;
    three = std::move(two);
    EXPECT_TRUE(same(three, copy));
    EXPECT_TRUE(two.empty()); // NOLINT
}

TEST(Image, FilledWithOneColour) {
    const Image image = Image::filled(7, 5, 1, 2, 3);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            EXPECT_EQ(0, std::memcmp(image.row(y) + std::ptrdiff_t{3} * x, "\1\2\3", 3));
        }
    }
}

TEST(Image, CopyOfACutIsContiguous) {
    const Image image = photo(20, 10);
    const Image copy = Image::copyOf(image.view().cut(3, 4, 10, 5));
    EXPECT_EQ(copy.byteCount(), 150U);
    EXPECT_TRUE(same(copy.view(), image.view().cut(3, 4, 10, 5)));
}

TEST(Image, RefusesImpossibleSizes) {
    EXPECT_THROW(Image(0, 5), Error);
    EXPECT_THROW(Image(5, 0), Error);
    EXPECT_THROW(Image(-5, 5), Error);
    EXPECT_THROW(Image(0x7FFFFFFF, 0x7FFFFFFF), Error);
}

TEST(Image, RowsBeyondFourGigabytesHaveTheirOwnPlace) {
    // The memory is only claimed; two rows of it are touched.
    Image image(40000, 40000);
    image.row(0)[0] = 1;
    image.row(39999)[119999] = 2;
    EXPECT_EQ(image.byteCount(), std::size_t{4'800'000'000});
    EXPECT_EQ(image.view().row(39999) - image.view().row(0), std::ptrdiff_t{4'799'880'000});
    EXPECT_EQ(image.row(0)[0], 1);
}

} // namespace veldara::test
