#include "platform/image/bmp_run_length.h"

#include "platform/error.h"
#include "platform/image/memory_limits.h"

#include <array>
#include <optional>

namespace veldara {

namespace {

constexpr std::uint8_t endOfLine = 0;
constexpr std::uint8_t endOfBitmap = 1;
constexpr std::uint8_t jump = 2;

[[noreturn]] void incomplete() {
    throw Error("its picture data is damaged or incomplete");
}

// One byte after the other, through a buffer.
class ByteStream {
  public:
    ByteStream(ByteSource& source, std::uint64_t position) : source_(source), position_(position) {}

    std::optional<std::uint8_t> next() {
        if (at_ == filled_) {
            filled_ = source_.readAt(position_, buffer_.data(), buffer_.size());
            position_ += filled_;
            at_ = 0;
            if (filled_ == 0) {
                return std::nullopt;
            }
        }
        return buffer_[at_++];
    }

    std::uint8_t must() {
        const std::optional<std::uint8_t> byte = next();
        if (!byte) {
            incomplete();
        }
        return *byte;
    }

  private:
    ByteSource& source_;
    std::uint64_t position_;
    std::array<std::uint8_t, 65536> buffer_{};
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
};

// The indices and the place where the next one goes. Rows are counted from the bottom.
class Canvas {
  public:
    Canvas(int width, int height)
        : width_(static_cast<std::size_t>(width)), height_(static_cast<std::size_t>(height)),
          indices_(width_ * height_) {}

    void paint(std::uint8_t index) {
        if (x_ >= width_ || y_ >= height_) {
            incomplete();
        }
        indices_[(height_ - 1 - y_) * width_ + x_++] = index;
    }
    void nextLine() {
        x_ = 0;
        ++y_;
    }
    void jumpBy(std::size_t right, std::size_t up) {
        x_ += right;
        y_ += up;
    }
    bool lastRowBegun() const { return y_ >= height_ || (y_ == height_ - 1 && x_ > 0); }
    bool lastRowFull() const { return y_ >= height_ || (y_ == height_ - 1 && x_ >= width_); }
    std::vector<std::uint8_t> take() { return std::move(indices_); }

  private:
    std::size_t width_;
    std::size_t height_;
    std::size_t x_ = 0;
    std::size_t y_ = 0;
    std::vector<std::uint8_t> indices_;
};

void paintRun(Canvas& canvas, unsigned count, std::uint8_t value, bool nibbles) {
    for (unsigned i = 0; i < count; ++i) {
        const unsigned index = !nibbles ? value : i % 2 == 0 ? value >> 4U : value & 15U;
        canvas.paint(static_cast<std::uint8_t>(index));
    }
}

void paintLiterally(Canvas& canvas, ByteStream& stream, unsigned count, bool nibbles) {
    const unsigned bytes = nibbles ? (count + 1) / 2 : count;
    for (unsigned i = 0; i < bytes; ++i) {
        const std::uint8_t value = stream.must();
        paintRun(canvas, nibbles && 2 * i + 2 <= count ? 2 : 1, value, nibbles);
    }
    if (bytes % 2 != 0) {
        stream.must(); // literal stretches are padded to 16 bits
    }
}

} // namespace

std::vector<std::uint8_t> decodeRunLength(ByteSource& source, const BmpHeader& header) {
    const std::uint64_t size =
        static_cast<std::uint64_t>(header.width) * static_cast<std::uint64_t>(header.height);
    requireMemory(size, header.width, header.height);
    Canvas canvas(header.width, header.height);
    ByteStream stream(source, header.pixelsAt);
    const bool nibbles = header.bitsPerPixel == 4;
    while (true) {
        const std::optional<std::uint8_t> count = stream.next();
        const std::optional<std::uint8_t> value = count ? stream.next() : std::nullopt;
        if (!value) { // no end code: good only when nothing was left to paint
            if (!canvas.lastRowFull()) {
                incomplete();
            }
            return canvas.take();
        }
        if (*count > 0) {
            paintRun(canvas, *count, *value, nibbles);
        } else if (*value == endOfLine) {
            canvas.nextLine();
        } else if (*value == endOfBitmap) {
            if (!canvas.lastRowBegun()) {
                incomplete();
            }
            return canvas.take();
        } else if (*value == jump) {
            const std::uint8_t right = stream.must();
            canvas.jumpBy(right, stream.must());
        } else {
            paintLiterally(canvas, stream, *value, nibbles);
        }
    }
}

} // namespace veldara
