// Truncated, damaged and lying files: an error with its reason, or the photo's own pixels.
#include "platform/error.h"
#include "sheets/jpeg_agreement.h"
#include "sheets/jpeg_cutting.h"

#include <algorithm>
#include <random>

namespace veldara::test {

namespace {

class DamagedJpeg : public testing::TestWithParam<JpegKind> {};

// Fails from some byte on, as a drive does that is pulled out.
class FailingBytes : public MemoryBytes {
  public:
    FailingBytes(std::span<const std::uint8_t> bytes, std::uint64_t good)
        : MemoryBytes(bytes), good_(good) {}
    std::size_t readAt(std::uint64_t position, void* buffer, std::size_t count) override {
        if (position >= good_) {
            throw Error("Input/output error");
        }
        return MemoryBytes::readAt(position, buffer, count);
    }

  private:
    std::uint64_t good_;
};

// Of a frame with Huffman codes: marker, length for three components, bits of a sample.
const Bytes startOfFrame = {0xFF, 0xC0, 0x00, 0x11, 0x08};

Bytes withJpegHeight(Bytes file, unsigned height) {
    for (std::size_t i = 0; i + 9 < file.size(); ++i) {
        if (file[i] == 0xFF && file[i + 1] >= 0xC0 && file[i + 1] <= 0xC2) {
            file[i + 5] = static_cast<std::uint8_t>(height >> 8);
            file[i + 6] = static_cast<std::uint8_t>(height & 255U);
            return file;
        }
    }
    ADD_FAILURE() << "no frame header";
    return file;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(JpegCutter, DamagedJpeg, testing::ValuesIn(everyJpegKind()),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(DamagedJpeg, ATruncatedPhotoIsRefused) {
    const Bytes file = makeJpeg(GetParam(), photo(70, 61));
    int cut = 0;
    for (std::size_t size = 0; size + 2 < file.size(); size += 23) {
        const CutResult result = cutAnything({file.data(), size}, 4);
        ASSERT_NE(result.outcome, CutOutcome::wrong) << result.reason << " at " << size;
        cut += result.outcome == CutOutcome::cut ? 1 : 0;
    }
    EXPECT_LE(cut, 1); // the last bits may be padding
    // Without its end marker, a photo of several scans may lack one.
    const bool oneScan = !GetParam().progressive && !GetParam().separateScans;
    EXPECT_EQ(cutAnything({file.data(), file.size() - 2}, 4).outcome,
              oneScan ? CutOutcome::cut : CutOutcome::refused);
}

TEST_P(DamagedJpeg, DamagedBytesGiveARefusalOrThePhotosPixels) {
    const Bytes file = makeJpeg(GetParam(), photo(61, 70));
    std::mt19937 random(11);
    for (unsigned round = 0; round < 60; ++round) {
        Bytes damaged = file;
        for (unsigned n = random() % 4 + 1; n > 0; --n) {
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random() & 255U);
        }
        const CutResult result = cutAnything(damaged, round);
        ASSERT_NE(result.outcome, CutOutcome::wrong) << result.reason << " in round " << round;
        EXPECT_EQ(result.reason.empty(), result.outcome == CutOutcome::cut);
    }
}

TEST(JpegCutterOnBadFiles, SaysWhyAsLoadingDoes) {
    const Bytes file = makeJpeg(JpegKind{}, photo(64, 64));
    const std::vector<PixelRectangle> all = {{0, 0, 64, 64}};
    EXPECT_EQ(cuttingComplaint(Bytes(file.begin(), file.begin() + 60), all),
              "the file ends within its header");
    EXPECT_EQ(cuttingComplaint(Bytes(file.begin(), file.end() - 40), all),
              "its picture data is damaged or incomplete");
    EXPECT_EQ(cuttingComplaint(withJpegHeight(file, 65000), all),
              "the file is too small to hold the 64 x 65000 pixels that it claims");
    EXPECT_NE(cuttingComplaint(Bytes{}, all), "");
    EXPECT_NE(cuttingComplaint(noise(500), all), "");
    JpegKind kind;
    kind.arithmetic = true;
    EXPECT_EQ(cuttingComplaint(makeJpeg(kind, photo(64, 64)), all),
              "arithmetic-coded JPEG is not supported");
    kind = {};
    kind.across = 2;
    Bytes fractional = makeJpeg(kind, photo(64, 64));
    const auto frame =
        std::search(fractional.begin(), fractional.end(), startOfFrame.begin(), startOfFrame.end());
    frame[14] = 0x31; // the second component three to the first one's two
    EXPECT_EQ(cuttingComplaint(fractional, all), "its kind of colour sampling is not supported");
    EXPECT_NE(complaintOf(fractional), "");
}

TEST(JpegCutterOnBadFiles, ADriveThatFailsStopsAllWorkers) {
    for (const bool progressive : {false, true}) {
        JpegKind kind;
        kind.progressive = progressive;
        kind.quality = 100;
        const Bytes file = makeJpeg(kind, photo(400, 2000));
        for (const std::uint64_t good : {70'000U, 300'000U}) {
            ASSERT_GT(file.size(), good);
            JpegCutter cutter(std::make_unique<FailingBytes>(file, good));
            const std::vector<PixelRectangle> sheets = sheetsOf(400, 2000, 2, 10, 0);
            cutter.start(sheets, 3);
            std::string reason;
            try {
                for (std::size_t i = 0; i < sheets.size(); ++i) {
                    cutter.next();
                }
            } catch (const Error& error) {
                reason = error.what();
            }
            EXPECT_EQ(reason, "the drive could not be read");
        }
    }
}

TEST(JpegCutterOnBadFiles, AFailureIsToldToEveryFurtherQuestion) {
    const Bytes file = makeJpeg(JpegKind{}, photo(100, 100));
    const Bytes half(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(file.size() / 2));
    const std::unique_ptr<JpegCutter> cutter = cutterOf(half);
    cutter->start({{0, 0, 100, 100}, {0, 0, 50, 50}});
    EXPECT_THROW(cutter->next(), Error);
    EXPECT_TRUE(cutter->waitReady(std::chrono::milliseconds(0)));
    EXPECT_THROW(cutter->next(), Error);
}

} // namespace veldara::test
