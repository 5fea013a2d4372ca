// The sample photograph: large enough for a poster, small enough to be kept with the sources.
#include "platform/image/codec.h"
#include "platform/image/input_format.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace veldara {
namespace {

const std::filesystem::path sample = std::filesystem::path(SAMPLE_FOLDER) / "veldara-sample.jpg";

TEST(SamplePhoto, HasTheSizeOfACamerasPhoto) {
    const ImageHeader header = readImageHeader(sample);
    EXPECT_EQ(header.format->name, "JPEG");
    EXPECT_EQ(header.width, 4608);
    EXPECT_EQ(header.height, 3072);
    EXPECT_EQ(header.dotsPerInch, 300);
}

TEST(SamplePhoto, IsSmallEnoughToBeKept) {
    EXPECT_LE(std::filesystem::file_size(sample), 3U * 1024U * 1024U);
}

TEST(SamplePhoto, HasNightInTheTreesAndMorningInTheSky) {
    const Image photo = loadImage(sample);
    const std::uint8_t* tree = photo.row(3040) + 3 * 60;
    const std::uint8_t* sky = photo.row(500) + 3 * 2300;
    EXPECT_LT(tree[0] + tree[1] + tree[2], 150);
    EXPECT_GT(sky[2], sky[0]);
    EXPECT_GT(sky[0] + sky[1] + sky[2], 300);
}

} // namespace
} // namespace veldara
