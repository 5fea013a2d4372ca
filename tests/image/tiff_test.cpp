#include "image/tiff_files.h"
#include "platform/image/colour.h"

#include <algorithm>

namespace veldara::test {

namespace {

constexpr int packBits = 32773;
constexpr int lzw = 5;
constexpr int deflate = 8;
constexpr int oldDeflate = 32946;
constexpr int jpeg = 7;

void expectExact(const TiffKind& kind, int width = 53, int height = 31) {
    const TiffFile file = makeTiff(kind, width, height);
    EXPECT_TRUE(same(load(file.bytes), file.expected)) << kind.name;
    const ImageHeader header = headerOf(file.bytes);
    EXPECT_EQ(header.format->name, "TIFF");
    EXPECT_EQ(header.width, width);
    EXPECT_EQ(header.height, height);
}

} // namespace

TEST(Tiff, EveryKindOfSampleHasItsDefinedPixels) {
    for (const TiffKind& kind : everyTiffSampleKind()) {
        expectExact(kind);
    }
}

TEST(Tiff, SmallestSizes) {
    for (const TiffKind& kind : everyTiffSampleKind()) {
        expectExact(kind, 1, 1);
        expectExact(kind, 9, 1);
        expectExact(kind, 1, 9);
    }
}

TEST(Tiff, BothByteOrdersAndWideOffsets) {
    for (TiffKind kind : everyTiffSampleKind()) {
        kind.bigEndian = true;
        expectExact(kind);
        kind.big = true;
        expectExact(kind);
        kind.bigEndian = false;
        expectExact(kind);
    }
}

TEST(Tiff, LosslessCompressionsInStripsAndTiles) {
    for (const int compression : {packBits, lzw, deflate, oldDeflate}) {
        for (TiffKind kind : everyTiffSampleKind()) {
            kind.compression = compression;
            kind.name += " compression " + std::to_string(compression);
            expectExact(kind);
            if (kind.photometric != 6) {
                kind.tileSide = 16;
                kind.name += " tiles";
                expectExact(kind);
            }
        }
    }
}

TEST(Tiff, TilesUncompressed) {
    for (TiffKind kind : everyTiffSampleKind()) {
        kind.tileSide = 32;
        expectExact(kind, 70, 45);
    }
}

TEST(Tiff, OneStripOfAllRows) {
    for (TiffKind kind : everyTiffSampleKind()) {
        kind.rowsPerStrip = 31;
        expectExact(kind);
    }
}

TEST(Tiff, Predictors) {
    for (const int compression : {lzw, deflate}) {
        for (const char* name : {"rgb8", "rgb16", "grey8", "grey16", "inks8", "rgbAlpha16"}) {
            TiffKind kind = tiffKindNamed(name);
            kind.compression = compression;
            kind.predictor = 2;
            expectExact(kind);
            kind.bigEndian = true;
            expectExact(kind);
            kind.separate = kind.samples > 1;
            expectExact(kind);
        }
    }
}

TEST(Tiff, SeparatePlanes) {
    for (const char* name : {"rgb8", "rgb16", "rgbAlpha8", "rgbPremultiplied16", "inks8", "inks16",
                             "greyAlpha", "chroma11"}) {
        TiffKind kind = tiffKindNamed(name);
        kind.separate = true;
        expectExact(kind);
        kind.compression = lzw;
        expectExact(kind);
        kind.tileSide = 16;
        expectExact(kind);
    }
}

TEST(Tiff, FaxCompressions) {
    // Modified Huffman, group 3 of one and of two dimensions, group 4.
    const std::pair<int, unsigned> codes[] = {{2, 0}, {3, 0}, {3, 1}, {3, 4}, {4, 0}};
    for (const auto& [compression, options] : codes) {
        for (const char* name : {"bilevel", "bilevelInverted"}) {
            TiffKind kind = tiffKindNamed(name);
            kind.compression = compression;
            kind.faxOptions = options;
            kind.name += " fax " + std::to_string(compression);
            expectExact(kind);
            kind.rowsPerStrip = 31;
            expectExact(kind);
        }
    }
}

TEST(Tiff, JpegCompressionComesCloseToThePicture) {
    for (const char* name : {"rgb8", "grey8", "chroma11", "chroma22", "inks8"}) {
        for (const int tileSide : {0, 32}) {
            TiffKind kind = tiffKindNamed(name);
            kind.compression = jpeg;
            kind.tileSide = tileSide;
            kind.rowsPerStrip = 16;
            const TiffFile file = makeTiff(kind, 64, 48);
            const Image loaded = load(file.bytes);
            if (kind.across * kind.down == 1) {
                EXPECT_LT(distance(loaded, file.expected), 30) << name;
            } else { // where colours jump, neighbours that share them differ a lot
                EXPECT_LT(meanDistance(loaded, file.expected), 12) << name;
            }
        }
    }
}

TEST(Tiff, AStripTooLargeToHoldIsReadRowByRow) {
    // Above two megabytes a strip is decoded a row at a time.
    for (const char* name : {"rgb8", "rgb16", "inks8"}) {
        for (const int compression : {1, lzw, packBits}) {
            TiffKind kind = tiffKindNamed(name);
            kind.rowsPerStrip = 100000;
            kind.compression = compression;
            expectExact(kind, 800, 1000);
            kind.rowsPerStrip = 990;
            expectExact(kind, 800, 1000);
        }
    }
    TiffKind planes = tiffKindNamed("rgb8");
    planes.separate = true;
    planes.rowsPerStrip = 100000;
    planes.compression = lzw;
    expectExact(planes, 1500, 1450);
}

TEST(Tiff, PaletteOfAnOldWriterWithEmptyUpperHalves) {
    TiffKind kind = tiffKindNamed("palette8");
    TiffFile file = makeTiff(kind, 20, 20);
    // The colour map (tag 320, 768 short numbers v * 257): clear the doubled half of each.
    const Bytes entry = {0x40, 0x01, 3, 0, 0, 3, 0, 0};
    const auto found =
        std::search(file.bytes.begin(), file.bytes.end(), entry.begin(), entry.end());
    ASSERT_NE(found, file.bytes.end());
    const std::size_t map = found[8] | static_cast<std::size_t>(found[9]) << 8;
    for (std::size_t i = 0; i < 768; ++i) {
        file.bytes[map + 2 * i + 1] = 0;
    }
    EXPECT_TRUE(same(load(file.bytes), file.expected));
}

TEST(Tiff, OnlyTheFirstPageCounts) {
    const TiffFile one = makeTiff(tiffKindNamed("rgb8"), 20, 15);
    const TiffFile other = makeTiff(tiffKindNamed("grey8"), 33, 44);
    // The second file's directory is appended with all its positions moved; simpler and as good: a
    // next-page pointer that leads nowhere must not disturb the first page.
    Bytes file = one.bytes;
    const auto number = [&file](std::size_t at) { // of 16 bits
        return std::size_t{file.at(at)} | std::size_t{file.at(at + 1)} << 8U;
    };
    const std::size_t directory = number(4) | number(6) << 16U;
    const std::size_t entries = number(directory);
    file[directory + 2 + 12 * entries] = 8;
    append(file, other.bytes);
    EXPECT_TRUE(same(load(file), one.expected));
}

TEST(Tiff, ResolutionInInchesCentimetresOrNone) {
    TiffKind kind = tiffKindNamed("rgb8");
    EXPECT_EQ(headerOf(makeTiff(kind, 9, 9).bytes).dotsPerInch, 0);
    kind.resolution = 300;
    EXPECT_EQ(headerOf(makeTiff(kind, 9, 9).bytes).dotsPerInch, 300);
    kind.resolution = 118.11;
    kind.resolutionUnit = 3;
    EXPECT_EQ(headerOf(makeTiff(kind, 9, 9).bytes).dotsPerInch, 300);
    kind.resolutionUnit = 1;
    EXPECT_EQ(headerOf(makeTiff(kind, 9, 9).bytes).dotsPerInch, 0);
}

TEST(Tiff, SaysWhetherItIsStoredInGreys) {
    for (const char* name :
         {"bilevel", "bilevelInverted", "grey4", "grey8", "grey16", "greyAlpha"}) {
        const Bytes file = makeTiff(tiffKindNamed(name), 9, 9).bytes;
        EXPECT_EQ(reader(file)->greyProfile(), Bytes{}) << name;
    }
    for (const char* name : {"rgb8", "palette8", "inks8", "chroma11"}) {
        const Bytes file = makeTiff(tiffKindNamed(name), 9, 9).bytes;
        EXPECT_FALSE(reader(file)->greyProfile()) << name;
    }
}

TEST(Tiff, ProfileIsKept) {
    TiffKind kind = tiffKindNamed("rgb8");
    kind.profile = rgbProfile();
    EXPECT_EQ(load(makeTiff(kind, 9, 9).bytes).colourProfile, kind.profile);
    kind.profile = greyProfile();
    EXPECT_TRUE(load(makeTiff(kind, 9, 9).bytes).colourProfile.empty())
        << "a grey profile says nothing about RGB";
    TiffKind grey = tiffKindNamed("grey8");
    grey.profile = greyProfile();
    EXPECT_EQ(profileKind(load(makeTiff(grey, 9, 9).bytes).colourProfile), ProfileKind::rgb);
    for (const int orientation : {1, 2, 3, 6}) { // by rows, mirrored, and whole in memory
        grey.orientation = orientation;
        const Bytes file = makeTiff(grey, 9, 9).bytes;
        EXPECT_EQ(reader(file)->greyProfile(), grey.profile) << orientation;
    }
    TiffKind inks = tiffKindNamed("inks8");
    inks.profile = rgbProfile();
    EXPECT_TRUE(load(makeTiff(inks, 9, 9).bytes).colourProfile.empty());
}

TEST(Tiff, TruncationsAreRefusedOrWhole) {
    for (const char* name : {"rgb8", "bilevel", "palette4", "grey16"}) {
        for (const int compression : {1, packBits, lzw, deflate}) {
            TiffKind kind = tiffKindNamed(name);
            kind.compression = compression;
            EXPECT_GT(refusedTruncations(makeTiff(kind, 11, 9).bytes), 0U);
        }
    }
    TiffKind fax = tiffKindNamed("bilevel");
    fax.compression = 4;
    refusedTruncations(makeTiff(fax, 31, 9).bytes);
    TiffKind photoKind = tiffKindNamed("rgb8");
    photoKind.compression = jpeg;
    photoKind.rowsPerStrip = 16;
    refusedTruncations(makeTiff(photoKind, 32, 32).bytes);
}

TEST(Tiff, SurvivesDamage) {
    for (TiffKind kind : everyTiffSampleKind()) {
        for (const int compression : {1, lzw, deflate}) {
            kind.compression = compression;
            expectSurvivesDamage(makeTiff(kind, 25, 20).bytes, 60);
        }
    }
}

TEST(Tiff, UnsupportedKindsAreNamed) {
    TiffKind kind = tiffKindNamed("rgb8");
    Bytes file = makeTiff(kind, 9, 9).bytes;
    EXPECT_EQ(complaintOf(file), "");
    const std::vector<std::pair<unsigned, std::uint32_t>> floats = {
        {256, 4},   {257, 4}, {258, 32}, {259, 1},  {262, 1},
        {273, 134}, {277, 1}, {278, 4},  {279, 64}, {339, 3}};
    EXPECT_EQ(complaintOf(bareTiff(floats, noise(64))),
              "Could not read \"picture\": its kind of TIFF is not supported (samples that are not "
              "whole numbers).");
    const std::vector<std::pair<unsigned, std::uint32_t>> lab = {{256, 4}, {257, 4}, {258, 8},
                                                                 {259, 1}, {262, 8}, {273, 122},
                                                                 {277, 3}, {278, 4}, {279, 48}};
    EXPECT_EQ(complaintOf(bareTiff(lab, noise(64))),
              "Could not read \"picture\": its kind of TIFF is not supported (colour kind 8).");
    const std::vector<std::pair<unsigned, std::uint32_t>> lzma = {
        {256, 4},   {257, 4}, {258, 8}, {259, 34925}, {262, 2},
        {273, 122}, {277, 3}, {278, 4}, {279, 48}};
    EXPECT_EQ(complaintOf(bareTiff(lzma, noise(64))),
              "Could not read \"picture\": its kind of TIFF is not supported (compression 34925).");
    TiffKind fourChroma = tiffKindNamed("chroma11");
    fourChroma.samples = 4;
    fourChroma.extra = 0;
    fourChroma.separate = true;
    EXPECT_EQ(
        complaintOf(makeTiff(fourChroma, 8, 8).bytes),
        "Could not read \"picture\": its kind of TIFF is not supported (YCbCr with 4 samples).");
}

TEST(Tiff, SeparatePlanesOfDifferentSizesAreNotSupported) {
    TiffKind kind = tiffKindNamed("chroma11");
    kind.separate = true;
    Bytes file = makeTiff(kind, 8, 8).bytes;
    // the numbers of pixels that share colour differences: field 530, two short numbers
    const Bytes ones = {0x12, 0x02, 3, 0, 2, 0, 0, 0, 1, 0, 1, 0};
    const auto at = std::search(file.begin(), file.end(), ones.begin(), ones.end());
    ASSERT_NE(at, file.end());
    at[8] = 2;
    EXPECT_EQ(complaintOf(file), "Could not read \"picture\": its kind of TIFF is not supported "
                                 "(separate planes of different sizes).");
    at[8] = 3;
    EXPECT_NE(complaintOf(file).find("damaged"), std::string::npos) << complaintOf(file);
}

} // namespace veldara::test
