#include "platform/image/indexed_pixels.h"

#include <algorithm>
#include <cstring>

namespace veldara {

namespace {

template <std::size_t size>
void convertBytes(const std::array<std::array<std::uint8_t, 24>, 256>& colours,
                  const std::uint8_t* from, std::size_t bytes, std::uint8_t* rgb) {
    for (std::size_t i = 0; i < bytes; ++i) {
        std::memcpy(rgb + size * i, colours[from[i]].data(), size);
    }
}

} // namespace

IndexedPixels::IndexedPixels(const Palette& palette, unsigned bits)
    : bits_(bits), perByte_(8 / bits) {
    const unsigned mask = (1U << bits) - 1;
    for (unsigned byte = 0; byte < 256; ++byte) {
        for (unsigned i = 0; i < perByte_; ++i) {
            const unsigned index = byte >> (8 - bits * (i + 1)) & mask;
            std::copy(palette[index].begin(), palette[index].end(),
                      colours_[byte].begin() + 3 * static_cast<std::ptrdiff_t>(i));
        }
    }
}

void IndexedPixels::convert(const std::uint8_t* row, std::size_t first, std::size_t count,
                            std::uint8_t* rgb) const {
    const auto one = [&](std::size_t x) {
        std::memcpy(rgb, &colours_[row[x / perByte_]][3 * (x % perByte_)], 3);
        rgb += 3;
    };
    const std::size_t end = first + count;
    for (; first < end && first % perByte_ != 0; ++first) {
        one(first);
    }
    const std::size_t bytes = (end - first) / perByte_;
    const std::uint8_t* from = row + first / perByte_;
    switch (bits_) {
    case 1:
        convertBytes<24>(colours_, from, bytes, rgb);
        break;
    case 2:
        convertBytes<12>(colours_, from, bytes, rgb);
        break;
    case 4:
        convertBytes<6>(colours_, from, bytes, rgb);
        break;
    default:
        convertBytes<3>(colours_, from, bytes, rgb);
        break;
    }
    rgb += 3 * bytes * perByte_;
    for (first += bytes * perByte_; first < end; ++first) {
        one(first);
    }
}

bool IndexedPixels::grey() const {
    return std::all_of(colours_.begin(), colours_.end(), [](const auto& colours) {
        for (std::size_t i = 0; i < colours.size(); i += 3) {
            if (colours[i] != colours[i + 1] || colours[i] != colours[i + 2]) {
                return false;
            }
        }
        return true;
    });
}

} // namespace veldara
