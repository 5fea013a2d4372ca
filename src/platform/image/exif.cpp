#include "platform/image/exif.h"

#include <cmath>
#include <cstring>

namespace veldara {

namespace {

constexpr unsigned tagOrientation = 0x0112;
constexpr unsigned tagXResolution = 0x011A;
constexpr unsigned tagResolutionUnit = 0x0128;
constexpr unsigned typeShort = 3;
constexpr unsigned typeRational = 5;

// Numbers of either byte order at any offset; zero beyond the end.
class Block {
  public:
    Block(std::span<const std::uint8_t> bytes, bool bigEndian)
        : bytes_(bytes), bigEndian_(bigEndian) {}

    std::uint32_t number(std::uint64_t offset, unsigned size) const {
        if (offset + size > bytes_.size()) {
            return 0;
        }
        std::uint32_t value = 0;
        for (unsigned i = 0; i < size; ++i) {
            const unsigned at = bigEndian_ ? i : size - 1 - i;
            value = value << 8 | bytes_[static_cast<std::size_t>(offset) + at];
        }
        return value;
    }

  private:
    std::span<const std::uint8_t> bytes_;
    bool bigEndian_;
};

} // namespace

int wholeDotsPerInch(double perUnit, double unitsPerInch) {
    const double perInch = perUnit * unitsPerInch;
    return perInch >= 0.5 && perInch <= 1'000'000 ? static_cast<int>(std::lround(perInch)) : 0;
}

ExifFacts readExif(std::span<const std::uint8_t> bytes) {
    ExifFacts facts;
    if (bytes.size() < 8) {
        return facts;
    }
    const bool bigEndian = bytes[0] == 'M';
    const Block block(bytes, bigEndian);
    if (std::memcmp(bytes.data(), bigEndian ? "MM" : "II", 2) != 0 || block.number(2, 2) != 42) {
        return facts;
    }
    const std::uint64_t directory = block.number(4, 4);
    const std::uint32_t entries = block.number(directory, 2);
    double resolution = 0;
    double unitsPerInch = 1; // inches, unless the block says otherwise
    for (std::uint32_t i = 0; i < entries; ++i) {
        const std::uint64_t entry = directory + 2 + std::uint64_t{12} * i;
        const std::uint32_t tag = block.number(entry, 2);
        const std::uint32_t type = block.number(entry + 2, 2);
        if (tag == tagOrientation && type == typeShort) {
            facts.orientation = orientationOf(block.number(entry + 8, 2));
        } else if (tag == tagResolutionUnit && type == typeShort) {
            unitsPerInch = block.number(entry + 8, 2) == 3 ? 2.54 : 1;
        } else if (tag == tagXResolution && type == typeRational) {
            const std::uint64_t at = block.number(entry + 8, 4);
            const double divisor = block.number(at + 4, 4);
            resolution = divisor > 0 ? block.number(at, 4) / divisor : 0;
        }
    }
    facts.dotsPerInch = wholeDotsPerInch(resolution, unitsPerInch);
    return facts;
}

} // namespace veldara
