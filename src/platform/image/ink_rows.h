// Pictures of four printing inks, row by row without any change of colour. Rows of inks travel as
// RGB rows of twice the width, so that whatever carries those carries them, too.
#pragma once

#include "platform/image/codec.h"
#include "platform/image/picture_decoder.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

namespace veldara {

struct InkPicture {
    int width = 0; // of the picture as it is stored
    int height = 0;
    Orientation orientation = Orientation::upright; // the rows are not turned by it
    ColourProfile profile;                          // of the inks; empty: none

    // Stored rows. Column x of the picture is columns 2 x and 2 x + 1 here, and only such pairs may
    // be asked for: (cyan, magenta, yellow) and (black, 0, 0), 255 for full ink.
    std::unique_ptr<RowReader> rows;
};

// Nothing when the file holds other colours, or inks with transparency. Throws Error that names it.
std::optional<InkPicture> openInkPicture(const std::filesystem::path& file);

// From such pairs to four bytes a pixel.
void packInks(const std::uint8_t* pairs, std::uint8_t* inks, std::size_t pixels);

} // namespace veldara
