#include "image/jpeg_files.h"
#include "image/tiff_files.h"

#include <array>

namespace veldara::test {

namespace {

// The picture that a stored picture with that tag stands for, by the definition of the Exif
// standard: the tag says which edges of the scene row 0 and column 0 are.
Image upright(const Image& stored, int orientation) {
    const int width = stored.width();
    const int height = stored.height();
    const bool exchanged = orientation >= 5;
    Image image(exchanged ? height : width, exchanged ? width : height);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            int sx = x;
            int sy = y;
            switch (orientation) {
            case 2:
                sx = width - 1 - x;
                break; // row 0 top, column 0 right
            case 3:
                sx = width - 1 - x, sy = height - 1 - y;
                break; // bottom, right
            case 4:
                sy = height - 1 - y;
                break; // bottom, left
            case 5:
                sx = y, sy = x;
                break; // left, top
            case 6:
                sx = y, sy = height - 1 - x;
                break; // right, top
            case 7:
                sx = width - 1 - y, sy = height - 1 - x;
                break; // right, bottom
            case 8:
                sx = width - 1 - y, sy = x;
                break; // left, bottom
            default:
                break;
            }
            for (int c = 0; c < 3; ++c) {
                image.row(y)[3 * x + c] = stored.row(sy)[3 * sx + c];
            }
        }
    }
    return image;
}

void expectReadsTheSame(const Bytes& file, const Image& whole) {
    const auto rows = reader(file);
    EXPECT_EQ(rows->header().width, whole.width());
    EXPECT_EQ(rows->header().height, whole.height());
    const int left = whole.width() / 3;
    const int width = whole.width() / 2;
    rows->wantColumns(left, width);
    rows->skipRows(2);
    Image band(width, whole.height() - 2);
    rows->readRows(band.mutableView());
    EXPECT_TRUE(same(band.view(), whole.view().cut(left, 2, width, whole.height() - 2)));
}

} // namespace

TEST(Orientation, JpegByItsTag) {
    for (const char* name : {"colour444", "colour420", "progressive444", "grey", "inksAdobe"}) {
        for (const JpegKind& kind : everyJpegKind()) {
            if (kind.name != name) {
                continue;
            }
            const Bytes plain = makeJpeg(kind, photo(101, 70));
            const Image stored = load(plain);
            for (int orientation = 1; orientation <= 8; ++orientation) {
                const bool bigEndian = orientation % 2 == 0;
                const Bytes file = withSegment(
                    plain, 0xE1, exifContent(static_cast<unsigned>(orientation), 0, bigEndian));
                const Image expected = upright(stored, orientation);
                EXPECT_TRUE(same(load(file), expected)) << name << " " << orientation;
                EXPECT_EQ(headerOf(file).width, expected.width());
                EXPECT_EQ(headerOf(file).height, expected.height());
                expectReadsTheSame(file, expected);
            }
        }
    }
}

TEST(Orientation, TiffByItsTag) {
    for (const int tileSide : {0, 16}) {
        for (int orientation = 1; orientation <= 8; ++orientation) {
            TiffKind kind;
            kind.orientation = orientation;
            kind.tileSide = tileSide;
            const TiffFile file = makeTiff(kind, 131, 70);
            const Image expected = upright(file.expected, orientation);
            EXPECT_TRUE(same(load(file.bytes), expected)) << orientation;
            expectReadsTheSame(file.bytes, expected);
        }
    }
}

TEST(Orientation, TiffThatIsNotRgb) {
    constexpr int palette = 3;
    constexpr int inks = 5;
    for (const auto& [photometric, samples, bits] :
         {std::array{0, 1, 8}, {1, 1, 8}, {1, 1, 1}, {1, 1, 16}, {palette, 1, 8}, {inks, 4, 8}}) {
        for (int orientation = 1; orientation <= 8; ++orientation) {
            TiffKind kind;
            kind.photometric = photometric;
            kind.samples = samples;
            kind.bits = bits;
            kind.orientation = orientation;
            const TiffFile file = makeTiff(kind, 131, 70);
            const Image expected = upright(file.expected, orientation);
            EXPECT_TRUE(same(load(file.bytes), expected)) << photometric << " " << orientation;
            expectReadsTheSame(file.bytes, expected);
        }
    }
}

TEST(Orientation, OnlyTurnedPicturesAreDecodedAsAWhole) {
    const Bytes plain = makeJpeg(JpegKind{}, photo(20, 30));
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        const Bytes file = withSegment(plain, 0xE1, exifContent(orientation, 0));
        EXPECT_EQ(reader(file)->streams(), orientation <= 2) << orientation;
    }
}

} // namespace veldara::test
