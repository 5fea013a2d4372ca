// The LZW code of TIFF 6.0, section 13: codes of 9 to 12 bits, the highest bit first, each width
// one code earlier than it would have to be.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace veldara {

class LzwEncoder {
  public:
    LzwEncoder();

    // Appends the whole code of a strip to the file: it starts with a clear code and ends with the
    // end code, filled up to a whole byte.
    void encode(std::span<const std::uint8_t> strip, std::vector<std::uint8_t>& file);

  private:
    // Codes between two clear codes: by then the table of strings is full.
    static constexpr std::size_t mostCodes = 3836;
    static constexpr unsigned slotBits = 15;

    void forgetStrings();
    void packCodes(std::vector<std::uint8_t>& file);
    void put(std::uint32_t code, unsigned width);

    // A slot holds a string's key (the code before its last byte, and that byte) above its own
    // code.
    std::vector<std::uint32_t> slots_;
    std::array<std::uint16_t, mostCodes> codes_{};
    std::size_t codeCount_ = 0;
    std::array<std::uint8_t, 6144> packed_{}; // all codes of one table, and room to spare
    std::size_t packedSize_ = 0;
    std::uint64_t bits_ = 0; // not yet packed, in the low bits
    unsigned bitCount_ = 0;
};

} // namespace veldara
