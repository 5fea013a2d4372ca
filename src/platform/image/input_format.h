// The kinds of picture file that can be read, one row of a table each. To add one: write its
// decoder, and give it a row in input_format.cpp.
#pragma once

#include "platform/image/codec.h"
#include "platform/image/picture_decoder.h"
#include "platform/image/tile_format.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace veldara {

struct InputFormat {
    std::string_view name;                     // as users know it: "JPEG"
    std::span<const std::string_view> endings; // lower case with the dot, the usual one first
    std::string_view mediaType;                // of the desktop: "image/jpeg"
    std::string_view filterText;               // its entry in the window's file filter; empty: none
    bool lossy = false;                        // the usual files of this kind give up detail
    std::optional<TileFormat> tileFormat;      // the same kind as tiles can be written in

    // Whether a file that starts with these bytes (the whole file, or its first signatureSize) is
    // of this kind.
    bool (*matches)(std::span<const std::uint8_t> start) = nullptr;

    // Reads the header from a source that matches; the source outlives the decoder. Throws Error
    // with the bare reason.
    std::unique_ptr<PictureDecoder> (*open)(ByteSource& source) = nullptr;
};

// What `matches` needs at most of a file's start.
constexpr std::size_t signatureSize = 64;

// Every row. Addresses of rows stay valid, so a row stands for its format.
std::span<const InputFormat> inputFormats();

// The row with that name, which must be there.
const InputFormat& inputFormat(std::string_view name);

// What tiles of a photo are written as unless the user says otherwise: the photo's own kind when
// tiles can be of that kind, else JPEG for a lossy photo and TIFF for a lossless one.
TileFormat defaultTileFormat(const ImageHeader& header);

// The row for a file's content. Throws Error with the bare reason when the file is empty or of no
// kind that can be read.
const InputFormat& inputFormatOf(ByteSource& source);

} // namespace veldara
