// The numbers of the Windows bitmap format that its reader and its writer share.
#pragma once

#include <cstdint>

namespace veldara::bmp {

constexpr std::uint32_t fileHeaderSize = 14;

// Sizes of the information header, which tell its kind.
constexpr std::uint32_t coreHeader = 12;
constexpr std::uint32_t os2ShortHeader = 16;
constexpr std::uint32_t infoHeader = 40;
constexpr std::uint32_t infoHeaderWithMasks = 52;
constexpr std::uint32_t infoHeaderWithAlpha = 56;
constexpr std::uint32_t os2Header = 64;
constexpr std::uint32_t version4Header = 108;
constexpr std::uint32_t version5Header = 124;

constexpr std::uint32_t plain = 0;
constexpr std::uint32_t runLength8 = 1;
constexpr std::uint32_t runLength4 = 2;
constexpr std::uint32_t bitFields = 3;
constexpr std::uint32_t alphaBitFields = 6;

constexpr std::uint32_t colourSpaceEmbedded = 0x4D424544; // "MBED"
constexpr std::uint32_t intentImages = 4;                 // perceptual

// Offsets in the version 5 header.
constexpr std::uint32_t colourSpaceAt = 56;
constexpr std::uint32_t intentAt = 108;
constexpr std::uint32_t profileOffsetAt = 112;
constexpr std::uint32_t profileSizeAt = 116;

} // namespace veldara::bmp
