#include "platform/image/font_face.h"

#include "platform/error.h"

namespace veldara {

FontFace::FontFace(std::span<const std::uint8_t> bytes) {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        throw Error("The font library cannot be used.");
    }
    library_.reset(library);
    FT_Face face = nullptr;
    if (FT_New_Memory_Face(library, bytes.data(), static_cast<FT_Long>(bytes.size()), 0, &face) !=
        0) {
        throw Error("The font cannot be read.");
    }
    face_.reset(face);
}

} // namespace veldara
