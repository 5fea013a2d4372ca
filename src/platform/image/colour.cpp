#include "platform/image/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include <lcms2.h>

namespace veldara {

namespace {

constexpr std::size_t profileHeaderSize = 128;

std::uint32_t bigEndian32(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | std::uint32_t{bytes[3]};
}

struct DeleteContext {
    void operator()(cmsContext context) const { cmsDeleteContext(context); }
};
struct CloseProfile {
    void operator()(cmsHPROFILE profile) const { cmsCloseProfile(profile); }
};
struct DeleteTransform {
    void operator()(cmsHTRANSFORM transform) const { cmsDeleteTransform(transform); }
};
struct FreeCurve {
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Context = std::unique_ptr<std::remove_pointer_t<cmsContext>, DeleteContext>;
using Profile = std::unique_ptr<std::remove_pointer_t<cmsHPROFILE>, CloseProfile>;
using TransformHandle = std::unique_ptr<std::remove_pointer_t<cmsHTRANSFORM>, DeleteTransform>;
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

Profile openProfile(cmsContext context, const ColourProfile& bytes) {
    if (bytes.size() > std::numeric_limits<cmsUInt32Number>::max()) {
        return nullptr;
    }
    return Profile(cmsOpenProfileFromMemTHR(context, bytes.data(),
                                            static_cast<cmsUInt32Number>(bytes.size())));
}

bool isNeutral(const cmsCIEXYZ& light) {
    constexpr double unseen = 0.002;
    const cmsCIEXYZ* white = cmsD50_XYZ();
    return std::abs(light.X - white->X * light.Y) < unseen &&
           std::abs(light.Z - white->Z * light.Y) < unseen;
}

// How much light each grey stands for, as one value or as three equal ones, sampled through the
// colour engine: right for profiles whose curve leads to L* or that are tables. Nothing when equal
// values give a colour.
Curve sampledGreyCurve(cmsContext context, cmsHPROFILE profile, cmsUInt32Number format) {
    constexpr std::size_t samples = 1024;
    const Profile xyz(cmsCreateXYZProfileTHR(context));
    const TransformHandle transform(cmsCreateTransformTHR(
        context, profile, format, xyz.get(), TYPE_XYZ_DBL, INTENT_RELATIVE_COLORIMETRIC,
        cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE));
    if (!transform) {
        return nullptr;
    }
    std::vector<cmsUInt16Number> table(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        std::array<cmsUInt16Number, 3> levels{};
        levels.fill(static_cast<cmsUInt16Number>(i * 65535 / (samples - 1)));
        cmsCIEXYZ light{};
        cmsDoTransform(transform.get(), levels.data(), &light, 1);
        if (format == TYPE_RGB_16 && !isNeutral(light)) {
            return nullptr;
        }
        table[i] =
            static_cast<cmsUInt16Number>(std::lround(std::clamp(light.Y, 0.0, 1.0) * 65535.0));
    }
    return Curve(cmsBuildTabulatedToneCurve16(context, samples, table.data()));
}

Curve greyCurve(cmsContext context, cmsHPROFILE grey) {
    if (cmsGetPCS(grey) == cmsSigXYZData) {
        const auto* own = static_cast<const cmsToneCurve*>(cmsReadTag(grey, cmsSigGrayTRCTag));
        if (own != nullptr) {
            return Curve(cmsDupToneCurve(own));
        }
    }
    return sampledGreyCurve(context, grey, TYPE_GRAY_16);
}

ColourProfile savedProfile(cmsHPROFILE profile) {
    cmsUInt32Number size = 0;
    if (!cmsSaveProfileToMem(profile, nullptr, &size)) {
        return {};
    }
    ColourProfile bytes(size);
    if (!cmsSaveProfileToMem(profile, bytes.data(), &size) || size < profileHeaderSize) {
        return {};
    }
    // The engine writes the current time and its system into the header; the same photo must give
    // the same file every time, and everywhere.
    constexpr std::array<std::uint8_t, 12> firstOfJanuary2000 = {0x07, 0xD0, 0, 1, 0, 1};
    std::copy(firstOfJanuary2000.begin(), firstOfJanuary2000.end(), bytes.begin() + 24);
    constexpr std::array<std::uint8_t, 4> usualSystem = {'A', 'P', 'P', 'L'};
    std::copy(usualSystem.begin(), usualSystem.end(), bytes.begin() + 40);
    return bytes;
}

ColourProfile rgbFromGrey(const ColourProfile& grey) {
    const Context context(cmsCreateContext(nullptr, nullptr));
    const Profile opened = openProfile(context.get(), grey);
    if (!opened) {
        return {};
    }
    const Curve curve = greyCurve(context.get(), opened.get());
    if (!curve) {
        return {};
    }
    // Any primaries would do, as only equal triples occur; those of sRGB surprise nobody.
    const cmsCIExyY white = {0.3127, 0.3290, 1.0};
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1.0}, {0.30, 0.60, 1.0}, {0.15, 0.06, 1.0}};
    std::array<cmsToneCurve*, 3> curves = {curve.get(), curve.get(), curve.get()};
    const Profile rgb(cmsCreateRGBProfileTHR(context.get(), &white, &primaries, curves.data()));
    return rgb ? savedProfile(rgb.get()) : ColourProfile{};
}

std::optional<ColourProfile> greyFromRgb(const ColourProfile& rgb) {
    const Context context(cmsCreateContext(nullptr, nullptr));
    const Profile opened = openProfile(context.get(), rgb);
    if (!opened) {
        return std::nullopt;
    }
    const Curve curve = sampledGreyCurve(context.get(), opened.get(), TYPE_RGB_16);
    if (!curve) {
        return std::nullopt;
    }
    const Profile grey(cmsCreateGrayProfileTHR(context.get(), cmsD50_xyY(), curve.get()));
    return grey ? savedProfile(grey.get()) : ColourProfile{};
}

std::uint8_t divideBy255(unsigned value) {
    value += 128;
    return static_cast<std::uint8_t>((value + (value >> 8)) >> 8);
}

} // namespace

ProfileKind profileKind(const ColourProfile& profile) {
    if (profile.size() < profileHeaderSize || std::memcmp(&profile[36], "acsp", 4) != 0 ||
        bigEndian32(profile.data()) > profile.size()) {
        return ProfileKind::none;
    }
    switch (bigEndian32(&profile[16])) {
    case cmsSigRgbData:
        return ProfileKind::rgb;
    case cmsSigGrayData:
        return ProfileKind::grey;
    case cmsSigCmykData:
        return ProfileKind::cmyk;
    default:
        return ProfileKind::other;
    }
}

ColourProfile profileForRgbRows(const ColourProfile& profile, bool pictureIsGrey) {
    switch (profileKind(profile)) {
    case ProfileKind::rgb:
        return profile;
    case ProfileKind::grey:
        return pictureIsGrey ? rgbFromGrey(profile) : ColourProfile{};
    default:
        return {};
    }
}

std::optional<ColourProfile> profileForGreyRows(const ColourProfile& profile) {
    switch (profileKind(profile)) {
    case ProfileKind::rgb:
        return greyFromRgb(profile);
    case ProfileKind::grey:
        return rgbFromGrey(profile).empty() ? ColourProfile{} : profile;
    default:
        return ColourProfile{};
    }
}

ColourProfile rgbProfileOf(const Chromaticities& chromaticities, const std::vector<double>& light) {
    const Context context(cmsCreateContext(nullptr, nullptr));
    std::vector<cmsUInt16Number> table(light.size());
    std::transform(light.begin(), light.end(), table.begin(), [](double level) {
        return static_cast<cmsUInt16Number>(std::lround(level * 65535));
    });
    const Curve curve(cmsBuildTabulatedToneCurve16(
        context.get(), static_cast<cmsUInt32Number>(table.size()), table.data()));
    if (!curve) {
        return {};
    }
    const Chromaticities& at = chromaticities;
    const cmsCIExyY white = {at.whiteX, at.whiteY, 1.0};
    const cmsCIExyYTRIPLE primaries = {
        {at.redX, at.redY, 1.0}, {at.greenX, at.greenY, 1.0}, {at.blueX, at.blueY, 1.0}};
    std::array<cmsToneCurve*, 3> curves = {curve.get(), curve.get(), curve.get()};
    const Profile rgb(cmsCreateRGBProfileTHR(context.get(), &white, &primaries, curves.data()));
    return rgb ? savedProfile(rgb.get()) : ColourProfile{};
}

struct CmykToRgb::Transform {
    Context context{cmsCreateContext(nullptr, nullptr)};
    TransformHandle handle;
};

CmykToRgb::CmykToRgb(const ColourProfile& profile) {
    if (profileKind(profile) != ProfileKind::cmyk) {
        return;
    }
    auto transform = std::make_unique<Transform>();
    const cmsContext context = transform->context.get();
    const Profile inks = openProfile(context, profile);
    const Profile screen(cmsCreate_sRGBProfileTHR(context));
    if (!inks || !screen) {
        return;
    }
    // No cache in the transform: it would be written to by every caller's thread.
    transform->handle.reset(cmsCreateTransformTHR(context, inks.get(), TYPE_CMYK_8, screen.get(),
                                                  TYPE_RGB_8, INTENT_PERCEPTUAL, cmsFLAGS_NOCACHE));
    if (transform->handle) {
        transform_ = std::move(transform);
    }
}

CmykToRgb::CmykToRgb(CmykToRgb&&) noexcept = default;
CmykToRgb& CmykToRgb::operator=(CmykToRgb&&) noexcept = default;
CmykToRgb::~CmykToRgb() = default;

void CmykToRgb::convert(const std::uint8_t* cmyk, std::uint8_t* rgb, std::size_t pixels) const {
    if (transform_) {
        cmsDoTransform(transform_->handle.get(), cmyk, rgb, static_cast<cmsUInt32Number>(pixels));
        return;
    }
    for (std::size_t i = 0; i < pixels; ++i) {
        const unsigned light = 255U - cmyk[4 * i + 3];
        for (std::size_t c = 0; c < 3; ++c) {
            rgb[3 * i + c] = divideBy255((255U - cmyk[4 * i + c]) * light);
        }
    }
}

} // namespace veldara
