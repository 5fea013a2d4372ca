#include "files.h"
#include "jpeg_files.h"
#include "platform/image/picture_bytes.h"
#include "platform/stop_flag.h"
#include "tiff_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace veldara::test {

namespace {

// Somebody who asks to stop while the decoder reads what lies at that place of the file, or behind.
class StoppingBytes : public MemoryBytes {
  public:
    StoppingBytes(const Bytes& bytes, std::uint64_t place, StopFlag& stop)
        : MemoryBytes(bytes), place_(place), stop_(stop) {}

    std::size_t readAt(std::uint64_t position, void* buffer, std::size_t count) override {
        if (position + count > place_) {
            stop_.set();
        }
        return MemoryBytes::readAt(position, buffer, count);
    }

  private:
    std::uint64_t place_;
    StopFlag& stop_;
};

// Nothing but a stop at a band before the last one throws this.
void expectStops(const Bytes& file, std::uint64_t place) {
    StopFlag stop;
    EXPECT_THROW(loadImage(std::make_unique<StoppingBytes>(file, place, stop), "picture", stop),
                 WorkStopped);
}

Bytes webpSeed(const char* name) {
    std::ifstream stream(std::filesystem::path(VELDARA_SEEDS) / "fuzz_webp" / name,
                         std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Bytes faxPage(int width, int height) {
    TiffKind kind;
    kind.bits = 1;
    kind.samples = 1;
    kind.photometric = 0;
    kind.compression = 4;
    kind.rowsPerStrip = height;
    return makeTiff(kind, width, height).bytes;
}

} // namespace

TEST(Stopping, ADecoderOfRowsEndsWithItsBand) {
    const Image picture = photo(300, 400);
    expectStops(makeJpeg({}, picture), 0);
    expectStops(encodeImage(picture.view(), TileFormat::tiff, 0, {}), 10'000);
    expectStops(encodeImage(picture.view(), TileFormat::bmp, 0, {}), 10'000);
}

TEST(Stopping, ATurnedPictureEndsWithItsBand) {
    expectStops(withSegment(makeJpeg({}, photo(300, 400)), 0xE1, exifContent(6, 0)), 0);
}

TEST(Stopping, AStripOfAllRowsEndsWithItsBandToo) {
    const Bytes file = faxPage(600, 800);
    expectStops(file, 0);
}

TEST(Stopping, ScansThatComeBeforeTheFirstRowEndInTheirMidst) {
    JpegKind kind;
    kind.progressive = true;
    const Bytes file = makeJpeg(kind, photo(800, 400));
    ASSERT_GT(file.size(), 70000U);
    expectStops(file, file.size() / 2);
}

// Lower than a band, so that nobody but the decoder itself looks at the flag.
TEST(Stopping, AWebpPictureEndsWithinItsDecoding) {
    for (const char* name : {"lossy", "lossless"}) {
        const Bytes file = webpSeed(name);
        ASSERT_LT(headerOf(file).height, 64);
        expectStops(file, file.size() - 1);
    }
}

TEST(Stopping, NobodyAskedLoadsThePicture) {
    const Image picture = photo(300, 400);
    const Bytes file = encodeImage(picture.view(), TileFormat::tiff, 0, {});
    StopFlag stop;
    EXPECT_TRUE(same(loadImage(std::make_unique<MemoryBytes>(file), "picture", stop), picture));
}

} // namespace veldara::test
