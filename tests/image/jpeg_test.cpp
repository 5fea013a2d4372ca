#include "image/jpeg_files.h"
#include "platform/image/colour.h"
#include "platform/image/exif.h"

#include <algorithm>

namespace veldara::test {

namespace {

JpegKind kindNamed(const std::string& name) {
    for (const JpegKind& kind : everyJpegKind()) {
        if (kind.name == name) {
            return kind;
        }
    }
    ADD_FAILURE() << "no kind " << name;
    return {};
}

// Inks as plain light: what each ink lets through, multiplied.
Image withoutInks(const Decoded& inks, bool storedAsLight) {
    Image image(inks.width, inks.height);
    for (std::size_t i = 0; i < inks.samples.size() / 4; ++i) {
        const auto ink = [&](std::size_t c) {
            const int value = inks.samples[4 * i + c];
            return storedAsLight ? 255 - value : value;
        };
        for (std::size_t c = 0; c < 3; ++c) {
            image.row(0)[3 * i + c] =
                static_cast<std::uint8_t>(((255 - ink(c)) * (255 - ink(3)) * 2 + 255) / 510);
        }
    }
    return image;
}

} // namespace

TEST(Jpeg, EveryKindGivesThePixelsOfTheLibrary) {
    for (const JpegKind& kind : everyJpegKind()) {
        for (const auto& [width, height] : {std::pair{77, 50}, {1, 1}, {16, 16}, {17, 33}}) {
            const Bytes file = makeJpeg(kind, photo(width, height));
            const Image loaded = load(file);
            const Image expected = kind.components == 4
                                       ? withoutInks(decodePlainly(file), kind.adobeMarker)
                                       : decodedPicture(file);
            EXPECT_TRUE(same(loaded, expected)) << kind.name;
            const ImageHeader header = headerOf(file);
            EXPECT_EQ(header.format->name, "JPEG");
            EXPECT_EQ(header.width, width);
            EXPECT_EQ(header.height, height);
        }
    }
}

TEST(Jpeg, FineFilesComeCloseToThePicture) {
    JpegKind kind;
    kind.quality = 100;
    const Image picture = photo(90, 60);
    EXPECT_LE(distance(load(makeJpeg(kind, picture)), picture), 4);
}

TEST(Jpeg, InksOfAnAdobeFileAreStoredAsLight) {
    JpegKind kind = kindNamed("inksAdobe");
    kind.quality = 100;
    Bytes light;
    for (int i = 0; i < 64; ++i) {
        append(light, {255, 0, 255, 255}); // full magenta, nothing else
    }
    const Image image = load(makeJpeg(kind, light, 8, 8));
    EXPECT_GE(image.row(3)[9], 250);
    EXPECT_LE(image.row(3)[10], 5);
    EXPECT_GE(image.row(3)[11], 250);
}

TEST(Jpeg, OnlySingleScanFilesStream) {
    const Image picture = photo(40, 40);
    EXPECT_TRUE(reader(makeJpeg(kindNamed("colour420"), picture))->streams());
    EXPECT_TRUE(reader(makeJpeg(kindNamed("restart420"), picture))->streams());
    EXPECT_FALSE(reader(makeJpeg(kindNamed("progressive420"), picture))->streams());
    EXPECT_FALSE(reader(makeJpeg(kindNamed("separateScans"), picture))->streams());
}

TEST(Jpeg, TruncationsAreRefusedOrWhole) {
    for (const JpegKind& kind : everyJpegKind()) {
        const Bytes file = makeJpeg(kind, photo(33, 20));
        // The end marker's two bytes carry no pixels, and the last byte of the picture data may be
        // filling; all else is missed.
        EXPECT_GE(refusedTruncations(file), file.size() - 4) << kind.name;
    }
}

TEST(Jpeg, SurvivesDamage) {
    for (const JpegKind& kind : everyJpegKind()) {
        expectSurvivesDamage(makeJpeg(kind, photo(40, 40)), 150);
    }
}

TEST(Jpeg, ArithmeticCodingIsRefused) {
    JpegKind kind;
    kind.arithmetic = true;
    EXPECT_EQ(complaintOf(makeJpeg(kind, photo(20, 20))),
              "Could not read \"picture\": arithmetic-coded JPEG is not supported.");
}

TEST(Jpeg, AProgressiveFileThatStopsBetweenTwoScansIsRefused) {
    const Bytes file = makeJpeg(kindNamed("progressive444"), photo(64, 64));
    // Cut before every start of scan but the first, and end the file properly.
    std::size_t scans = 0;
    for (std::size_t i = 0; i + 1 < file.size(); ++i) {
        if (file[i] == 0xFF && file[i + 1] == 0xDA && scans++ > 0) {
            Bytes part(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(i));
            append(part, {0xFF, 0xD9});
            EXPECT_EQ(complaintOf(part),
                      "Could not read \"picture\": its picture data is damaged or incomplete.");
        }
    }
    EXPECT_GE(scans, 6U);
}

TEST(Jpeg, AMissingScanOfOneColourIsRefused) {
    const Bytes file = makeJpeg(kindNamed("separateScans"), photo(64, 64));
    const Bytes marker = {0xFF, 0xDA};
    const auto last = std::find_end(file.begin(), file.end(), marker.begin(), marker.end());
    Bytes part(file.begin(), last);
    append(part, {0xFF, 0xD9});
    EXPECT_EQ(complaintOf(part),
              "Could not read \"picture\": its picture data is damaged or incomplete.");
}

TEST(Jpeg, FillingBehindThePictureIsNoDamage) {
    Bytes file = makeJpeg(kindNamed("colour444"), photo(20, 20));
    const Image whole = load(file);
    file.insert(file.end() - 2, {0, 0, 0});
    EXPECT_TRUE(same(load(file), whole));
    append(file, noise(1000));
    EXPECT_TRUE(same(load(file), whole));
}

TEST(Jpeg, TooManyScansAreRefused) {
    // A valid refining scan over and over again: each costs a pass over the whole picture.
    const Bytes file = makeJpeg(kindNamed("progressiveGrey"), photo(64, 64));
    const Bytes marker = {0xFF, 0xDA};
    const auto last = std::find_end(file.begin(), file.end(), marker.begin(), marker.end());
    Bytes many(file.begin(), file.end() - 2);
    for (int i = 0; i < 200; ++i) {
        many.insert(many.end(), last, file.end() - 2);
    }
    append(many, {0xFF, 0xD9});
    EXPECT_NE(complaintOf(many), "");
}

TEST(Jpeg, ResolutionOfTheFileOrTheCamera) {
    const Bytes plain = makeJpeg(JpegKind{}, photo(20, 20));
    EXPECT_EQ(headerOf(plain).dotsPerInch, 0); // one to one, of no unit
    Bytes inches = plain;
    inches[13] = 1;
    inches[14] = 1, inches[15] = 0x2C; // 300
    EXPECT_EQ(headerOf(inches).dotsPerInch, 300);
    Bytes centimetres = inches;
    centimetres[13] = 2;
    centimetres[14] = 0, centimetres[15] = 118;
    EXPECT_EQ(headerOf(centimetres).dotsPerInch, 300);
    for (const bool bigEndian : {false, true}) {
        EXPECT_EQ(headerOf(withSegment(plain, 0xE1, exifContent(1, 240, bigEndian))).dotsPerInch,
                  240);
        EXPECT_EQ(headerOf(withSegment(inches, 0xE1, exifContent(1, 240, bigEndian))).dotsPerInch,
                  300);
    }
}

TEST(Jpeg, AResolutionThatMakesNoSenseIsNone) {
    EXPECT_EQ(wholeDotsPerInch(118.11, 2.54), 300);
    EXPECT_EQ(wholeDotsPerInch(2.5, 1), 3);
    EXPECT_EQ(wholeDotsPerInch(1, 1), 1);
    EXPECT_EQ(wholeDotsPerInch(0.5, 1), 1);
    EXPECT_EQ(wholeDotsPerInch(0.49, 1), 0);
    EXPECT_EQ(wholeDotsPerInch(1'000'000, 1), 1'000'000);
    EXPECT_EQ(wholeDotsPerInch(1'000'001, 1), 0);
}

TEST(Jpeg, DamagedCameraBlocksAreNoObstacle) {
    const Bytes plain = makeJpeg(JpegKind{}, photo(20, 20));
    const Image picture = load(plain);
    const Bytes content = exifContent(6, 240);
    for (std::size_t size = 0; size < content.size(); ++size) {
        const Bytes part(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(complaintOf(withSegment(plain, 0xE1, part)), "");
    }
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Bytes wild = content;
        const Bytes random = noise(wild.size() - 14, seed);
        std::copy(random.begin(), random.end(), wild.begin() + 14);
        EXPECT_EQ(complaintOf(withSegment(plain, 0xE1, wild)), "");
    }
    EXPECT_TRUE(same(load(withSegment(plain, 0xE1, exifContent(9, 0))), picture));
    EXPECT_TRUE(same(load(withSegment(plain, 0xE1, exifContent(0, 0))), picture));
}

// Some cameras fill the file up to a round size.
TEST(Jpeg, BytesBetweenThePictureAndTheEndAreNoDamage) {
    for (const bool progressive : {false, true}) {
        JpegKind kind;
        kind.progressive = progressive;
        const Bytes file = makeJpeg(kind, photo(60, 40));
        Bytes padded = file;
        padded.insert(padded.end() - 2, 200, 0); // more than the decoder reads ahead
        EXPECT_TRUE(same(load(padded), load(file))) << progressive;
    }
}

TEST(Jpeg, ProfileIsKept) {
    const Bytes profile = rgbProfile();
    Bytes content = {'I', 'C', 'C', '_', 'P', 'R', 'O', 'F', 'I', 'L', 'E', 0, 1, 1};
    append(content, profile);
    const Bytes colour = makeJpeg(JpegKind{}, photo(20, 20));
    EXPECT_EQ(load(withSegment(colour, 0xE2, content)).colourProfile, profile);
    const Bytes inks = makeJpeg(kindNamed("inksAdobe"), photo(20, 20));
    EXPECT_TRUE(load(withSegment(inks, 0xE2, content)).colourProfile.empty());
    content[13] = 2; // claims to be the first of two
    EXPECT_TRUE(load(withSegment(colour, 0xE2, content)).colourProfile.empty());
}

TEST(Jpeg, GreyProfileOfAGreyPictureBecomesItsRgbLike) {
    Bytes content = {'I', 'C', 'C', '_', 'P', 'R', 'O', 'F', 'I', 'L', 'E', 0, 1, 1};
    append(content, greyProfile());
    const Bytes grey = makeJpeg(kindNamed("grey"), photo(20, 20));
    EXPECT_EQ(profileKind(load(withSegment(grey, 0xE2, content)).colourProfile), ProfileKind::rgb);
}

} // namespace veldara::test
