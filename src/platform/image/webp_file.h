// The container of a WebP file: where in it the picture and what belongs to it lie.
#pragma once

#include "platform/image/byte_source.h"

#include <cstdint>

namespace veldara {

// A stretch of the file; size 0: there is none.
struct FilePart {
    std::uint64_t at = 0;
    std::uint64_t size = 0;
};

struct WebpFile {
    int width = 0; // of the canvas
    int height = 0;
    int left = 0; // where the picture, or the first one of an animation, lies on the canvas
    int top = 0;
    bool lossless = false;
    FilePart picture; // its opacity and its pixels, chunk after chunk
    FilePart profile;
    FilePart exif;
};

// Walks over the chunks without reading what is in them. Throws Error with the bare reason.
WebpFile readWebpFile(ByteSource& source);

} // namespace veldara
