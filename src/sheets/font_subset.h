// A TrueType font that has only the glyphs that a document uses (ISO/IEC 14496-22, the tables that
// an embedded font needs).
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <vector>

namespace veldara {

struct FontSubset {
    std::vector<std::uint8_t> bytes;
    std::map<std::uint32_t, std::uint32_t> newNumber; // of each glyph that is in it
};

// The glyphs, those that they are composed of, and glyph 0. Throws Error when the font cannot be
// taken apart.
FontSubset subsetFont(std::span<const std::uint8_t> font, const std::set<std::uint32_t>& glyphs);

} // namespace veldara
