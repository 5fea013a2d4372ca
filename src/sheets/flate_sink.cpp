#include "sheets/flate_sink.h"

#include "platform/error.h"
#include "platform/image/ink_rows.h"

#include <algorithm>
#include <array>

#include <zlib.h>

namespace veldara {
namespace {

constexpr std::uint8_t predictorPaeth = 4; // of the PNG predictors

// Each byte less the one of the left, the upper and the upper left byte that is nearest to
// left + up - upper left (in this order where two are as near). Without branches and in numbers of
// 16 bits, so that the compiler makes vector code of it.
void subtractNearest(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* difference,
                     std::size_t count, std::size_t channels) {
    for (std::size_t i = 0; i < std::min(channels, count); ++i) {
        difference[i] = static_cast<std::uint8_t>(row[i] - above[i]); // nothing at the left
    }
    const auto size = [](std::int16_t value) {
        return static_cast<std::int16_t>(value < 0 ? -value : value);
    };
    for (std::size_t i = channels; i < count; ++i) {
        const std::int16_t left = row[i - channels];
        const std::int16_t up = above[i];
        const std::int16_t upperLeft = above[i - channels];
        const auto fromLeft = static_cast<std::int16_t>(up - upperLeft);
        const auto fromUp = static_cast<std::int16_t>(left - upperLeft);
        const std::int16_t toLeft = size(fromLeft);
        const std::int16_t toUp = size(fromUp);
        const std::int16_t toUpperLeft = size(static_cast<std::int16_t>(fromLeft + fromUp));
        const std::int16_t upOrUpperLeft = toUp <= toUpperLeft ? up : upperLeft;
        const std::int16_t nearest = toLeft <= std::min(toUp, toUpperLeft) ? left : upOrUpperLeft;
        difference[i] = static_cast<std::uint8_t>(row[i] - nearest);
    }
}

std::size_t channelsOf(FlateRows kind) {
    switch (kind) {
    case FlateRows::grey:
        return 1;
    case FlateRows::inks:
        return 4;
    case FlateRows::rgb:
        break;
    }
    return 3;
}

class FlateSink : public TileSink {
  public:
    FlateSink(int width, FlateRows kind)
        : kind_(kind), channels_(channelsOf(kind)), width_(static_cast<std::size_t>(width)),
          rowBytes_(channels_ * width_), above_(rowBytes_), filtered_(rowBytes_ + 1),
          packed_(kind == FlateRows::rgb ? 0 : rowBytes_) {
        // Differences of a photo's pixels hardly ever repeat but in runs: looking for runs alone
        // takes half of the time, and photos become as small or smaller.
        constexpr int level = 1;
        constexpr int memoryLevel = 9;
        if (deflateInit2(&stream_, level, Z_DEFLATED, MAX_WBITS, memoryLevel, Z_RLE) != Z_OK) {
            throw Error("There is not enough memory for the document's pictures.");
        }
    }
    ~FlateSink() override { deflateEnd(&stream_); }

    void writeRows(const PixelView& rows) override {
        for (int y = 0; y < rows.height(); ++y) {
            const std::uint8_t* row = packed(rows.row(y));
            filtered_[0] = predictorPaeth;
            subtractNearest(row, above_.data(), filtered_.data() + 1, rowBytes_, channels_);
            std::copy_n(row, rowBytes_, above_.begin());
            compress(filtered_.data(), filtered_.size(), Z_NO_FLUSH);
        }
    }

    std::vector<std::uint8_t> finish() override {
        compress(nullptr, 0, Z_FINISH);
        return std::move(bytes_);
    }

  private:
    // The row with as many bytes for each pixel as the stream has.
    const std::uint8_t* packed(const std::uint8_t* row) {
        switch (kind_) {
        case FlateRows::rgb:
            return row;
        case FlateRows::inks:
            packInks(row, packed_.data(), width_);
            break;
        case FlateRows::grey:
            for (std::size_t x = 0; x < width_; ++x) {
                packed_[x] = row[3 * x];
            }
            break;
        }
        return packed_.data();
    }

    void compress(std::uint8_t* data, std::size_t count, int flush) {
        stream_.next_in = data;
        stream_.avail_in = static_cast<uInt>(count);
        int status = Z_OK;
        do {
            stream_.next_out = block_.data();
            stream_.avail_out = static_cast<uInt>(block_.size());
            status = deflate(&stream_, flush);
            if (status == Z_STREAM_ERROR) {
                throw Error("The document's pictures could not be compressed.");
            }
            bytes_.insert(bytes_.end(), block_.begin(),
                          block_.end() - static_cast<std::ptrdiff_t>(stream_.avail_out));
        } while (stream_.avail_out == 0 || (flush == Z_FINISH && status != Z_STREAM_END));
    }

    const FlateRows kind_;
    const std::size_t channels_;
    const std::size_t width_;
    const std::size_t rowBytes_;
    std::vector<std::uint8_t> above_;
    std::vector<std::uint8_t> filtered_;
    std::vector<std::uint8_t> packed_;
    z_stream stream_{};
    std::array<std::uint8_t, 65536> block_{};
    std::vector<std::uint8_t> bytes_;
};

} // namespace

std::unique_ptr<TileSink> openFlateSink(int width, FlateRows kind) {
    return std::make_unique<FlateSink>(width, kind);
}

} // namespace veldara
