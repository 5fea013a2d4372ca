#include "image/files.h"
#include "platform/image/colour.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace veldara::test {

namespace {

struct BmpKind {
    std::uint32_t headerSize = 40;
    unsigned bits = 24;
    std::uint32_t compression = 0;
    bool topDown = false;
    std::array<std::uint32_t, 4> masks{};
    std::vector<std::array<std::uint8_t, 3>> palette; // RGB
    std::int32_t perMetre = 0;
    Bytes profile;
};

// A file of that kind around rows that are already in their stored form and order.
Bytes bmpFile(const BmpKind& kind, std::int32_t width, std::int32_t height, const Bytes& pixels) {
    Bytes info;
    put32(info, kind.headerSize);
    if (kind.headerSize == 12) {
        put16(info, static_cast<unsigned>(width));
        put16(info, static_cast<unsigned>(height));
        put16(info, 1);
        put16(info, kind.bits);
    } else {
        put32(info, static_cast<std::uint32_t>(width));
        put32(info, static_cast<std::uint32_t>(kind.topDown ? -height : height));
        put16(info, 1);
        put16(info, kind.bits);
    }
    if (kind.headerSize >= 40) {
        put32(info, kind.compression);
        put32(info, static_cast<std::uint32_t>(pixels.size()));
        put32(info, static_cast<std::uint32_t>(kind.perMetre));
        put32(info, static_cast<std::uint32_t>(kind.perMetre));
        put32(info, static_cast<std::uint32_t>(kind.palette.size()));
        put32(info, 0);
    }
    const bool masked = kind.compression == 3 || kind.compression == 6;
    if (kind.headerSize >= 52 && kind.headerSize != 64) {
        for (std::size_t i = 0; i < (kind.headerSize >= 56 ? 4U : 3U); ++i) {
            put32(info, kind.masks[i]);
        }
    }
    info.resize(kind.headerSize);
    if (kind.headerSize == 40 && masked) {
        for (std::size_t i = 0; i < (kind.compression == 6 ? 4U : 3U); ++i) {
            put32(info, kind.masks[i]);
        }
    }
    for (const auto& [red, green, blue] : kind.palette) {
        append(info, {blue, green, red});
        if (kind.headerSize != 12) {
            info.push_back(0);
        }
    }
    const auto pixelsAt = static_cast<std::uint32_t>(14 + info.size());
    if (!kind.profile.empty()) {
        const std::uint32_t at = pixelsAt - 14 + static_cast<std::uint32_t>(pixels.size());
        Bytes fields;
        put32(fields, 0x4D424544);
        std::copy(fields.begin(), fields.end(), info.begin() + 56);
        fields.clear();
        put32(fields, at);
        put32(fields, static_cast<std::uint32_t>(kind.profile.size()));
        std::copy(fields.begin(), fields.end(), info.begin() + 112);
    }
    Bytes file = {'B', 'M'};
    put32(file, pixelsAt + static_cast<std::uint32_t>(pixels.size()));
    put32(file, 0);
    put32(file, pixelsAt);
    append(file, info);
    append(file, pixels);
    append(file, kind.profile);
    return file;
}

std::vector<std::array<std::uint8_t, 3>> somePalette(std::size_t entries) {
    std::vector<std::array<std::uint8_t, 3>> palette;
    for (std::size_t i = 0; i < entries; ++i) {
        palette.push_back({static_cast<std::uint8_t>(i * 37 + 11),
                           static_cast<std::uint8_t>(255 - i * 91),
                           static_cast<std::uint8_t>(i * 149 + 70)});
    }
    return palette;
}

// Index of a pixel of the test pictures.
unsigned indexAt(int x, int y, std::size_t entries) {
    return static_cast<unsigned>(x * 7 + y * 3 + x * y) % static_cast<unsigned>(entries);
}

Bytes packedIndices(int width, int height, unsigned bits, std::size_t entries, bool topDown) {
    Bytes rows;
    const auto rowSize = (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
    for (int i = 0; i < height; ++i) {
        const int y = topDown ? i : height - 1 - i;
        Bytes row(rowSize);
        for (int x = 0; x < width; ++x) {
            const auto at = static_cast<unsigned>(x) * bits;
            row[at / 8] = static_cast<std::uint8_t>(row[at / 8] | indexAt(x, y, entries)
                                                                      << (8 - bits - at % 8));
        }
        append(rows, row);
    }
    return rows;
}

Image indexedPicture(const BmpKind& kind, int width, int height, std::size_t entries) {
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto& colour = kind.palette[indexAt(x, y, entries)];
            std::memcpy(image.row(y) + std::ptrdiff_t{3} * x, colour.data(), 3);
        }
    }
    return image;
}

Bytes rowsOf24(const Image& image, bool topDown) {
    Bytes rows;
    for (int i = 0; i < image.height(); ++i) {
        const int y = topDown ? i : image.height() - 1 - i;
        for (int x = 0; x < image.width(); ++x) {
            const std::uint8_t* p = image.row(y) + std::ptrdiff_t{3} * x;
            append(rows, {p[2], p[1], p[0]});
        }
        rows.resize((rows.size() + 3) / 4 * 4);
    }
    return rows;
}

// Rows of 16- or 32-bit pixels, bottom-up.
template <class PixelAt>
Bytes rowsOfPixels(int width, int height, unsigned bits, PixelAt pixelAt) {
    Bytes rows;
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = pixelAt(x, y);
            bits == 16 ? put16(rows, pixel) : put32(rows, pixel);
        }
        rows.resize((rows.size() + 3) / 4 * 4);
    }
    return rows;
}

Bytes paletteFile(unsigned bits, int width, int height, bool topDown = false,
                  std::uint32_t headerSize = 40) {
    BmpKind kind;
    kind.bits = bits;
    kind.headerSize = headerSize;
    kind.topDown = topDown;
    kind.palette = somePalette(std::size_t{1} << bits);
    return bmpFile(kind, width, height,
                   packedIndices(width, height, bits, kind.palette.size(), topDown));
}

// Loads a picture whose palette has that many entries, of which the pixels use the first ones.
// Returns its file.
Bytes expectPalette(std::size_t entries, std::size_t used) {
    BmpKind kind;
    kind.bits = 8;
    kind.palette = somePalette(entries);
    Bytes file = bmpFile(kind, 20, 4, packedIndices(20, 4, 8, used, false));
    EXPECT_TRUE(same(load(file), indexedPicture(kind, 20, 4, used)));
    return file;
}

} // namespace

TEST(Bmp, PaletteKinds) {
    for (const unsigned bits : {1U, 4U, 8U}) {
        for (const std::uint32_t headerSize : {12U, 40U, 64U, 108U, 124U}) {
            for (const int width : {1, 2, 7, 8, 9, 31, 32, 33}) {
                BmpKind kind;
                kind.palette = somePalette(std::size_t{1} << bits);
                const Bytes file = paletteFile(bits, width, 5, false, headerSize);
                EXPECT_TRUE(same(load(file), indexedPicture(kind, width, 5, kind.palette.size())))
                    << bits << " bits, header " << headerSize << ", width " << width;
            }
        }
    }
}

TEST(Bmp, TopDownRows) {
    BmpKind kind;
    kind.palette = somePalette(16);
    EXPECT_TRUE(same(load(paletteFile(4, 9, 5, true)), indexedPicture(kind, 9, 5, 16)));
    const Image picture = photo(10, 6);
    kind = {};
    kind.topDown = true;
    EXPECT_TRUE(same(load(bmpFile(kind, 10, 6, rowsOf24(picture, true))), picture));
}

TEST(Bmp, TrueColourOfEveryHeader) {
    for (const std::uint32_t headerSize : {12U, 16U, 40U, 52U, 56U, 64U, 108U, 124U}) {
        for (const int width : {1, 2, 3, 4, 5, 100}) {
            BmpKind kind;
            kind.headerSize = headerSize;
            const Image picture = photo(width, 7);
            EXPECT_TRUE(same(load(bmpFile(kind, width, 7, rowsOf24(picture, false))), picture))
                << headerSize;
        }
    }
}

TEST(Bmp, ManyRowsAreReadInBlocks) {
    const Image picture = photo(500, 700);
    EXPECT_TRUE(same(load(bmpFile({}, 500, 700, rowsOf24(picture, false))), picture));
}

TEST(Bmp, APaletteWithMoreColoursThanAPixelCanName) {
    expectPalette(5000, 256);
}

TEST(Bmp, APaletteWithFewerColours) {
    const Bytes file = expectPalette(5, 5);
    // An index behind the palette's end is black.
    Bytes beyond = file;
    beyond.back() = 200;
    const Image black = load(beyond);
    EXPECT_EQ(0, std::memcmp(black.row(0) + 3 * 19, "\0\0\0", 3));
    Image rest = load(file);
    std::fill_n(rest.row(0) + 3 * 19, 3, std::uint8_t{0});
    EXPECT_TRUE(same(black, rest));
}

TEST(Bmp, SixteenBits) {
    const auto pixelAt = [](int x, int y) {
        return static_cast<std::uint32_t>((x * 2741 + y * 977) & 0x7FFF);
    };
    BmpKind kind;
    kind.bits = 16;
    const Image image = load(bmpFile(kind, 13, 6, rowsOfPixels(13, 6, 16, pixelAt)));
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 13; ++x) {
            const std::uint32_t pixel = pixelAt(x, y);
            const std::uint8_t* p = image.row(y) + std::ptrdiff_t{3} * x;
            EXPECT_EQ(p[0], ((pixel >> 10) * 255 + 15) / 31);
            EXPECT_EQ(p[1], ((pixel >> 5 & 31) * 255 + 15) / 31);
            EXPECT_EQ(p[2], ((pixel & 31) * 255 + 15) / 31);
        }
    }
}

TEST(Bmp, BitFields) {
    for (const std::uint32_t headerSize : {40U, 52U, 56U, 108U, 124U}) {
        BmpKind kind;
        kind.headerSize = headerSize;
        kind.compression = 3;
        kind.bits = 16;
        kind.masks = {0xF800, 0x07E0, 0x001F, 0};
        const Bytes rows16 = rowsOfPixels(3, 1, 16, [](int x, int) {
            return std::array{0xF800U, 0x07E0U, 0x001FU}[static_cast<std::size_t>(x)];
        });
        const Image primaries = load(bmpFile(kind, 3, 1, rows16));
        EXPECT_EQ(0, std::memcmp(primaries.row(0), "\xFF\0\0\0\xFF\0\0\0\xFF", 9));
        kind.bits = 32;
        kind.masks = {0x3FF00000, 0x000FFC00, 0x000003FF, 0}; // ten bits each
        const Bytes rows32 =
            rowsOfPixels(1, 1, 32, [](int, int) { return 1023U << 20 | 512U << 10 | 3U; });
        const Image wide = load(bmpFile(kind, 1, 1, rows32));
        EXPECT_EQ(wide.row(0)[0], 255);
        EXPECT_EQ(wide.row(0)[1], 128);
        EXPECT_EQ(wide.row(0)[2], 1);
    }
}

TEST(Bmp, ThirtyTwoBitsWithoutMasksHaveNoAlpha) {
    BmpKind kind;
    kind.bits = 32;
    const Image image =
        load(bmpFile(kind, 1, 1, rowsOfPixels(1, 1, 32, [](int, int) { return 0x00102030U; })));
    EXPECT_EQ(0, std::memcmp(image.row(0), "\x10\x20\x30", 3));
}

TEST(Bmp, AlphaIsLaidOnWhite) {
    for (const auto& [headerSize, compression] :
         {std::pair{40U, 6U}, {56U, 3U}, {108U, 3U}, {124U, 3U}}) {
        BmpKind kind;
        kind.headerSize = headerSize;
        kind.compression = compression;
        kind.bits = 32;
        kind.masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
        const Bytes rows = rowsOfPixels(3, 1, 32, [](int x, int) {
            return std::array{0xFF102030U, 0x00102030U, 0x80102030U}[static_cast<std::size_t>(x)];
        });
        const Image image = load(bmpFile(kind, 3, 1, rows));
        EXPECT_EQ(0, std::memcmp(image.row(0), "\x10\x20\x30\xFF\xFF\xFF", 6));
        EXPECT_EQ(image.row(0)[6], (0x10 * 128 + 255 * 127 + 127) / 255);
    }
}

TEST(Bmp, RunLength8) {
    BmpKind kind;
    kind.bits = 8;
    kind.compression = 1;
    kind.palette = somePalette(256);
    // Bottom row: 5 of colour 9, a literal 1 2 3. Top row: a jump of two, then colour 7 to the end.
    const Bytes code = {5, 9, 0, 3, 1, 2, 3, 0, 0, 0, 0, 2, 2, 0, 6, 7, 0, 0, 0, 1};
    Bytes fixed = {5, 9, 0, 3, 1, 2, 3, 0, 0, 0, 0, 2, 2, 0, 6, 7, 0, 1};
    for (const Bytes& pixels : {code, fixed}) {
        const Image image = load(bmpFile(kind, 8, 2, pixels));
        const unsigned top[] = {0, 0, 7, 7, 7, 7, 7, 7};
        const unsigned bottom[] = {9, 9, 9, 9, 9, 1, 2, 3};
        for (std::size_t x = 0; x < 8; ++x) {
            EXPECT_EQ(0, std::memcmp(image.row(0) + 3 * x, kind.palette[top[x]].data(), 3));
            EXPECT_EQ(0, std::memcmp(image.row(1) + 3 * x, kind.palette[bottom[x]].data(), 3));
        }
    }
}

TEST(Bmp, RunLength4) {
    BmpKind kind;
    kind.bits = 4;
    kind.compression = 2;
    kind.palette = somePalette(16);
    // A run of alternating colours, then five literal ones, padded to a word.
    const Bytes code = {3, 0xA5, 0, 5, 0x12, 0x34, 0x50, 0, 0, 1};
    const Image image = load(bmpFile(kind, 8, 1, code));
    const unsigned expected[] = {10, 5, 10, 1, 2, 3, 4, 5};
    for (std::size_t x = 0; x < 8; ++x) {
        EXPECT_EQ(0, std::memcmp(image.row(0) + 3 * x, kind.palette[expected[x]].data(), 3));
    }
}

TEST(Bmp, RunLengthCodeThatIsWrongOrEndsEarlyIsRefused) {
    BmpKind kind;
    kind.bits = 8;
    kind.compression = 1;
    kind.palette = somePalette(256);
    const auto complaint = [&](const Bytes& code) {
        return complaintOf(bmpFile(kind, 4, 2, code));
    };
    const std::string damaged =
        "Could not read \"picture\": its picture data is damaged or incomplete.";
    EXPECT_EQ(complaint({4, 1, 0, 0, 4, 2, 0, 1}), "");
    EXPECT_EQ(complaint({4, 1, 0, 0, 4, 2}), "") << "only the end code is missing";
    EXPECT_EQ(complaint({4, 1, 0, 0, 3, 2}), damaged);
    EXPECT_EQ(complaint({4, 1, 0, 0, 0, 1}), damaged) << "the top row is missing";
    EXPECT_EQ(complaint({4, 1, 0, 1}), damaged) << "the bottom row does not even end";
    EXPECT_EQ(complaint({0, 1, 0, 0}), damaged);
    EXPECT_EQ(complaint({5, 1, 0, 0, 4, 2, 0, 1}), damaged) << "a run over the edge";
    EXPECT_EQ(complaint({4, 1, 0, 0, 4, 2, 0, 0, 4, 3, 0, 1}), damaged) << "a third row";
    EXPECT_EQ(complaint({4, 1, 0, 2, 0, 200, 1, 2, 0, 1}), damaged) << "a jump out of the picture";
}

TEST(Bmp, Resolution) {
    BmpKind kind;
    kind.perMetre = 11811;
    EXPECT_EQ(headerOf(bmpFile(kind, 1, 1, {1, 2, 3, 0})).dotsPerInch, 300);
    kind.perMetre = -5;
    EXPECT_EQ(headerOf(bmpFile(kind, 1, 1, {1, 2, 3, 0})).dotsPerInch, 0);
}

TEST(Bmp, ProfileOfAVersion5Header) {
    BmpKind kind;
    kind.headerSize = 124;
    kind.profile = rgbProfile();
    EXPECT_EQ(load(bmpFile(kind, 1, 1, {1, 2, 3, 0})).colourProfile, kind.profile);
    kind.profile = greyProfile();
    const Bytes colour = bmpFile(kind, 1, 1, {1, 2, 3, 0});
    EXPECT_TRUE(load(colour).colourProfile.empty());
    EXPECT_FALSE(reader(colour)->greyProfile());
    kind.bits = 8;
    kind.palette = {{0, 0, 0}, {200, 200, 200}};
    const Bytes grey = bmpFile(kind, 1, 1, {1, 0, 0, 0});
    EXPECT_EQ(profileKind(load(grey).colourProfile), ProfileKind::rgb);
    EXPECT_EQ(reader(grey)->greyProfile(), kind.profile);
    for (const std::array<std::uint8_t, 3>& tinted :
         {std::array<std::uint8_t, 3>{200, 200, 201}, {200, 201, 200}, {201, 200, 200}}) {
        kind.palette = {{0, 0, 0}, tinted};
        EXPECT_FALSE(reader(bmpFile(kind, 1, 1, {1, 0, 0, 0}))->greyProfile());
    }
}

TEST(Bmp, StreamsUnlessRunLengthCoded) {
    EXPECT_TRUE(reader(paletteFile(8, 9, 9))->streams());
    BmpKind kind;
    kind.bits = 8;
    kind.compression = 1;
    kind.palette = somePalette(2);
    const Bytes file = bmpFile(kind, 1, 1, {1, 1, 0, 1});
    EXPECT_FALSE(reader(file)->streams());
}

TEST(Bmp, TheLastRowMayLackItsPadding) {
    const Image picture = photo(3, 4); // nine bytes and three of padding
    Bytes file = bmpFile({}, 3, 4, rowsOf24(picture, false));
    file.resize(file.size() - 3);
    EXPECT_TRUE(same(load(file), picture));
    file.pop_back();
    EXPECT_EQ(complaintOf(file), "Could not read \"picture\": the file ends before its last row.");
}

TEST(Bmp, HeadersThatLieAreRefused) {
    const Bytes rows = rowsOf24(photo(8, 8), false);
    const Bytes good = bmpFile({}, 8, 8, rows);
    EXPECT_EQ(complaintOf(good), "");
    const auto complaintWith = [&](std::size_t at, std::uint32_t value) {
        Bytes file = good;
        Bytes number;
        put32(number, value);
        std::copy(number.begin(), number.end(), file.begin() + static_cast<std::ptrdiff_t>(at));
        return complaintOf(file);
    };
    const std::string damaged = "Could not read \"picture\": its header is damaged.";
    EXPECT_EQ(complaintWith(18, 0), damaged);
    EXPECT_EQ(complaintWith(18, 0x80000000), damaged);
    EXPECT_EQ(complaintWith(22, 0), damaged);
    EXPECT_EQ(complaintWith(22, 0x80000000), damaged);
    EXPECT_EQ(complaintWith(14, 41), damaged);
    EXPECT_EQ(complaintWith(10, 0), damaged);
    EXPECT_EQ(complaintWith(10, 53), damaged);
    EXPECT_EQ(complaintWith(18, 0x7FFFFFFF),
              "Could not read \"picture\": the file is too small to hold the 2147483647 x 8 pixels "
              "that it claims.");
    EXPECT_EQ(complaintWith(30, 4),
              "Could not read \"picture\": its kind of bitmap is not supported (24 bits, "
              "compression 4).");
    EXPECT_EQ(complaintWith(28, 7),
              "Could not read \"picture\": its kind of bitmap is not supported (7 bits, "
              "compression 0).");
}

TEST(Bmp, MasksThatLieAreRefused) {
    const std::string damaged = "Could not read \"picture\": its header is damaged.";
    BmpKind kind;
    kind.bits = 32;
    kind.compression = 3;
    kind.masks = {0xFF0000, 0xFF00, 0xFD, 0}; // a hole
    EXPECT_EQ(complaintOf(bmpFile(kind, 1, 1, {1, 2, 3, 4})), damaged);
    kind.bits = 16;
    kind.masks = {0x1F800, 0x7E0, 0x1F, 0}; // beyond the pixel
    EXPECT_EQ(complaintOf(bmpFile(kind, 1, 1, {1, 2, 3, 4})), damaged);
    Bytes file = bmpFile(kind, 1, 1, {});
    file.resize(14 + 40 + 11); // within the third mask
    EXPECT_NE(complaintOf(file), "");
}

TEST(Bmp, AProfileThatIsNotWholeIsDropped) {
    BmpKind kind;
    kind.headerSize = 124;
    kind.profile = rgbProfile();
    Bytes file = bmpFile(kind, 1, 1, {1, 2, 3, 0});
    file.pop_back();
    const Image loaded = load(file);
    EXPECT_TRUE(loaded.colourProfile.empty());
    EXPECT_EQ(loaded.width(), 1);
}

TEST(Bmp, TruncationsAreRefusedOrWhole) {
    const Bytes file = bmpFile({}, 9, 5, rowsOf24(photo(9, 5), false));
    EXPECT_EQ(refusedTruncations(file), file.size() - 1);
    refusedTruncations(paletteFile(4, 9, 5));
    BmpKind kind;
    kind.bits = 8;
    kind.compression = 1;
    kind.palette = somePalette(256);
    const Bytes runs = bmpFile(kind, 8, 2, {5, 9, 0, 3, 1, 2, 3, 0, 0, 0, 2, 3, 6, 7, 0, 1});
    EXPECT_EQ(refusedTruncations(runs), runs.size() - 2);
}

TEST(Bmp, SurvivesDamage) {
    expectSurvivesDamage(bmpFile({}, 9, 5, rowsOf24(photo(9, 5), false)), 2000);
    expectSurvivesDamage(paletteFile(8, 9, 5), 1000);
    BmpKind kind;
    kind.bits = 4;
    kind.compression = 2;
    kind.palette = somePalette(16);
    expectSurvivesDamage(bmpFile(kind, 8, 1, {3, 0xA5, 0, 5, 0x12, 0x34, 0x50, 0, 0, 1}), 2000);
}

} // namespace veldara::test
