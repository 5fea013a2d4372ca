// A font that FreeType reads from memory.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace veldara {

// To be used by one thread at a time.
class FontFace {
  public:
    // bytes: of a font file; they must outlive the face. Throws Error when there is no font in
    // them.
    explicit FontFace(std::span<const std::uint8_t> bytes);

    FT_Face get() const { return face_.get(); }

  private:
    struct DoneLibrary {
        void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    };
    struct DoneFace {
        void operator()(FT_Face face) const { FT_Done_Face(face); }
    };

    std::unique_ptr<std::remove_pointer_t<FT_Library>, DoneLibrary> library_;
    std::unique_ptr<std::remove_pointer_t<FT_Face>, DoneFace> face_;
};

} // namespace veldara
