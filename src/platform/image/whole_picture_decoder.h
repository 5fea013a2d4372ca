// What decoders share whose library gives a picture only whole: rows and columns out of its pixels.
#pragma once

#include "platform/image/picture_decoder.h"

#include <cstddef>
#include <cstdint>

namespace veldara {

// 8-bit pixels of three channels (RGB) or four (RGB and opacity), in the memory of their owner.
struct DecodedPixels {
    const std::uint8_t* first = nullptr; // top left
    std::size_t stride = 0;              // bytes from one row to the next
    unsigned channels = 3;
    bool premultiplied = false; // the colours are already multiplied by the opacity
};

// Pixels as RGB, transparent ones on white.
void rgbOnWhite(const std::uint8_t* pixels, unsigned channels, bool premultiplied,
                std::size_t count, std::uint8_t* rgb);

class WholePictureDecoder : public PictureDecoder {
  public:
    void wantColumns(int left, int width) override;
    void skipRows(int count) override { nextRow_ += count; }
    void readRows(const MutablePixelView& rows) override;

  protected:
    // All pixels as stored, facts_.width x facts_.height. Called once, before the first row; what
    // it returns stays valid as long as the decoder. Throws Error with the bare reason.
    virtual DecodedPixels decode() = 0;

  private:
    DecodedPixels pixels_;
    int left_ = 0;
    int width_ = 0; // 0: all columns
    int nextRow_ = 0;
};

} // namespace veldara
