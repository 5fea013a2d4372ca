// A picture in memory: 8-bit RGB, row 0 at the top, rows contiguous; and views of rectangles of it.
#pragma once

#include "platform/image/pixel_memory.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldara {

// A read-only rectangle of somebody else's pixels. Byte of channel c, column x, row y is
// row(y)[3 * x + c]. Cutting a view out of a view copies nothing.
class PixelView {
  public:
    PixelView() = default;
    PixelView(const std::uint8_t* pixels, int width, int height, std::ptrdiff_t stride)
        : pixels_(pixels), width_(width), height_(height), stride_(stride) {}

    int width() const { return width_; }
    int height() const { return height_; }
    std::ptrdiff_t stride() const { return stride_; } // bytes from one row to the next
    bool empty() const { return width_ <= 0 || height_ <= 0; }
    const std::uint8_t* row(int y) const { return pixels_ + y * stride_; }

    // The rectangle with the given left column and top row. Throws Error when it leaves the view.
    PixelView cut(int left, int top, int width, int height) const;

  private:
    const std::uint8_t* pixels_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    std::ptrdiff_t stride_ = 0;
};

// The same with the right to write.
class MutablePixelView {
  public:
    MutablePixelView() = default;
    MutablePixelView(std::uint8_t* pixels, int width, int height, std::ptrdiff_t stride)
        : pixels_(pixels), width_(width), height_(height), stride_(stride) {}

    int width() const { return width_; }
    int height() const { return height_; }
    std::ptrdiff_t stride() const { return stride_; }
    std::uint8_t* row(int y) const { return pixels_ + y * stride_; }
    MutablePixelView cut(int left, int top, int width, int height) const;
    operator PixelView() const { return {pixels_, width_, height_, stride_}; }

  private:
    std::uint8_t* pixels_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    std::ptrdiff_t stride_ = 0;
};

// An ICC colour profile as the file carried it (RGB or grey); empty when there is none.
using ColourProfile = std::vector<std::uint8_t>;

// A picture that owns its pixels. Movable; copying is asked for by name, because the only full copy
// of a photo is the photo.
class Image {
  public:
    Image() = default;

    // A picture of that size with undefined pixels. Throws Error when a side is not positive or the
    // there is not enough memory.
    Image(int width, int height);

    Image(Image&& other) noexcept;
    Image& operator=(Image&& other) noexcept;
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    ~Image() = default;

    static Image copyOf(const PixelView& pixels);
    static Image filled(int width, int height, std::uint8_t c0, std::uint8_t c1, std::uint8_t c2);

    int width() const { return width_; }
    int height() const { return height_; }
    bool empty() const { return width_ == 0; }
    std::size_t byteCount() const { return rowBytes() * static_cast<std::size_t>(height_); }
    std::uint8_t* row(int y) { return pixels_.get() + rowBytes() * static_cast<std::size_t>(y); }
    const std::uint8_t* row(int y) const {
        return pixels_.get() + rowBytes() * static_cast<std::size_t>(y);
    }
    PixelView view() const;
    MutablePixelView mutableView();

    int dotsPerInch = 0; // 0: not known
    ColourProfile colourProfile;

  private:
    std::size_t rowBytes() const { return std::size_t{3} * static_cast<std::size_t>(width_); }

    int width_ = 0;
    int height_ = 0;
    PixelMemory pixels_;
};

} // namespace veldara
