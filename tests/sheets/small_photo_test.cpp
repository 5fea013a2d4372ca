// The small picture of a photo for the guide page: the mean of its pixels, of any kind of file.
#include "image/jpeg_files.h"
#include "platform/error.h"
#include "sheets/slopes.h"
#include "sheets/small_photo.h"
#include "support/temp_folder.h"

#include <cmath>
#include <fstream>

namespace veldara::test {

namespace {

// The first of `length` pixels that the pixel of a small picture of `size` ones stands for.
int firstOf(int pixel, int length, int size) {
    return (pixel * length + size - 1) / size;
}

// The same with every pixel of the whole photo.
Image meansOf(const Image& picture, const PixelRectangle& area, int longest) {
    const SmallSize size = smallSize(area, longest);
    Image small(size.width, size.height);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const int left = area.left + firstOf(x, area.width, size.width);
            const int right = area.left + firstOf(x + 1, area.width, size.width);
            const int top = area.top + firstOf(y, area.height, size.height);
            const int bottom = area.top + firstOf(y + 1, area.height, size.height);
            for (int c = 0; c < 3; ++c) {
                double sum = 0;
                for (int row = top; row < bottom; ++row) {
                    for (int column = left; column < right; ++column) {
                        sum += picture.row(row)[3 * column + c];
                    }
                }
                small.row(y)[3 * x + c] =
                    static_cast<std::uint8_t>(std::lround(sum / ((right - left) * (bottom - top))));
            }
        }
    }
    return small;
}

void save(const std::filesystem::path& path, const Bytes& file) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()),
               static_cast<std::streamsize>(file.size()));
}

class SmallPhoto : public testing::Test {
  protected:
    void expectMeans(const Bytes& file, const PixelRectangle& area, int longest) {
        const std::filesystem::path path = folder_.path() / "photo";
        save(path, file);
        const Image small = smallPhoto(path, area, longest, [] {});
        const Image expected = meansOf(load(file), area, longest);
        ASSERT_EQ(small.width(), expected.width());
        ASSERT_EQ(small.height(), expected.height());
        EXPECT_LT(meanDistance(small, expected), 4.0);
    }

    TempFolder folder_;
};

} // namespace

TEST_F(SmallPhoto, OfEveryKindOfJpeg) {
    for (const JpegKind& kind : everyJpegKind()) {
        SCOPED_TRACE(kind.name);
        const Bytes file = makeJpeg(kind, slopes(410, 300));
        expectMeans(file, {0, 0, 410, 300}, 20);
        expectMeans(file, {32, 17, 300, 250}, 50);
        expectMeans(file, {32, 17, 30, 25}, 20);
    }
}

TEST_F(SmallPhoto, OfAPhotoThatIsTurned) {
    const Bytes file = withSegment(makeJpeg(JpegKind{}, slopes(410, 300)), 0xE1, exifContent(6, 0));
    expectMeans(file, {0, 0, 300, 410}, 20);
}

TEST_F(SmallPhoto, OfADamagedJpegIsAnError) {
    Bytes file = makeJpeg(JpegKind{}, slopes(410, 300));
    file.resize(file.size() / 2);
    const std::filesystem::path path = folder_.path() / "photo";
    save(path, file);
    EXPECT_THROW(smallPhoto(path, {0, 0, 410, 300}, 20, [] {}), Error);
}

} // namespace veldara::test
