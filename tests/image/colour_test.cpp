#include "image/files.h"
#include "platform/image/colour.h"

#include <array>
#include <cmath>
#include <memory>

#include <lcms2.h>

namespace veldara::test {

namespace {

std::array<double, 3> lightOf(const Bytes& profile, cmsUInt32Number format, int level) {
    cmsHPROFILE source =
        cmsOpenProfileFromMem(profile.data(), static_cast<cmsUInt32Number>(profile.size()));
    cmsHPROFILE xyz = cmsCreateXYZProfile();
    cmsHTRANSFORM transform = cmsCreateTransform(source, format, xyz, TYPE_XYZ_DBL,
                                                 INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOOPTIMIZE);
    const auto byte = static_cast<std::uint8_t>(level);
    const std::array<std::uint8_t, 3> pixel = {byte, byte, byte};
    cmsCIEXYZ light{};
    cmsDoTransform(transform, pixel.data(), &light, 1);
    cmsDeleteTransform(transform);
    cmsCloseProfile(source);
    cmsCloseProfile(xyz);
    return {light.X, light.Y, light.Z};
}

// Inks that mix by absorption, as a profile of one lookup table.
Bytes inkProfile() {
    cmsHPROFILE profile = cmsCreateInkLimitingDeviceLink(cmsSigCmykData, 400);
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    Bytes bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

} // namespace

TEST(Colour, KindsOfProfile) {
    EXPECT_EQ(profileKind({}), ProfileKind::none);
    EXPECT_EQ(profileKind(noise(500)), ProfileKind::none);
    EXPECT_EQ(profileKind(rgbProfile()), ProfileKind::rgb);
    EXPECT_EQ(profileKind(greyProfile()), ProfileKind::grey);
    Bytes cut = rgbProfile();
    cut.pop_back();
    EXPECT_EQ(profileKind(cut), ProfileKind::none) << "shorter than it says";
}

TEST(Colour, AGreyProfileBecomesAnRgbProfileOfTheSameLight) {
    for (const double gamma : {1.0, 1.8, 2.2}) {
        const Bytes grey = greyProfile(gamma);
        const Bytes rgb = profileForRgbRows(grey, true);
        ASSERT_EQ(profileKind(rgb), ProfileKind::rgb);
        for (int level = 0; level <= 255; level += 15) {
            const auto before = lightOf(grey, TYPE_GRAY_8, level);
            const auto after = lightOf(rgb, TYPE_RGB_8, level);
            for (std::size_t i = 0; i < 3; ++i) {
                EXPECT_NEAR(after[i], before[i], 0.0005) << gamma << " " << level;
            }
        }
    }
}

TEST(Colour, AGreyProfileMadeTwiceIsTheSame) {
    EXPECT_EQ(profileForRgbRows(greyProfile(), true), profileForRgbRows(greyProfile(), true));
}

TEST(Colour, ProfilesThatDoNotDescribeThePixelsAreDropped) {
    EXPECT_TRUE(profileForRgbRows(greyProfile(), false).empty());
    EXPECT_EQ(profileForRgbRows(rgbProfile(), true), rgbProfile());
    EXPECT_EQ(profileForRgbRows(rgbProfile(), false), rgbProfile());
    EXPECT_TRUE(profileForRgbRows(noise(400), true).empty());
}

TEST(Colour, DamagedGreyProfilesDoNoHarm) {
    const Bytes grey = greyProfile();
    for (std::size_t i = 0; i < grey.size(); ++i) {
        Bytes damaged = grey;
        damaged[i] ^= 0xFF;
        profileForRgbRows(damaged, true);
    }
}

TEST(Colour, InksWithoutAProfileAreMultiplied) {
    const CmykToRgb inks({});
    for (int c = 0; c <= 255; c += 5) {
        for (int k = 0; k <= 255; k += 5) {
            const std::array<std::uint8_t, 4> cmyk = {static_cast<std::uint8_t>(c), 0, 255,
                                                      static_cast<std::uint8_t>(k)};
            std::array<std::uint8_t, 3> rgb{};
            inks.convert(cmyk.data(), rgb.data(), 1);
            EXPECT_EQ(rgb[0], std::lround((255.0 - c) * (255 - k) / 255));
            EXPECT_EQ(rgb[1], 255 - k);
            EXPECT_EQ(rgb[2], 0);
        }
    }
}

TEST(Colour, UnusableInkProfilesFallBackToThePlainFormula) {
    const std::array<std::uint8_t, 4> cmyk = {255, 0, 0, 0};
    for (const Bytes& profile : {inkProfile(), rgbProfile(), noise(300)}) {
        std::array<std::uint8_t, 3> rgb{};
        CmykToRgb(profile).convert(cmyk.data(), rgb.data(), 1);
        EXPECT_EQ(rgb, (std::array<std::uint8_t, 3>{0, 255, 255}));
    }
}

} // namespace veldara::test
