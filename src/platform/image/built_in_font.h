// The bytes of the font that texts are drawn with; the build makes them from a free font's file.
#pragma once

#include <cstdint>
#include <span>

namespace veldara {

std::span<const std::uint8_t> builtInFont();

} // namespace veldara
