// Colour descriptions that are numbers instead of a profile, made into a profile, so that pixels
// keep their look wherever a profile is understood.
#pragma once

#include "platform/image/image.h"

namespace veldara {

// The code points of ITU-T H.273, which PNG (cICP), HEIC and AVIF (nclx) share.
struct CodedColour {
    unsigned primaries = 2; // 2: not specified
    unsigned transfer = 2;
};

// The RGB profile that the codes stand for. Empty for sRGB, which is what pictures without a
// profile are taken for, and for codes that are not specified or not known.
// PQ and HLG (ITU-R BT.2100) reach far beyond paper white: their curves measure light against a
// diffuse white, 203 candela per square metre (ITU-R BT.2408), keep it up to three quarters of
// that, and roll off what is brighter into the rest.
ColourProfile profileOf(const CodedColour& colour);

// CIE 1931 x and y of the white point and the three primaries.
struct Chromaticities {
    double whiteX = 0.3127, whiteY = 0.3290;
    double redX = 0.64, redY = 0.33;
    double greenX = 0.30, greenY = 0.60;
    double blueX = 0.15, blueY = 0.06;
};

// The RGB profile of a picture whose light is its value to the power of `exponent` (PNG's gAMA and
// cHRM). Empty when that is sRGB within what the eye sees, or makes no sense.
ColourProfile profileOf(double exponent, const Chromaticities& chromaticities);

} // namespace veldara
