// Pixels that are small numbers packed into bytes, turned into the colours that they stand for.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace veldara {

using Palette = std::array<std::array<std::uint8_t, 3>, 256>; // RGB

class IndexedPixels {
  public:
    IndexedPixels() = default;

    // 1, 2, 4 or 8 bits a pixel, the first pixel in the highest bits.
    IndexedPixels(const Palette& palette, unsigned bits);

    // Converts count pixels from pixel `first` of the packed row.
    void convert(const std::uint8_t* row, std::size_t first, std::size_t count,
                 std::uint8_t* rgb) const;

    // Whether all colours in the palette are greys.
    bool grey() const;

  private:
    // The colours of all pixels that share a byte: up to eight of them.
    std::array<std::array<std::uint8_t, 24>, 256> colours_{};
    unsigned bits_ = 8;
    unsigned perByte_ = 1;
};

} // namespace veldara
