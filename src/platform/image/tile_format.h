// The kinds of picture file that tiles can be written as, one row of a table each.
#pragma once

#include "platform/image/picture_encoder.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace veldara {

// The numbers are the file type codes of the save operation.
enum class TileFormat { jpeg = 1, tiff = 3, bmp = 6 };

struct TileFormatRow {
    TileFormat format = TileFormat::jpeg;
    std::string_view ending;     // with the dot: ".jpg"
    std::string_view filterText; // its entry in a save dialog: "Jpeg (*.jpg)"

    // Throws Error with the bare reason when the format cannot hold the picture.
    std::unique_ptr<PictureEncoder> (*open)(const PictureToEncode& picture) = nullptr;
};

// Every row, in the order in which they are offered.
std::span<const TileFormatRow> tileFormats();

// The row of a format. Throws Error with the bare reason for a number that stands for none.
const TileFormatRow& tileFormatRow(TileFormat format);

// ".jpg", ".tif" or ".bmp".
std::string extensionOf(TileFormat format);

// The format by a name's last three characters, whatever their case; nothing for another ending.
// "a-jpg" is a JPEG by this rule, and "a.jpeg" is none.
std::optional<TileFormat> tileFormatByName(const std::string& name);

} // namespace veldara
