// PNG, WebP, HEIC and AVIF: the seeds of the fuzz targets, which other programs made, read in every
// way, cut off and damaged. That their pixels are right is checked with other readers in tests/cli.
#include "image/files.h"
#include "platform/error.h"
#include "platform/image/coded_colour.h"
#include "platform/image/colour.h"
#include "platform/image/whole_picture_decoder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <lcms2.h>

namespace veldara::test {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 4> kinds{
    {{"PNG", "fuzz_png"}, {"WebP", "fuzz_webp"}, {"HEIC", "fuzz_heic"}, {"AVIF", "fuzz_avif"}}};

std::vector<std::filesystem::path> seedsOf(const char* target) {
    std::vector<std::filesystem::path> seeds;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(VELDARA_SEEDS) / target)) {
        seeds.push_back(entry.path());
    }
    EXPECT_FALSE(seeds.empty()) << target;
    return seeds;
}

Bytes bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Bytes seed(const char* target, const char* name) {
    return bytesOf(std::filesystem::path(VELDARA_SEEDS) / target / name);
}

// The light, relative to white's, that the profile gives a colour.
cmsCIEXYZ lightOf(const ColourProfile& profile, const std::array<double, 3>& colour) {
    cmsHPROFILE rgb =
        cmsOpenProfileFromMem(profile.data(), static_cast<cmsUInt32Number>(profile.size()));
    cmsHPROFILE xyz = cmsCreateXYZProfile();
    cmsHTRANSFORM transform = cmsCreateTransform(rgb, TYPE_RGB_DBL, xyz, TYPE_XYZ_DBL,
                                                 INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOOPTIMIZE);
    cmsCIEXYZ light{};
    cmsDoTransform(transform, colour.data(), &light, 1);
    cmsDeleteTransform(transform);
    cmsCloseProfile(xyz);
    cmsCloseProfile(rgb);
    return light;
}

// Of a grey, 0 to 1.
double lightOf(const ColourProfile& profile, double value) {
    return lightOf(profile, {value, value, value}).Y;
}

} // namespace

TEST(EveryKind, IsToldByItsContentAndReadsTheSameInParts) {
    for (const auto& [kind, target] : kinds) {
        for (const std::filesystem::path& file : seedsOf(target)) {
            SCOPED_TRACE(file.string());
            const Bytes bytes = bytesOf(file);
            const ImageHeader header = headerOf(bytes);
            EXPECT_EQ(header.format->name, kind);
            const Image whole = load(bytes);
            EXPECT_EQ(whole.width(), header.width);
            EXPECT_EQ(whole.height(), header.height);
            const auto rows = reader(bytes);
            const int width = whole.width() - 3;
            const int height = whole.height() - 1;
            rows->wantColumns(2, width);
            rows->skipRows(1);
            Image read = Image::filled(whole.width(), height, 1, 2, 3);
            rows->readRows(read.mutableView().cut(0, 0, width, height));
            EXPECT_TRUE(
                same(read.view().cut(0, 0, width, height), whole.view().cut(2, 1, width, height)));
            EXPECT_TRUE(same(read.view().cut(width, 0, 3, height),
                             Image::filled(3, height, 1, 2, 3).view()));
        }
    }
}

TEST(EveryKind, SaysWhetherItIsStoredInGreys) {
    for (const char* grey : {"mode1", "modeL", "modeLA", "grey16"}) {
        EXPECT_EQ(reader(seed("fuzz_png", grey))->greyProfile(), Bytes{}) << grey;
    }
    for (const auto& [target, colour] :
         {std::pair{"fuzz_png", "modeRGB"}, {"fuzz_png", "modeP"}, {"fuzz_webp", "lossless"}}) {
        EXPECT_FALSE(reader(seed(target, colour))->greyProfile()) << colour;
    }
}

TEST(EveryKind, IsRefusedWhenCutOff) {
    EXPECT_GT(refusedTruncations(seed("fuzz_png", "modeRGB")), 380U);
    EXPECT_GT(refusedTruncations(seed("fuzz_png", "interlaced"), 3), 200U);
    EXPECT_GT(refusedTruncations(seed("fuzz_webp", "lossless")), 250U);
    EXPECT_GT(refusedTruncations(seed("fuzz_webp", "lossy")), 100U);
    EXPECT_GT(refusedTruncations(seed("fuzz_heic", "plain"), 5), 100U);
    EXPECT_GT(refusedTruncations(seed("fuzz_avif", "plain"), 5), 70U);
}

TEST(EveryKind, SurvivesDamage) {
    for (const auto& [kind, target] : kinds) {
        for (const std::filesystem::path& file : seedsOf(target)) {
            SCOPED_TRACE(file.string());
            expectSurvivesDamage(bytesOf(file), 60);
        }
    }
}

TEST(EveryKind, OfAGridIsDecodedByRowsOfTiles) {
    for (const char* name : {"grid", "gridTurned"}) {
        const Bytes bytes = seed("fuzz_heic", name);
        EXPECT_EQ(reader(bytes)->streams(), std::string(name) == "grid");
        EXPECT_GT(refusedTruncations(bytes, 5), 100U);
    }
    const Bytes single = seed("fuzz_avif", "plain");
    EXPECT_FALSE(reader(single)->streams());
}

// libheif would follow the references without an end.
TEST(EveryKind, OfAGridThatHoldsAGridIsRefused) {
    const auto behind = [](Bytes& bytes, std::string_view name) {
        const auto found = std::search(bytes.begin(), bytes.end(), name.begin(), name.end());
        EXPECT_NE(found, bytes.end()) << name;
        return found + 4;
    };
    constexpr const char* refusal =
        "Could not read \"picture\": its header is damaged or incomplete.";
    for (const char* name : {"grid", "gridTurned"}) {
        Bytes itself = seed("fuzz_heic", name);
        const auto references = behind(itself, "dimg"); // from, how many, to; two bytes each
        ASSERT_EQ(references[3], 4);
        references[11] = references[1];
        EXPECT_EQ(complaintOf(itself), refusal);

        Bytes another = seed("fuzz_heic", name);
        const std::string_view grid = "grid";
        std::copy(grid.begin(), grid.end(), behind(another, "hvc1") - 4); // the first tile's kind
        EXPECT_EQ(complaintOf(another), refusal);
    }
}

// libheif would take memory by the one size and write by the other.
TEST(EveryKind, OfAGridThatSaysTwoSizesIsRefused) {
    for (const char* name : {"grid", "gridTurned"}) {
        Bytes bytes = seed("fuzz_heic", name);
        const Bytes data{'i', 'd', 'a', 't'};
        const auto layout = std::search(bytes.begin(), bytes.end(), data.begin(), data.end()) + 4;
        ASSERT_LT(layout, bytes.end() - 8);
        layout[4] = 0x68; // the higher byte of the width
        EXPECT_EQ(complaintOf(bytes),
                  "Could not read \"picture\": its header is damaged or incomplete.");
    }
}

TEST(EveryKind, LosslessOnesSaySo) {
    EXPECT_FALSE(headerOf(seed("fuzz_png", "modeRGB")).lossy);
    EXPECT_FALSE(headerOf(seed("fuzz_webp", "lossless")).lossy);
    EXPECT_TRUE(headerOf(seed("fuzz_webp", "lossy")).lossy);
    EXPECT_TRUE(headerOf(seed("fuzz_webp", "lossyOpacity")).lossy);
    EXPECT_TRUE(headerOf(seed("fuzz_heic", "plain")).lossy);
    EXPECT_TRUE(headerOf(seed("fuzz_avif", "plain")).lossy);
    EXPECT_EQ(defaultTileFormat(headerOf(seed("fuzz_png", "modeRGB"))), TileFormat::tiff);
    EXPECT_EQ(defaultTileFormat(headerOf(seed("fuzz_webp", "lossless"))), TileFormat::tiff);
    EXPECT_EQ(defaultTileFormat(headerOf(seed("fuzz_heic", "plain"))), TileFormat::jpeg);
}

TEST(EveryKind, OfTheContainerTellsTheResolutionOfTheCamera) {
    EXPECT_EQ(headerOf(seed("fuzz_heic", "exif")).dotsPerInch, 240);
    EXPECT_EQ(headerOf(seed("fuzz_heic", "plain")).dotsPerInch, 0);
}

// Which codings the library reads depends on its release; each lacks one of these.
TEST(EveryKind, CodedInAWayThatTheLibraryCannotReadIsRefused) {
    std::vector<std::string> complaints;
    for (const std::string_view other : {"vvc1", "jpeg"}) {
        Bytes bytes = seed("fuzz_heic", "plain");
        const std::string_view usual = "hvc1";
        const auto kind = std::search(bytes.begin(), bytes.end(), usual.begin(), usual.end());
        ASSERT_NE(kind, bytes.end());
        std::copy(other.begin(), other.end(), kind);
        complaints.push_back(complaintOf(bytes));
    }
    EXPECT_THAT(complaints,
                ::testing::Contains("Could not read \"picture\": This HEIC file is coded in a way "
                                    "that this system cannot read."));
}

TEST(EveryKind, HasItsOwnNameAndEndings) {
    const auto rows = inputFormats();
    for (const InputFormat& row : rows) {
        EXPECT_EQ(&inputFormat(row.name), &row);
        ASSERT_FALSE(row.endings.empty());
        for (const std::string_view ending : row.endings) {
            EXPECT_EQ(ending.front(), '.');
            EXPECT_EQ(1, std::count_if(rows.begin(), rows.end(),
                                       [&](const InputFormat& other) {
                                           return std::find(other.endings.begin(),
                                                            other.endings.end(),
                                                            ending) != other.endings.end();
                                       }))
                << ending;
        }
    }
    EXPECT_THROW(inputFormat("PCX"), Error);
}

TEST(EveryKind, WithoutAPictureIsRefused) {
    const Bytes empty = {'R', 'I', 'F', 'F', 4, 0, 0, 0, 'W', 'E', 'B', 'P'};
    EXPECT_EQ(complaintOf(empty), "Could not read \"picture\": it holds no picture.");
    Bytes sequence = {0,   0,   0, 20, 'f', 't', 'y', 'p', 'h', 'e',
                      'v', 'c', 0, 0,  0,   0,   'm', 's', 'f', '1'};
    append(sequence, {0, 0, 0, 16, 'm', 'o', 'o', 'v', 0, 0, 0, 8, 'f', 'r', 'e', 'e'});
    EXPECT_EQ(complaintOf(sequence), "Could not read \"picture\": it holds no picture.");
}

TEST(EveryKind, ThatIsDamagedIsNotTakenForOneWithoutAPicture) {
    for (const char* target : {"fuzz_heic", "fuzz_avif"}) {
        Bytes bytes = seed(target, "plain");
        bytes.resize(bytes.size() - 20);
        EXPECT_THAT(complaintOf(bytes), testing::HasSubstr("is damaged or incomplete")) << target;
    }
}

// A brand counts only within the box of brands, not in the one behind it.
TEST(EveryKind, OfTheContainerIsToldByItsBrands) {
    Bytes other = {0, 0, 0, 16, 'f', 't', 'y', 'p', 'i', 's', 'o', 'm', 0, 0, 0, 0};
    append(other, {0, 0, 0, 8, 'h', 'e', 'i', 'c'});
    EXPECT_EQ(complaintOf(other), "Could not read \"picture\": it is not a JPEG, TIFF, BMP, PNG, "
                                  "WebP, HEIC or AVIF picture.");
}

TEST(Opacity, IsLaidOnWhite) {
    const Bytes pixels = {10, 20, 30, 255, 10, 20, 30, 0, 0, 100, 200, 128};
    Bytes rgb(9);
    rgbOnWhite(pixels.data(), 4, false, 3, rgb.data());
    EXPECT_EQ(rgb, (Bytes{10, 20, 30, 255, 255, 255, 127, 177, 227}));
    rgbOnWhite(pixels.data(), 4, true, 3, rgb.data());
    EXPECT_EQ(rgb, (Bytes{10, 20, 30, 255, 255, 255, 127, 227, 255}));
}

TEST(CodedColour, OfWhatPicturesAreTakenForNeedsNoProfile) {
    EXPECT_TRUE(profileOf(CodedColour{}).empty());
    EXPECT_TRUE(profileOf(CodedColour{1, 13}).empty());
    EXPECT_TRUE(profileOf(CodedColour{1, 1}).empty());
    EXPECT_TRUE(profileOf(CodedColour{77, 13}).empty());
    EXPECT_TRUE(profileOf(CodedColour{1, 77}).empty());
    EXPECT_TRUE(profileOf(1 / 0.45455, Chromaticities{}).empty());
    EXPECT_TRUE(profileOf(0.0, Chromaticities{}).empty());
}

TEST(CodedColour, BecomesAProfileWithThoseCurves) {
    const ColourProfile p3 = profileOf(CodedColour{12, 13});
    ASSERT_EQ(profileKind(p3), ProfileKind::rgb);
    EXPECT_NEAR(lightOf(p3, 0.5), 0.2140, 0.001);
    const ColourProfile linear = profileOf(1.0, Chromaticities{});
    ASSERT_EQ(profileKind(linear), ProfileKind::rgb);
    EXPECT_NEAR(lightOf(linear, 0.25), 0.25, 0.001);
    // By BT.2408 a diffuse white is 58 % of PQ's range and 75 % of HLG's, and a grey card, of 26
    // candela per square metre, 38 %.
    const ColourProfile pq = profileOf(CodedColour{9, 16});
    const ColourProfile hlg = profileOf(CodedColour{9, 18});
    ASSERT_EQ(profileKind(pq), ProfileKind::rgb);
    EXPECT_NEAR(lightOf(pq, 0.38), 26.0 / 203, 0.01);
    EXPECT_NEAR(lightOf(pq, 0.58), lightOf(hlg, 0.75), 0.01);
    EXPECT_NEAR(lightOf(hlg, 0.38), 26.0 / 203, 0.01);
    EXPECT_NEAR(lightOf(hlg, 1), 1, 0.001);
    EXPECT_NEAR(lightOf(pq, 1), 1, 0.001);
}

TEST(CodedColour, KeepsADiffuseWhiteApartFromWhatIsBrighter) {
    const ColourProfile hlg = profileOf(CodedColour{9, 18});
    EXPECT_LT(lightOf(hlg, 0.75), 0.95);
    EXPECT_GT(lightOf(hlg, 0.75), 0.8);
    EXPECT_GT(lightOf(hlg, 0.9), lightOf(hlg, 0.75) + 0.02);
}

TEST(CodedColour, OfVideoIsShownWithTheUsualCurve) {
    for (const unsigned transfer : {1U, 6U, 13U, 14U, 15U}) {
        const ColourProfile profile = profileOf(CodedColour{9, transfer});
        ASSERT_EQ(profileKind(profile), ProfileKind::rgb) << transfer;
        EXPECT_NEAR(lightOf(profile, 0.5), 0.2140, 0.001) << transfer;
    }
}

// sRGB's red, as these primaries mix it.
TEST(CodedColour, OfOtherPrimariesIsTheSameLight) {
    for (const auto& [primaries, colour] : {std::pair{9U, std::array{0.6274, 0.0691, 0.0164}},
                                            {12U, std::array{0.8225, 0.0332, 0.0171}}}) {
        const cmsCIEXYZ red = lightOf(profileOf(CodedColour{primaries, 8}), colour);
        EXPECT_NEAR(red.X, 0.4361, 0.003) << primaries;
        EXPECT_NEAR(red.Y, 0.2225, 0.003) << primaries;
        EXPECT_NEAR(red.Z, 0.0139, 0.003) << primaries;
    }
}

TEST(CodedColour, ThatDiffersInOnePrimaryNeedsAProfile) {
    Chromaticities redder;
    redder.redX += 0.02;
    EXPECT_EQ(profileKind(profileOf(2.2, redder)), ProfileKind::rgb);
}

} // namespace veldara::test
