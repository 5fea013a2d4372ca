#include "platform/image/tile_format.h"

#include "platform/error.h"
#include "platform/text/characters.h"

#include <algorithm>
#include <array>

namespace veldara {

// Each in the file of its encoder.
std::unique_ptr<PictureEncoder> openJpegEncoder(const PictureToEncode& picture);
std::unique_ptr<PictureEncoder> openTiffEncoder(const PictureToEncode& picture);
std::unique_ptr<PictureEncoder> openBmpEncoder(const PictureToEncode& picture);

namespace {

constexpr std::array<TileFormatRow, 3> table{{
    {TileFormat::bmp, ".bmp", "Bitmap (*.bmp)", openBmpEncoder},
    {TileFormat::tiff, ".tif", "Tiff (*.tif)", openTiffEncoder},
    {TileFormat::jpeg, ".jpg", "Jpeg (*.jpg)", openJpegEncoder},
}};

} // namespace

std::span<const TileFormatRow> tileFormats() {
    return table;
}

const TileFormatRow& tileFormatRow(TileFormat format) {
    const auto* const found = std::find_if(
        table.begin(), table.end(), [&](const TileFormatRow& row) { return row.format == format; });
    if (found == table.end()) {
        throw Error("there is no such type of file");
    }
    return *found;
}

std::string extensionOf(TileFormat format) {
    return std::string(tileFormatRow(format).ending);
}

std::optional<TileFormat> tileFormatByName(const std::string& name) {
    if (characterCount(name) < 3) {
        return std::nullopt;
    }
    const std::string ending = "." + lowerCase(sRight(name, 3));
    for (const TileFormatRow& row : table) {
        if (row.ending == ending) {
            return row.format;
        }
    }
    return std::nullopt;
}

} // namespace veldara
