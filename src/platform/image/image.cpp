#include "platform/image/image.h"

#include "platform/error.h"

#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <utility>

namespace veldara {

namespace {

// Whether a rectangle lies within a width x height picture, without overflow.
bool liesWithin(int left, int top, int width, int height, int outerWidth, int outerHeight) {
    return left >= 0 && top >= 0 && width >= 0 && height >= 0 && left <= outerWidth - width &&
           top <= outerHeight - height;
}

[[noreturn]] void refuseCut(int left, int top, int width, int height, int outerWidth,
                            int outerHeight) {
    throw Error("The rectangle of " + std::to_string(width) + " x " + std::to_string(height) +
                " pixels at column " + std::to_string(left) + ", row " + std::to_string(top) +
                " does not lie within the picture of " + std::to_string(outerWidth) + " x " +
                std::to_string(outerHeight) + " pixels.");
}

PixelMemory takePixels(int width, int height) {
    if (width <= 0 || height <= 0) {
        throw Error("A picture cannot be " + std::to_string(width) + " x " +
                    std::to_string(height) + " pixels.");
    }
    const std::uint64_t bytes =
        std::uint64_t{3} * static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
    try {
        if (bytes > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max())) {
            throw std::bad_alloc();
        }
        return takePixelMemory(static_cast<std::size_t>(bytes));
    } catch (const std::bad_alloc&) {
        throw Error("There is not enough memory for a picture of " + std::to_string(width) + " x " +
                    std::to_string(height) + " pixels.");
    }
}

} // namespace

PixelView PixelView::cut(int left, int top, int width, int height) const {
    if (!liesWithin(left, top, width, height, width_, height_)) {
        refuseCut(left, top, width, height, width_, height_);
    }
    return {row(top) + std::ptrdiff_t{3} * left, width, height, stride_};
}

MutablePixelView MutablePixelView::cut(int left, int top, int width, int height) const {
    if (!liesWithin(left, top, width, height, width_, height_)) {
        refuseCut(left, top, width, height, width_, height_);
    }
    return {row(top) + std::ptrdiff_t{3} * left, width, height, stride_};
}

Image::Image(int width, int height)
    : width_(width), height_(height), pixels_(takePixels(width, height)) {}

Image::Image(Image&& other) noexcept
    : dotsPerInch(std::exchange(other.dotsPerInch, 0)),
      colourProfile(std::move(other.colourProfile)), width_(std::exchange(other.width_, 0)),
      height_(std::exchange(other.height_, 0)), pixels_(std::move(other.pixels_)) {
    other.colourProfile.clear();
}

Image& Image::operator=(Image&& other) noexcept {
    if (this != &other) {
        dotsPerInch = std::exchange(other.dotsPerInch, 0);
        colourProfile = std::move(other.colourProfile);
        other.colourProfile.clear();
        width_ = std::exchange(other.width_, 0);
        height_ = std::exchange(other.height_, 0);
        pixels_ = std::move(other.pixels_);
    }
    return *this;
}

Image Image::copyOf(const PixelView& pixels) {
    Image copy(pixels.width(), pixels.height());
    for (int y = 0; y < pixels.height(); ++y) {
        std::memcpy(copy.row(y), pixels.row(y),
                    std::size_t{3} * static_cast<std::size_t>(pixels.width()));
    }
    return copy;
}

Image Image::filled(int width, int height, std::uint8_t c0, std::uint8_t c1, std::uint8_t c2) {
    Image image(width, height);
    std::uint8_t* first = image.row(0);
    for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
        first[3 * x] = c0;
        first[3 * x + 1] = c1;
        first[3 * x + 2] = c2;
    }
    for (int y = 1; y < height; ++y) {
        std::memcpy(image.row(y), first, std::size_t{3} * static_cast<std::size_t>(width));
    }
    return image;
}

PixelView Image::view() const {
    return {pixels_.get(), width_, height_, std::ptrdiff_t{3} * width_};
}

MutablePixelView Image::mutableView() {
    return {pixels_.get(), width_, height_, std::ptrdiff_t{3} * width_};
}

} // namespace veldara
