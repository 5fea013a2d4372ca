// The stream of a lossless piece gives its rows back when it is read as PNG's predictors say.
#include "image/files.h"
#include "sheets/flate_sink.h"

#include <algorithm>
#include <cstdlib>

#include <zlib.h>

namespace veldara::test {

namespace {

Bytes inflated(const Bytes& stream, std::size_t size) {
    Bytes bytes(size + 1); // one more, to see that nothing follows
    uLongf length = static_cast<uLongf>(bytes.size());
    EXPECT_EQ(uncompress(bytes.data(), &length, stream.data(), static_cast<uLong>(stream.size())),
              Z_OK);
    bytes.resize(length);
    return bytes;
}

// The prediction of type 4 in the PNG standard, word for word.
int predicted(int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    if (pa <= pb && pa <= pc) {
        return a;
    }
    return pb <= pc ? b : c;
}

Bytes rowsOf(const Bytes& filtered, int width, int height, std::size_t channels) {
    const std::size_t rowBytes = channels * static_cast<std::size_t>(width);
    Bytes rows(rowBytes * static_cast<std::size_t>(height));
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
        const std::uint8_t* in = &filtered[y * (rowBytes + 1)];
        EXPECT_EQ(*in++, 4);
        std::uint8_t* row = &rows[y * rowBytes];
        for (std::size_t x = 0; x < rowBytes; ++x) {
            const int left = x < channels ? 0 : row[x - channels];
            const int up = y == 0 ? 0 : rows[(y - 1) * rowBytes + x];
            const int upperLeft =
                x < channels || y == 0 ? 0 : rows[(y - 1) * rowBytes + x - channels];
            row[x] = static_cast<std::uint8_t>(in[x] + predicted(left, up, upperLeft));
        }
    }
    return rows;
}

Bytes streamOf(const Image& image, int rowsAtOnce, FlateRows kind = FlateRows::rgb) {
    const std::unique_ptr<TileSink> sink = openFlateSink(image.width(), kind);
    for (int y = 0; y < image.height(); y += rowsAtOnce) {
        const int count = std::min(rowsAtOnce, image.height() - y);
        sink->writeRows(image.view().cut(0, y, image.width(), count));
    }
    return sink->finish();
}

void expectSameRows(const Image& image) {
    const Bytes stream = streamOf(image, 7);
    const std::size_t size = image.byteCount() + static_cast<std::size_t>(image.height());
    const Bytes filtered = inflated(stream, size);
    ASSERT_EQ(filtered.size(), size);
    EXPECT_EQ(rowsOf(filtered, image.width(), image.height(), 3),
              Bytes(image.row(0), image.row(0) + image.byteCount()));
}

Image noisy(int width, int height) {
    Image image(width, height);
    const Bytes bytes = noise(image.byteCount());
    std::copy(bytes.begin(), bytes.end(), image.row(0));
    return image;
}

} // namespace

TEST(FlateSink, GivesTheRowsBack) {
    for (const int width : {1, 2, 3, 17, 64, 333}) {
        expectSameRows(photo(width, 40));
        expectSameRows(noisy(width, 40)); // every kind of neighbours
    }
    expectSameRows(Image::filled(100, 100, 255, 255, 255));
}

TEST(FlateSink, OfGreysHasOneByteForEachTriple) {
    for (const int width : {1, 2, 17, 333}) {
        Image image = noisy(width, 40);
        Bytes greys;
        for (std::size_t i = 0; i < image.byteCount(); i += 3) {
            std::fill_n(image.row(0) + i, 3, *(image.row(0) + i));
            greys.push_back(*(image.row(0) + i));
        }
        const Bytes filtered = inflated(streamOf(image, 7, FlateRows::grey), greys.size() + 40);
        ASSERT_EQ(filtered.size(), greys.size() + 40);
        EXPECT_EQ(rowsOf(filtered, width, 40, 1), greys);
    }
}

TEST(FlateSink, TheBytesDoNotDependOnHowManyRowsComeAtOnce) {
    const Image image = photo(300, 200);
    const Bytes stream = streamOf(image, 1);
    EXPECT_EQ(streamOf(image, 64), stream);
    EXPECT_EQ(streamOf(image, 200), stream);
}

TEST(FlateSink, MakesPhotosAndDrawingsSmaller) {
    const Image picture = photo(600, 400);
    EXPECT_LT(streamOf(picture, 50).size(), picture.byteCount() * 3 / 4);
    const Image plain = Image::filled(600, 400, 200, 100, 50);
    EXPECT_LT(streamOf(plain, 50).size(), plain.byteCount() / 200);
}

} // namespace veldara::test
