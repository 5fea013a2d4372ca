#include "image/files.h"
#include "image/jpeg_files.h"
#include "image/tiff_files.h"
#include "platform/error.h"

#include <algorithm>
#include <random>

namespace veldara::test {

namespace {

// Reads the picture through a row reader in random bands with random jumps and compares every band
// with the whole picture.
void expectRowsAsWhole(const Bytes& file, const std::string& name, unsigned seed) {
    const Image whole = load(file);
    std::mt19937 random(seed);
    const auto upTo = [&](int most) {
        return static_cast<int>(random() % static_cast<unsigned>(most + 1));
    };
    const auto rows = reader(file);
    int left = 0;
    int width = whole.width();
    if (upTo(3) != 0) {
        left = upTo(whole.width() - 1);
        width = 1 + upTo(whole.width() - left - 1);
        rows->wantColumns(left, width);
    }
    std::string story = name + ", columns " + std::to_string(left) + " + " + std::to_string(width);
    for (int y = 0; y < whole.height();) {
        const int count = std::min(whole.height() - y, upTo(upTo(2) == 0 ? 60 : 9));
        if (upTo(1) == 0) {
            rows->skipRows(count);
            story += ", skip " + std::to_string(count);
        } else if (count > 0) {
            Image band(width, count);
            rows->readRows(band.mutableView());
            ASSERT_TRUE(same(band.view(), whole.view().cut(left, y, width, count)))
                << story << ", read " << count << " at row " << y << ", seed " << seed;
            story += ", read " + std::to_string(count);
        }
        y += count;
    }
}

} // namespace

TEST(RowReader, JpegRowsAreThoseOfTheWholePicture) {
    for (const JpegKind& kind : everyJpegKind()) {
        for (unsigned seed = 1; seed <= 40; ++seed) {
            std::mt19937 random(seed);
            const int width = 1 + static_cast<int>(random() % 300);
            const int height = 1 + static_cast<int>(random() % 300);
            const Bytes file = makeJpeg(kind, photo(width, height));
            ASSERT_NO_FATAL_FAILURE(expectRowsAsWhole(file, kind.name, seed));
        }
    }
}

TEST(RowReader, TiffRowsAreThoseOfTheWholePicture) {
    for (TiffKind kind : everyTiffSampleKind()) {
        for (const int tileSide : {0, 32}) {
            for (const int compression : {1, 5}) {
                if (kind.across * kind.down > 1 && (tileSide > 0 || compression != 1)) {
                    continue;
                }
                kind.tileSide = tileSide;
                kind.compression = compression;
                const Bytes file = makeTiff(kind, 113, 90).bytes;
                for (unsigned seed = 1; seed <= 8; ++seed) {
                    ASSERT_NO_FATAL_FAILURE(expectRowsAsWhole(file, kind.name, seed));
                }
            }
        }
    }
}

TEST(RowReader, TiffRowsOfAStripTooLargeToHold) {
    for (const bool separate : {false, true}) {
        TiffKind kind;
        kind.compression = 5;
        kind.rowsPerStrip = 1150;
        kind.separate = separate;
        const Bytes file = makeTiff(kind, 2100, 1200).bytes;
        for (unsigned seed = 1; seed <= 4; ++seed) {
            ASSERT_NO_FATAL_FAILURE(expectRowsAsWhole(file, "large strip", seed));
        }
    }
}

TEST(RowReader, BmpRowsAreThoseOfTheWholePicture) {
    const Bytes file = encodeImage(photo(157, 131).view(), TileFormat::bmp, 0, {});
    for (unsigned seed = 1; seed <= 40; ++seed) {
        ASSERT_NO_FATAL_FAILURE(expectRowsAsWhole(file, "bitmap", seed));
    }
}

TEST(RowReader, HeaderAndProfileAreThoseOfTheWholePicture) {
    const Bytes file = encodeImage(photo(30, 20).view(), TileFormat::tiff, 240, rgbProfile());
    const auto rows = reader(file);
    EXPECT_EQ(rows->header().width, 30);
    EXPECT_EQ(rows->header().height, 20);
    EXPECT_EQ(rows->header().dotsPerInch, 240);
    EXPECT_EQ(rows->header().format->name, "TIFF");
    EXPECT_EQ(rows->colourProfile(), rgbProfile());
}

} // namespace veldara::test
