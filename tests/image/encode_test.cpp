#include "image/files.h"
#include "image/jpeg_files.h"
#include "platform/error.h"
#include "platform/image/colour.h"

#include <algorithm>

namespace veldara::test {

namespace {

constexpr TileFormat everyType[] = {TileFormat::jpeg, TileFormat::tiff, TileFormat::bmp};

} // namespace

TEST(Encode, TiffAndBmpComeBackExactly) {
    for (const auto& [width, height] :
         {std::pair{1, 1}, {2, 3}, {3, 2}, {100, 1}, {1, 100}, {333, 217}, {1200, 500}}) {
        const Image image = photo(width, height);
        for (const TileFormat type : {TileFormat::tiff, TileFormat::bmp}) {
            const Bytes file = encodeImage(image.view(), type, 300, {});
            EXPECT_EQ(headerOf(file).format->tileFormat, type);
            EXPECT_TRUE(same(load(file), image)) << width << " x " << height;
        }
    }
}

TEST(Encode, NoiseComesBackExactly) {
    Image image(500, 400);
    const Bytes bytes = noise(image.byteCount());
    std::copy(bytes.begin(), bytes.end(), image.row(0));
    for (const TileFormat type : {TileFormat::tiff, TileFormat::bmp}) {
        EXPECT_TRUE(same(load(encodeImage(image.view(), type, 300, {})), image));
    }
}

TEST(Encode, JpegComesBackClose) {
    const Image image = photo(333, 217);
    const Bytes file = encodeImage(image.view(), TileFormat::jpeg, 300, {});
    EXPECT_EQ(headerOf(file).format->name, "JPEG");
    EXPECT_LE(distance(load(file), image), 30);
}

TEST(Encode, JpegHasQuality95AndFullColour) {
    // The library's own file of that kind has the same tables and the same pixels.
    const Image image = photo(64, 48);
    JpegKind kind;
    kind.quality = 95;
    EXPECT_TRUE(same(load(encodeImage(image.view(), TileFormat::jpeg, 0, {})),
                     load(makeJpeg(kind, image))));
}

TEST(Encode, AViewIsEncodedLikeAPictureOfItsOwn) {
    const Image image = photo(200, 150);
    const PixelView part = image.view().cut(17, 9, 121, 101);
    const Image copy = Image::copyOf(part);
    for (const TileFormat type : everyType) {
        EXPECT_EQ(encodeImage(part, type, 150, {}), encodeImage(copy.view(), type, 150, {}));
    }
}

TEST(Encode, ResolutionReadsBack) {
    const Image image = photo(9, 9);
    for (const TileFormat type : everyType) {
        for (const int dotsPerInch :
             {0, 2, 3, 72, 96, 127, 128, 150, 151, 254, 299, 300, 333, 600, 1200, 4800}) {
            EXPECT_EQ(headerOf(encodeImage(image.view(), type, dotsPerInch, {})).dotsPerInch,
                      dotsPerInch);
        }
    }
}

TEST(Encode, TheProfileTravels) {
    const Image image = photo(30, 20);
    for (const TileFormat type : everyType) {
        const Bytes file = encodeImage(image.view(), type, 300, rgbProfile());
        EXPECT_EQ(load(file).colourProfile, rgbProfile());
        EXPECT_EQ(reader(file)->colourProfile(), rgbProfile());
        EXPECT_TRUE(load(encodeImage(image.view(), type, 300, {})).colourProfile.empty());
    }
}

TEST(Encode, ALongProfileTravels) {
    // Longer than one JPEG segment can be.
    Bytes profile = rgbProfile();
    const Bytes tail = noise(200000);
    append(profile, tail);
    profile[0] = 0, profile[1] = 0, profile[2] = 0;
    const auto size = static_cast<std::uint32_t>(profile.size());
    for (std::size_t i = 0; i < 4; ++i) {
        profile[i] = static_cast<std::uint8_t>(size >> (24 - 8 * i));
    }
    for (const TileFormat type : everyType) {
        EXPECT_EQ(load(encodeImage(photo(9, 9).view(), type, 300, profile)).colourProfile, profile);
    }
}

TEST(Encode, TheSamePixelsGiveTheSameBytes) {
    const Image image = photo(50, 40);
    for (const TileFormat type : everyType) {
        EXPECT_EQ(encodeImage(image.view(), type, 300, rgbProfile()),
                  encodeImage(image.view(), type, 300, rgbProfile()));
    }
}

TEST(Encode, RowsInBandsGiveTheSameFileAsTheWhole) {
    const Image image = photo(333, 270);
    for (const TileFormat type : everyType) {
        for (const int bandHeight : {1, 7, 64, 269}) {
            const auto encoder = openRowEncoder(333, 270, type, 300, rgbProfile());
            for (int y = 0; y < 270; y += bandHeight) {
                encoder->writeRows(image.view().cut(0, y, 333, std::min(bandHeight, 270 - y)));
            }
            EXPECT_EQ(encoder->finish(), encodeImage(image.view(), type, 300, rgbProfile()));
        }
    }
}

TEST(Encode, RowsThatWereNotAnnouncedAreRefused) {
    const Image image = photo(20, 10);
    for (const TileFormat type : everyType) {
        const auto encoder = openRowEncoder(20, 10, type, 300, {});
        EXPECT_THROW(encoder->writeRows(image.view().cut(0, 0, 19, 5)), Error);
        encoder->writeRows(image.view().cut(0, 0, 20, 6));
        EXPECT_THROW(encoder->finish(), Error);
        EXPECT_THROW(encoder->writeRows(image.view()), Error);
    }
}

TEST(Encode, AStripTallerThanWideAndARowLargerThanAStrip) {
    for (const auto& [width, height] : {std::pair{1, 90000}, {3, 40000}, {100000, 3}}) {
        const Image image = photo(width, height);
        EXPECT_TRUE(same(load(encodeImage(image.view(), TileFormat::tiff, 300, {})), image));
    }
}

TEST(Encode, WhatAFormatCannotHoldIsRefused) {
    EXPECT_THROW(encodeImage({}, TileFormat::bmp, 300, {}), Error);
    // A row that is read again and again: the view claims 66,000 rows of the same three bytes.
    const std::uint8_t pixel[3] = {1, 2, 3};
    const PixelView high(pixel, 1, 66000, 0);
    try {
        encodeImage(high, TileFormat::jpeg, 300, {});
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(std::string(error.what()).find("Could not encode the picture: "), 0U);
    }
    EXPECT_NO_THROW(encodeImage(high, TileFormat::tiff, 300, {}));
    EXPECT_THROW(encodeImage({pixel, 1, 0x7FFFFFFF, 0}, TileFormat::bmp, 300, {}), Error);
}

} // namespace veldara::test
