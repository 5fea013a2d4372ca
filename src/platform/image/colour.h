// Colour profiles and the one colour conversion that the program makes: printing inks to RGB.
// All RGB and grey pixels stay as the file has them; their profile says what they mean.
#pragma once

#include "platform/image/coded_colour.h"
#include "platform/image/image.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace veldara {

enum class ProfileKind { none, rgb, grey, cmyk, other };

// What pictures a profile describes, by the header that ICC.1 lays down; none when the bytes are no
// profile at all.
ProfileKind profileKind(const ColourProfile& profile);

// The profile to travel with RGB rows made from a picture with the given profile. An RGB profile
// stays as it is. A grey one does not describe RGB pixels: for a grey picture it becomes an RGB
// profile with the same white and the same tone curve in all three channels, so that the equal
// triples mean exactly the greys they were. Anything else gives no profile.
ColourProfile profileForRgbRows(const ColourProfile& profile, bool pictureIsGrey);

// The profile to travel with the single values of a grey picture with the given profile. A usable
// grey one stays as it is. An RGB one becomes a grey profile in which a value has the light that it
// had three times; nothing when that cannot be, as where equal values give a colour. Anything else
// gives no profile.
std::optional<ColourProfile> profileForGreyRows(const ColourProfile& profile);

// An RGB profile with those primaries; light[i] is that of the value i / (light.size() - 1), both
// from 0 to 1. Empty when no such profile can be made.
ColourProfile rgbProfileOf(const Chromaticities& chromaticities, const std::vector<double>& light);

// Turns 8-bit CMYK (255: full ink) into RGB: through the picture's own profile into sRGB when it is
// a usable CMYK profile, by the plain product of what each ink lets through otherwise.
class CmykToRgb {
  public:
    explicit CmykToRgb(const ColourProfile& profile);
    CmykToRgb(CmykToRgb&&) noexcept;
    CmykToRgb& operator=(CmykToRgb&&) noexcept;
    ~CmykToRgb();

    void convert(const std::uint8_t* cmyk, std::uint8_t* rgb, std::size_t pixels) const;

  private:
    struct Transform;
    std::unique_ptr<Transform> transform_; // none: the plain formula
};

} // namespace veldara
