#include "platform/image/lzw_encoder.h"

#include <algorithm>

namespace veldara {

namespace {

constexpr std::uint32_t clearCode = 256;
constexpr std::uint32_t endCode = 257;
constexpr std::uint32_t firstString = 258;

constexpr std::uint32_t emptySlot = 0xFFFFFFFF; // no code goes up to 4095

// Bits of the code that follows that many others since the table was cleared.
unsigned widthAfter(std::size_t codes) {
    return codes < 254 ? 9 : codes < 766 ? 10 : codes < 1790 ? 11 : 12;
}

} // namespace

LzwEncoder::LzwEncoder() : slots_(std::size_t{1} << slotBits) {}

void LzwEncoder::forgetStrings() {
    std::fill(slots_.begin(), slots_.end(), emptySlot);
    codeCount_ = 0;
}

void LzwEncoder::put(std::uint32_t code, unsigned width) {
    bits_ = bits_ << width | code;
    bitCount_ += width;
    while (bitCount_ >= 8) {
        bitCount_ -= 8;
        packed_[packedSize_++] = static_cast<std::uint8_t>(bits_ >> bitCount_);
    }
}

// Codes are packed a table at a time: in the loop that finds them, the widths would cost a test for
// every byte.
void LzwEncoder::packCodes(std::vector<std::uint8_t>& file) {
    for (std::size_t i = 0; i < codeCount_;) {
        const unsigned width = widthAfter(i);
        for (; i < codeCount_ && widthAfter(i) == width; ++i) {
            put(codes_[i], width);
        }
    }
    if (codeCount_ == mostCodes) {
        put(clearCode, 12);
        forgetStrings();
    }
    file.insert(file.end(), packed_.begin(),
                packed_.begin() + static_cast<std::ptrdiff_t>(packedSize_));
    packedSize_ = 0;
}

void LzwEncoder::encode(std::span<const std::uint8_t> strip, std::vector<std::uint8_t>& file) {
    forgetStrings();
    put(clearCode, 9);
    if (!strip.empty()) {
        std::uint32_t prefix = strip[0];
        std::uint32_t* slots = slots_.data();
        constexpr std::uint32_t slotMask = (1U << slotBits) - 1;
        for (const std::uint8_t byte : strip.subspan(1)) {
            const std::uint32_t key = prefix << 8 | byte;
            std::uint32_t slot = key * 2654435761U >> (32 - slotBits);
            while (slots[slot] >> 12 != key && slots[slot] != emptySlot) {
                slot = (slot + 1) & slotMask;
            }
            if (slots[slot] != emptySlot) {
                prefix = slots[slot] & 0xFFFU;
                continue;
            }
            slots[slot] = key << 12 | static_cast<std::uint32_t>(firstString + codeCount_);
            codes_[codeCount_++] = static_cast<std::uint16_t>(prefix);
            prefix = byte;
            if (codeCount_ == mostCodes) {
                packCodes(file);
            }
        }
        codes_[codeCount_++] = static_cast<std::uint16_t>(prefix);
    }
    const unsigned width = codeCount_ == mostCodes ? 9 : widthAfter(codeCount_);
    packCodes(file);
    put(endCode, width);
    put(0, (8 - bitCount_ % 8) % 8);
    file.insert(file.end(), packed_.begin(),
                packed_.begin() + static_cast<std::ptrdiff_t>(packedSize_));
    packedSize_ = 0;
    bits_ = 0;
}

} // namespace veldara
