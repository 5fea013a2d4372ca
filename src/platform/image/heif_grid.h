// The grid of tiles that a HEIC or AVIF photo is stored as by most telephones, from the boxes of
// its container (ISO/IEC 23008-12). libheif decodes a grid only whole; with the tiles' numbers it
// can be asked for one after the other.
#pragma once

#include "platform/image/byte_source.h"
#include "platform/image/picture_decoder.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace veldara {

struct HeifGrid {
    int columns = 0;
    int rows = 0;
    int width = 0; // of the whole picture, before it is turned; the last tiles may reach beyond it
    int height = 0;
    Orientation orientation = Orientation::upright;
    std::vector<std::uint32_t> tiles; // numbers of the items, row by row

    // Where in the file the bytes lie whose lowest bit hides these items: the library hands out no
    // hidden ones.
    std::vector<std::uint64_t> hidingBytes;
};

// Nothing when the primary picture is no grid, or one that is not simply tiles side by side
// (mirrored, cut, with tiles that are turned themselves), or when the boxes are damaged: the
// library decides then.
// Throws Error with the bare reason when a grid's size is not the one that its properties say: the
// library takes memory by the one and writes by the other. The same when pictures are put together
// of each other, which the library would follow without an end.
std::optional<HeifGrid> readHeifGrid(ByteSource& source);

} // namespace veldara
