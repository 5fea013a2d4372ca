#include "image/files.h"

#include "platform/error.h"
#include "platform/image/picture_bytes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>

#include <lcms2.h>

namespace veldara::test {

Image photo(int width, int height, unsigned seed) {
    Image image(width, height);
    std::mt19937 random(seed);
    const double phase = static_cast<double>(seed) * 0.7;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double wave = std::sin(x * 0.19 + phase) + std::cos(y * 0.13 - phase);
            const int grain = static_cast<int>(random() % 25);
            std::uint8_t* pixel = image.row(y) + std::ptrdiff_t{3} * x;
            pixel[0] = static_cast<std::uint8_t>(90 + 40 * wave + grain);
            pixel[1] = static_cast<std::uint8_t>((x * 5 + grain) & 255);
            pixel[2] = static_cast<std::uint8_t>((y * 7 + x + grain) & 255);
        }
    }
    return image;
}

Bytes noise(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    Bytes bytes(count);
    std::generate(bytes.begin(), bytes.end(),
                  [&] { return static_cast<std::uint8_t>(random() & 255U); });
    return bytes;
}

ImageHeader headerOf(const Bytes& file) {
    return readImageHeader(std::make_unique<MemoryBytes>(file), "picture");
}

Image load(const Bytes& file) {
    return loadImage(std::make_unique<MemoryBytes>(file), "picture");
}

std::unique_ptr<RowReader> reader(const Bytes& file) {
    return openRowReader(std::make_unique<MemoryBytes>(file), "picture");
}

std::string complaintOf(const Bytes& file) {
    try {
        load(file);
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

testing::AssertionResult same(const PixelView& one, const PixelView& other) {
    if (one.width() != other.width() || one.height() != other.height()) {
        return testing::AssertionFailure() << one.width() << " x " << one.height() << " instead of "
                                           << other.width() << " x " << other.height();
    }
    for (int y = 0; y < one.height(); ++y) {
        for (int i = 0; i < 3 * one.width(); ++i) {
            if (one.row(y)[i] != other.row(y)[i]) {
                return testing::AssertionFailure()
                       << "column " << i / 3 << ", row " << y << ", channel " << i % 3 << ": "
                       << int{one.row(y)[i]} << " instead of " << int{other.row(y)[i]};
            }
        }
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult same(const Image& one, const Image& other) {
    return same(one.view(), other.view());
}

int distance(const Image& one, const Image& other) {
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int i = 0; i < 3 * one.width(); ++i) {
            greatest = std::max(greatest, std::abs(one.row(y)[i] - other.row(y)[i]));
        }
    }
    return greatest;
}

double meanDistance(const Image& one, const Image& other) {
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int i = 0; i < 3 * one.width(); ++i) {
            sum += std::abs(one.row(y)[i] - other.row(y)[i]);
        }
    }
    return sum / (3.0 * one.width() * one.height());
}

std::size_t refusedTruncations(const Bytes& file, std::size_t step) {
    const Image whole = load(file);
    std::size_t refused = 0;
    for (std::size_t size = 0; size < file.size(); size += step) {
        const Bytes part(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
        try {
            EXPECT_TRUE(same(load(part), whole)) << "cut off after " << size << " bytes";
        } catch (const Error& error) {
            EXPECT_EQ(0, std::strncmp(error.what(), "Could not read \"picture\": ", 26));
            ++refused;
        }
    }
    return refused;
}

void expectSurvivesDamage(const Bytes& file, unsigned rounds) {
    std::mt19937 random(7);
    for (unsigned i = 0; i < rounds; ++i) {
        Bytes damaged = file;
        for (unsigned n = random() % 4 + 1; n > 0; --n) {
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random() & 255U);
        }
        try {
            const ImageHeader header = headerOf(damaged);
            const Image image = load(damaged);
            EXPECT_EQ(header.width, image.width());
            EXPECT_EQ(header.height, image.height());
        } catch (const Error& error) {
            EXPECT_NE(std::string(error.what()), "");
        }
    }
}

namespace {

Bytes saved(cmsHPROFILE profile) {
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    Bytes bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    // The engine stamps the moment of making into the header; a test may take longer than a second.
    std::fill_n(bytes.begin() + 24, 12, std::uint8_t{0});
    return bytes;
}

} // namespace

Bytes rgbProfile() {
    return saved(cmsCreate_sRGBProfile());
}

Bytes greyProfile(double gamma) {
    cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
    Bytes bytes = saved(cmsCreateGrayProfile(cmsD50_xyY(), curve));
    cmsFreeToneCurve(curve);
    return bytes;
}

void append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void put16(Bytes& bytes, unsigned value) {
    bytes.push_back(static_cast<std::uint8_t>(value & 255U));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8 & 255U));
}

void put32(Bytes& bytes, std::uint32_t value) {
    put16(bytes, value & 0xFFFFU);
    put16(bytes, value >> 16);
}

} // namespace veldara::test
