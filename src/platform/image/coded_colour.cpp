#include "platform/image/coded_colour.h"

#include "platform/image/colour.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <vector>

namespace veldara {

namespace {

using Curve = std::function<double(double)>; // from a value to its light, both 0 to 1

constexpr unsigned notSpecified = 2;

std::optional<Chromaticities> chromaticitiesOf(unsigned primaries) {
    switch (primaries) {
    case 1: // BT.709 and sRGB
    case notSpecified:
        return Chromaticities{};
    case 4: // BT.470 M
        return Chromaticities{0.310, 0.316, 0.67, 0.33, 0.21, 0.71, 0.14, 0.08};
    case 5: // BT.470 BG
        return Chromaticities{0.3127, 0.3290, 0.64, 0.33, 0.29, 0.60, 0.15, 0.06};
    case 6: // BT.601
    case 7:
        return Chromaticities{0.3127, 0.3290, 0.630, 0.340, 0.310, 0.595, 0.155, 0.070};
    case 9: // BT.2020 and BT.2100
        return Chromaticities{0.3127, 0.3290, 0.708, 0.292, 0.170, 0.797, 0.131, 0.046};
    case 11: // DCI P3
        return Chromaticities{0.314, 0.351, 0.680, 0.320, 0.265, 0.690, 0.150, 0.060};
    case 12: // Display P3
        return Chromaticities{0.3127, 0.3290, 0.680, 0.320, 0.265, 0.690, 0.150, 0.060};
    default:
        return std::nullopt;
    }
}

double srgbLight(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

// Light in units of the diffuse white, up to `peak` of them, into 0 to 1: unchanged up to the knee,
// then ever flatter.
double rolledOff(double light, double peak) {
    constexpr double knee = 0.75;
    if (light <= knee) {
        return light;
    }
    const double beyond = (light - knee) / (1 - knee);
    const double most = (peak - knee) / (1 - knee);
    return std::min(1.0, knee + (1 - knee) * beyond * (1 + beyond / (most * most)) / (1 + beyond));
}

constexpr double diffuseWhite = 203; // candela per square metre
constexpr double brightest = 1000;   // what is graded for; more becomes white

// SMPTE ST 2084.
double pqLight(double value) {
    constexpr double m1 = 2610.0 / 16384;
    constexpr double m2 = 2523.0 / 32;
    constexpr double c1 = 3424.0 / 4096;
    constexpr double c2 = 2413.0 / 128;
    constexpr double c3 = 2392.0 / 128;
    const double power = std::pow(value, 1 / m2);
    const double candela = 10000 * std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1 / m1);
    return rolledOff(candela / diffuseWhite, brightest / diffuseWhite);
}

// BT.2100 HLG on a display of 1000 candela per square metre, whose system gamma is 1.2.
double hlgLight(double value) {
    constexpr double a = 0.17883277;
    constexpr double b = 1 - 4 * a;
    const double c = 0.5 - a * std::log(4 * a);
    const double scene = value <= 0.5 ? value * value / 3 : (std::exp((value - c) / a) + b) / 12;
    return rolledOff(brightest * std::pow(scene, 1.2) / diffuseWhite, brightest / diffuseWhite);
}

// sRGB's curve also stands for those of video cameras (BT.709, 601, 2020): still pictures that name
// them are made and shown with it.
bool usesSrgbCurve(unsigned transfer) {
    return transfer == 1 || transfer == notSpecified || transfer == 6 || transfer == 13 ||
           transfer == 14 || transfer == 15;
}

Curve curveOf(unsigned transfer) {
    if (usesSrgbCurve(transfer)) {
        return srgbLight;
    }
    switch (transfer) {
    case 4:
        return [](double value) { return std::pow(value, 2.2); };
    case 5:
        return [](double value) { return std::pow(value, 2.8); };
    case 8:
        return [](double value) { return value; };
    case 16:
        return pqLight;
    case 18:
        return hlgLight;
    default:
        return {};
    }
}

bool isSrgb(const Chromaticities& given) {
    const Chromaticities usual;
    const auto near = [](double one, double other) { return std::abs(one - other) < 0.002; };
    return near(given.whiteX, usual.whiteX) && near(given.whiteY, usual.whiteY) &&
           near(given.redX, usual.redX) && near(given.redY, usual.redY) &&
           near(given.greenX, usual.greenX) && near(given.greenY, usual.greenY) &&
           near(given.blueX, usual.blueX) && near(given.blueY, usual.blueY);
}

ColourProfile sampledProfile(const Chromaticities& chromaticities, const Curve& curve) {
    constexpr std::size_t samples = 1024;
    std::vector<double> light(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        light[i] =
            std::clamp(curve(static_cast<double>(i) / static_cast<double>(samples - 1)), 0.0, 1.0);
    }
    return rgbProfileOf(chromaticities, light);
}

} // namespace

ColourProfile profileOf(const CodedColour& colour) {
    const std::optional<Chromaticities> chromaticities = chromaticitiesOf(colour.primaries);
    const Curve curve = curveOf(colour.transfer);
    if (!chromaticities || !curve) {
        return {};
    }
    if (usesSrgbCurve(colour.transfer) && isSrgb(*chromaticities)) {
        return {};
    }
    return sampledProfile(*chromaticities, curve);
}

ColourProfile profileOf(double exponent, const Chromaticities& chromaticities) {
    const bool sane = exponent > 0.1 && exponent < 10 && chromaticities.whiteY > 0 &&
                      chromaticities.redY > 0 && chromaticities.greenY > 0 &&
                      chromaticities.blueY > 0;
    if (!sane || (std::abs(exponent - 2.2) < 0.05 && isSrgb(chromaticities))) {
        return {};
    }
    return sampledProfile(chromaticities,
                          [exponent](double value) { return std::pow(value, exponent); });
}

} // namespace veldara
