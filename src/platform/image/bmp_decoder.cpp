// Windows and OS/2 bitmaps, row by row. Uncompressed rows lie at known places, so that bottom-up
// files stream as well as top-down ones.
#include "platform/error.h"
#include "platform/image/bmp_header.h"
#include "platform/image/bmp_run_length.h"
#include "platform/image/colour.h"
#include "platform/image/picture_decoder.h"

#include <algorithm>
#include <bit>

namespace veldara {

namespace {

// One channel cut out of a pixel by a mask, as 8 bits.
class MaskedChannel {
  public:
    explicit MaskedChannel(std::uint32_t mask)
        : mask_(mask), shift_(mask != 0 ? std::countr_zero(mask) : 0),
          greatest_(mask != 0 ? mask >> shift_ : 1) {}

    std::uint8_t of(std::uint32_t pixel) const {
        const std::uint64_t value = (pixel & mask_) >> shift_;
        return static_cast<std::uint8_t>((value * 255 + greatest_ / 2) / greatest_);
    }

  private:
    std::uint32_t mask_;
    int shift_;
    std::uint64_t greatest_;
};

std::uint8_t onWhite(unsigned colour, unsigned alpha) {
    return static_cast<std::uint8_t>((colour * alpha + 255 * (255 - alpha) + 127) / 255);
}

class BmpDecoder : public PictureDecoder {
  public:
    explicit BmpDecoder(ByteSource& source);

    ColourProfile colourProfile() override { return profileForRgbRows(fileProfile(), grey()); }
    std::optional<ColourProfile> greyProfile() override {
        return grey() ? profileForGreyRows(fileProfile()) : std::nullopt;
    }
    void wantColumns(int left, int width) override;
    void skipRows(int count) override { nextRow_ += count; }
    void readRows(const MutablePixelView& rows) override;

  private:
    bool grey() const { return header_.bitsPerPixel <= 8 && indexed_.grey(); }
    ColourProfile fileProfile() const;
    void readStored(const MutablePixelView& rows);
    void readRunLength(const MutablePixelView& rows);
    void convert(const std::uint8_t* stored, std::uint8_t* rgb) const;
    void convertMasked(const std::uint8_t* stored, std::uint8_t* rgb) const;

    ByteSource& source_;
    BmpHeader header_;
    IndexedPixels indexed_; // of up to eight bits
    std::array<MaskedChannel, 4> channels_;
    std::size_t left_ = 0;
    std::size_t width_ = 0;
    int nextRow_ = 0;
    std::vector<std::uint8_t> block_;   // stored rows, as read
    std::vector<std::uint8_t> indices_; // the whole picture, when run-length coded
};

BmpDecoder::BmpDecoder(ByteSource& source)
    : source_(source), header_(readBmpHeader(source)),
      indexed_(header_.palette,
               header_.bitsPerPixel > 8 || header_.runLengthCoded() ? 8 : header_.bitsPerPixel),
      channels_{MaskedChannel(header_.masks[0]), MaskedChannel(header_.masks[1]),
                MaskedChannel(header_.masks[2]), MaskedChannel(header_.masks[3])},
      width_(static_cast<std::size_t>(header_.width)) {
    facts_.width = header_.width;
    facts_.height = header_.height;
    facts_.dotsPerInch = header_.dotsPerInch;
    facts_.streams = !header_.runLengthCoded();
    if (!facts_.streams) {
        facts_.heldBytes = std::uint64_t{static_cast<unsigned>(header_.width)} *
                           static_cast<unsigned>(header_.height);
    }
}

ColourProfile BmpDecoder::fileProfile() const {
    ColourProfile profile(header_.profileSize);
    if (!source_.readFully(header_.profileAt, profile.data(), profile.size())) {
        return {};
    }
    return profile;
}

void BmpDecoder::wantColumns(int left, int width) {
    left_ = static_cast<std::size_t>(left);
    width_ = static_cast<std::size_t>(width);
}

void BmpDecoder::readRows(const MutablePixelView& rows) {
    if (header_.runLengthCoded()) {
        readRunLength(rows);
    } else {
        readStored(rows);
    }
    nextRow_ += rows.height();
}

void BmpDecoder::readRunLength(const MutablePixelView& rows) {
    if (indices_.empty()) {
        indices_ = decodeRunLength(source_, header_);
    }
    for (int y = 0; y < rows.height(); ++y) {
        indexed_.convert(&indices_[static_cast<std::size_t>(nextRow_ + y) *
                                   static_cast<std::size_t>(header_.width)],
                         left_, width_, rows.row(y));
    }
}

void BmpDecoder::readStored(const MutablePixelView& rows) {
    const std::uint64_t size = header_.storedRowSize;
    // Large reads, small memory: what one row takes, or about a quarter of a megabyte.
    const int most = static_cast<int>(std::max<std::uint64_t>(1, (std::uint64_t{1} << 18) / size));
    for (int done = 0; done < rows.height();) {
        const int count = std::min(most, rows.height() - done);
        const int first = nextRow_ + done;
        const int firstStored = header_.topDown ? first : header_.height - first - count;
        const std::uint64_t at = header_.pixelsAt + size * static_cast<std::uint64_t>(firstStored);
        // The last row of the file may lack its padding.
        const std::uint64_t end =
            std::min(at + size * static_cast<std::uint64_t>(count), source_.size());
        block_.resize(static_cast<std::size_t>(size) * static_cast<std::size_t>(count));
        if (!source_.readFully(at, block_.data(), static_cast<std::size_t>(end - at))) {
            throw Error("the file ends before its last row");
        }
        for (int i = 0; i < count; ++i) {
            const int stored = header_.topDown ? i : count - 1 - i;
            convert(&block_[static_cast<std::size_t>(size) * static_cast<std::size_t>(stored)],
                    rows.row(done + i));
        }
        done += count;
    }
}

void BmpDecoder::convert(const std::uint8_t* stored, std::uint8_t* rgb) const {
    if (header_.bitsPerPixel <= 8) {
        indexed_.convert(stored, left_, width_, rgb);
    } else if (header_.bitsPerPixel != 24) {
        convertMasked(stored, rgb);
    } else {
        stored += 3 * left_;
        for (std::size_t x = 0; x < width_; ++x) {
            rgb[3 * x] = stored[3 * x + 2];
            rgb[3 * x + 1] = stored[3 * x + 1];
            rgb[3 * x + 2] = stored[3 * x];
        }
    }
}

void BmpDecoder::convertMasked(const std::uint8_t* stored, std::uint8_t* rgb) const {
    const std::size_t bytes = header_.bitsPerPixel / 8;
    const bool hasAlpha = header_.masks[3] != 0;
    for (std::size_t i = 0; i < width_; ++i) {
        const std::uint8_t* at = stored + (left_ + i) * bytes;
        std::uint32_t pixel = std::uint32_t{at[0]} | std::uint32_t{at[1]} << 8;
        if (bytes == 4) {
            pixel |= std::uint32_t{at[2]} << 16 | std::uint32_t{at[3]} << 24;
        }
        for (std::size_t c = 0; c < 3; ++c) {
            const std::uint8_t colour = channels_[c].of(pixel);
            rgb[3 * i + c] = hasAlpha ? onWhite(colour, channels_[3].of(pixel)) : colour;
        }
    }
}

} // namespace

std::unique_ptr<PictureDecoder> openBmp(ByteSource& source) {
    return std::make_unique<BmpDecoder>(source);
}

} // namespace veldara
