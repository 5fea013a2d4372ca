#include "image/files.h"
#include "platform/image/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

Bytes saved(cmsHPROFILE profile) {
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    Bytes bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

// Grey whose curve leads to L*, not to light: half of it is the middle grey.
Bytes lightnessProfile() {
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 1.0);
    cmsHPROFILE profile = cmsCreateGrayProfile(cmsD50_xyY(), curve);
    cmsFreeToneCurve(curve);
    cmsSetPCS(profile, cmsSigLabData);
    return saved(profile);
}

// RGB whose equal triples are greys, or are not where one curve is another one.
Bytes rgbProfileOfCurves(double gammaOfBlue) {
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1.0}, {0.21, 0.71, 1.0}, {0.15, 0.06, 1.0}};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 1.8);
    cmsToneCurve* blue = cmsBuildGamma(nullptr, gammaOfBlue);
    const std::array<cmsToneCurve*, 3> curves = {curve, curve, blue};
    Bytes bytes = saved(cmsCreateRGBProfile(cmsD50_xyY(), &primaries, curves.data()));
    cmsFreeToneCurve(curve);
    cmsFreeToneCurve(blue);
    return bytes;
}

// Inks that each take L* away in proportion and have no colour: black counts twice.
cmsInt32Number greyInks(const cmsUInt16Number inks[], cmsUInt16Number lab[], void*) {
    const double taken = (inks[0] + inks[1] + inks[2] + 2.0 * inks[3]) / (5 * 65535.0);
    const cmsCIELab colour = {100 * (1 - taken), 0, 0};
    cmsFloat2LabEncodedV2(lab, &colour);
    return 1;
}

Bytes greyInkProfile() {
    cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 2.1);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 4, 3);
    cmsStage* table = cmsStageAllocCLut16bit(nullptr, 3, 4, 3, nullptr);
    cmsStageSampleCLut16bit(table, greyInks, nullptr, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_END, table);
    cmsWriteTag(profile, cmsSigAToB0Tag, pipeline);
    cmsPipelineFree(pipeline);
    return saved(profile);
}

// A link from inks to inks, which says nothing about their colours.
Bytes inkLink() {
    return saved(cmsCreateInkLimitingDeviceLink(cmsSigCmykData, 400));
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
    const std::vector<Bytes> profiles = {greyProfile(1.0), greyProfile(1.8), greyProfile(2.2),
                                         lightnessProfile()};
    for (std::size_t number = 0; number < profiles.size(); ++number) {
        const Bytes& grey = profiles[number];
        const Bytes rgb = profileForRgbRows(grey, true);
        ASSERT_EQ(profileKind(rgb), ProfileKind::rgb);
        for (int level = 0; level <= 255; level += 15) {
            const auto before = lightOf(grey, TYPE_GRAY_8, level);
            const auto after = lightOf(rgb, TYPE_RGB_8, level);
            for (std::size_t i = 0; i < 3; ++i) {
                EXPECT_NEAR(after[i], before[i], 0.0005) << number << " " << level;
            }
        }
    }
}

TEST(Colour, AGreyProfileMadeTwiceIsTheSame) {
    const Bytes profile = profileForRgbRows(greyProfile(), true);
    EXPECT_EQ(profileForRgbRows(greyProfile(), true), profile);
    EXPECT_EQ(std::string(profile.begin() + 40, profile.begin() + 44), "APPL") << "on every system";
}

TEST(Colour, ProfilesThatDoNotDescribeThePixelsAreDropped) {
    EXPECT_TRUE(profileForRgbRows(greyProfile(), false).empty());
    EXPECT_EQ(profileForRgbRows(rgbProfile(), true), rgbProfile());
    EXPECT_EQ(profileForRgbRows(rgbProfile(), false), rgbProfile());
    EXPECT_TRUE(profileForRgbRows(noise(400), true).empty());
}

TEST(Colour, SingleValuesOfAGreyPictureKeepItsGreyProfile) {
    EXPECT_EQ(profileForGreyRows(greyProfile()), greyProfile());
    EXPECT_EQ(profileForGreyRows(lightnessProfile()), lightnessProfile());
    EXPECT_EQ(profileForGreyRows({}), Bytes{});
    EXPECT_EQ(profileForGreyRows(noise(400)), Bytes{});
    EXPECT_EQ(profileForGreyRows(greyInkProfile()), Bytes{});
    Bytes unusable = greyProfile();
    std::fill(unusable.begin() + 128, unusable.end(), std::uint8_t{0});
    EXPECT_EQ(profileForGreyRows(unusable), Bytes{});
}

TEST(Colour, AnRgbProfileBecomesAGreyProfileOfTheSameLight) {
    for (const Bytes& rgb : {rgbProfile(), rgbProfileOfCurves(1.8)}) {
        const std::optional<Bytes> grey = profileForGreyRows(rgb);
        ASSERT_TRUE(grey);
        ASSERT_EQ(profileKind(*grey), ProfileKind::grey);
        for (int level = 0; level <= 255; level += 15) {
            const auto before = lightOf(rgb, TYPE_RGB_8, level);
            const auto after = lightOf(*grey, TYPE_GRAY_8, level);
            for (std::size_t i = 0; i < 3; ++i) {
                EXPECT_NEAR(after[i], before[i], 0.0005) << level;
            }
        }
    }
}

TEST(Colour, AnRgbProfileThatGivesGreysAColourHasNoGreyOne) {
    EXPECT_FALSE(profileForGreyRows(rgbProfileOfCurves(2.2)));
    Bytes unusable = rgbProfile();
    std::fill(unusable.begin() + 128, unusable.end(), std::uint8_t{0});
    EXPECT_FALSE(profileForGreyRows(unusable));
}

TEST(Colour, DamagedGreyProfilesDoNoHarm) {
    const Bytes grey = greyProfile();
    for (std::size_t i = 0; i < grey.size(); ++i) {
        Bytes damaged = grey;
        damaged[i] ^= 0xFF;
        profileForRgbRows(damaged, true);
        profileForGreyRows(damaged);
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

TEST(Colour, AnInkProfileDecidesTheColours) {
    CmykToRgb other({});
    CmykToRgb inks(greyInkProfile());
    other = std::move(inks);
    // L* 100, 80, 60 and 0 are these greys of sRGB
    const std::array<std::uint8_t, 16> cmyk = {0, 0, 0, 0,   255, 0,   0,   0,
                                               0, 0, 0, 255, 255, 255, 255, 255};
    std::array<std::uint8_t, 12> rgb{};
    other.convert(cmyk.data(), rgb.data(), 4);
    const std::array<int, 4> greys = {255, 198, 145, 0};
    for (std::size_t i = 0; i < rgb.size(); ++i) {
        EXPECT_NEAR(rgb[i], greys[i / 3], 2) << i;
    }
}

TEST(Colour, UnusableInkProfilesFallBackToThePlainFormula) {
    const std::array<std::uint8_t, 4> cmyk = {255, 0, 0, 0};
    for (const Bytes& profile : {inkLink(), rgbProfile(), noise(300)}) {
        std::array<std::uint8_t, 3> rgb{};
        CmykToRgb(profile).convert(cmyk.data(), rgb.data(), 1);
        EXPECT_EQ(rgb, (std::array<std::uint8_t, 3>{0, 255, 255}));
    }
}

} // namespace veldara::test
