#include "platform/image/colour.h"

#include <array>
#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const veldara::ColourProfile profile(data, data + size);
    veldara::profileForRgbRows(profile, true);
    veldara::profileForGreyRows(profile);
    const veldara::CmykToRgb inks(profile);
    std::array<std::uint8_t, 64> cmyk{};
    for (std::size_t i = 0; i < cmyk.size(); ++i) {
        cmyk[i] = static_cast<std::uint8_t>(i * 37);
    }
    std::array<std::uint8_t, 48> rgb{};
    inks.convert(cmyk.data(), rgb.data(), 16);
    return 0;
}
