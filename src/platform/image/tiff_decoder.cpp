// TIFF through libtiff, by strips, tiles, or rows of a strip that is too large to hold.
#include "platform/error.h"
#include "platform/image/memory_limits.h"
#include "platform/image/picture_decoder.h"
#include "platform/image/tiff_layout.h"
#include "platform/image/tiff_samples.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

namespace veldara {

namespace {

// Strips above this size are decoded row by row.
constexpr std::uint64_t largeStrip = 2 << 20;

[[noreturn]] void incomplete() {
    throw Error("its picture data is damaged or incomplete");
}

// The bottom of a bar that some encoders pad, and the one warning that says nothing about pixels.
bool harmless(std::string_view warning) {
    return warning.find("extraneous bytes before marker 0xd9") != std::string_view::npos;
}

class TiffDecoder : public PictureDecoder {
  public:
    explicit TiffDecoder(ByteSource& source);

    ColourProfile colourProfile() override;
    std::optional<ColourProfile> greyProfile() override;
    std::optional<ColourProfile> keepInks() override;
    void wantColumns(int left, int width) override;
    void skipRows(int count) override { nextRow_ += static_cast<std::uint32_t>(count); }
    void readRows(const MutablePixelView& rows) override;

  private:
    TIFF* tiff() const { return input_->handle.get(); }
    ColourProfile fileProfile() const;
    bool grey() const { return TiffSamples(layout_, tiff(), {}).grey(); }
    void start();
    void startRowByRow();
    void checkMessages(const TiffInput& input) const;
    void loadBand(std::uint32_t band);
    void decodeBlock(std::uint32_t block, std::vector<std::uint8_t>& bytes);
    void decodeFax(std::uint32_t block, std::uint32_t rows, std::vector<std::uint8_t>& bytes);
    bool decodeInto(std::uint32_t block, std::vector<std::uint8_t>& bytes);
    void convertRow(std::uint32_t row, std::uint8_t* rgb);
    void readRowByRow(std::uint32_t row, std::uint8_t* rgb);

    ByteSource& source_;
    std::unique_ptr<TiffInput> input_;
    TiffLayout layout_;
    std::optional<TiffSamples> samples_;
    bool inksKept_ = false;
    std::uint32_t left_ = 0;
    std::uint32_t width_ = 0;
    std::uint32_t nextRow_ = 0;

    // The blocks of one band (a strip, or a row of tiles): block column, then plane.
    std::vector<std::vector<std::uint8_t>> blocks_;
    std::optional<std::uint32_t> loadedBand_;
    std::uint32_t firstColumn_ = 0; // of the blocks that the wanted columns need
    std::uint32_t columns_ = 0;
    std::size_t rowSize_ = 0; // bytes of a block's row, or of its row of data units

    // Row by row: an own reader for every plane, as each must advance without going back.
    bool rowByRow_ = false;
    std::vector<std::unique_ptr<TiffInput>> planeInputs_;
    std::vector<std::vector<std::uint8_t>> planeRows_;
    std::uint32_t decodedRows_ = 0;
};

TiffDecoder::TiffDecoder(ByteSource& source)
    : source_(source), input_(std::make_unique<TiffInput>(source)),
      layout_(readTiffLayout(input_->handle.get(), source.size())), width_(layout_.width) {
    facts_.width = static_cast<int>(layout_.width);
    facts_.height = static_cast<int>(layout_.height);
    facts_.dotsPerInch = layout_.dotsPerInch;
    facts_.orientation = layout_.orientation;
}

ColourProfile TiffDecoder::fileProfile() const {
    std::uint32_t size = 0;
    const std::uint8_t* bytes = nullptr;
    if (TIFFGetField(tiff(), TIFFTAG_ICCPROFILE, &size, &bytes) != 1) {
        return {};
    }
    return {bytes, bytes + size};
}

ColourProfile TiffDecoder::colourProfile() {
    const ColourProfile profile = fileProfile();
    if (profile.empty() || layout_.photometric == PHOTOMETRIC_SEPARATED) {
        return {};
    }
    return profileForRgbRows(profile, grey());
}

std::optional<ColourProfile> TiffDecoder::greyProfile() {
    return grey() ? profileForGreyRows(fileProfile()) : std::nullopt;
}

std::optional<ColourProfile> TiffDecoder::keepInks() {
    if (layout_.photometric != PHOTOMETRIC_SEPARATED || layout_.alpha != TiffAlpha::none) {
        return std::nullopt;
    }
    inksKept_ = true;
    return fileProfile();
}

void TiffDecoder::wantColumns(int left, int width) {
    left_ = static_cast<std::uint32_t>(left);
    width_ = static_cast<std::uint32_t>(width);
}

void TiffDecoder::start() {
    samples_.emplace(layout_, tiff(), fileProfile());
    if (inksKept_) {
        samples_->keepInks();
    }
    const bool units = layout_.chromaAcross * layout_.chromaDown > 1;
    if (!layout_.tiled && !units &&
        static_cast<std::uint64_t>(TIFFStripSize64(tiff())) > largeStrip) {
        startRowByRow();
        return;
    }
    firstColumn_ = left_ / layout_.blockWidth;
    columns_ = (left_ + width_ - 1) / layout_.blockWidth - firstColumn_ + 1;
    const auto blockSize = static_cast<std::uint64_t>(layout_.tiled ? TIFFTileSize64(tiff())
                                                                    : TIFFStripSize64(tiff()));
    const auto rowSize = static_cast<std::uint64_t>(
        units ? TIFFVStripSize64(tiff(), layout_.chromaDown)
              : (layout_.tiled ? TIFFTileRowSize64(tiff()) : TIFFScanlineSize64(tiff())));
    if (layout_.tiled && units) {
        const std::uint64_t unitsAcross =
            (layout_.blockWidth + layout_.chromaAcross - 1) / layout_.chromaAcross;
        rowSize_ = static_cast<std::size_t>(
            unitsAcross * (std::uint64_t{layout_.chromaAcross} * layout_.chromaDown + 2));
    } else {
        rowSize_ = static_cast<std::size_t>(rowSize);
    }
    const std::uint64_t rowsOfBlock =
        (layout_.blockHeight + layout_.chromaDown - 1) / layout_.chromaDown;
    if (blockSize == 0 || rowSize_ == 0 || blockSize < rowSize_ * rowsOfBlock) {
        throw Error("its header is damaged");
    }
    const std::uint64_t count = std::uint64_t{columns_} * layout_.planes();
    requireMemory(blockSize * count, facts_.width, facts_.height);
    blocks_.resize(static_cast<std::size_t>(count));
    for (auto& block : blocks_) {
        block.resize(static_cast<std::size_t>(blockSize));
    }
}

void TiffDecoder::startRowByRow() {
    rowByRow_ = true;
    for (unsigned plane = 0; plane < layout_.planes(); ++plane) {
        planeInputs_.push_back(std::make_unique<TiffInput>(source_));
        TIFF* handle = planeInputs_.back()->handle.get();
        readTiffLayout(handle, source_.size()); // selects what the decoder returns
        planeRows_.emplace_back(static_cast<std::size_t>(TIFFScanlineSize64(handle)));
    }
}

void TiffDecoder::checkMessages(const TiffInput& input) const {
    // The fax and JPEG decoders go on after damage, with white or grey in place of pixels.
    const TiffMessages& messages = input.messages;
    if (messages.hasError() || (messages.hasWarning() && !harmless(messages.warning.data()))) {
        incomplete();
    }
}

void TiffDecoder::loadBand(std::uint32_t band) {
    const std::uint32_t row = band * layout_.blockHeight;
    const std::uint32_t rows =
        layout_.tiled ? layout_.blockHeight : std::min(layout_.blockHeight, layout_.height - row);
    for (std::uint32_t column = 0; column < columns_; ++column) {
        for (unsigned plane = 0; plane < layout_.planes(); ++plane) {
            const std::uint32_t block =
                layout_.tiled
                    ? TIFFComputeTile(tiff(), (firstColumn_ + column) * layout_.blockWidth, row, 0,
                                      static_cast<std::uint16_t>(plane))
                    : TIFFComputeStrip(tiff(), row, static_cast<std::uint16_t>(plane));
            std::vector<std::uint8_t>& bytes = blocks_[column * layout_.planes() + plane];
            if (layout_.fax()) {
                decodeFax(block, rows, bytes);
            } else {
                decodeBlock(block, bytes);
            }
        }
    }
    loadedBand_ = band;
}

bool TiffDecoder::decodeInto(std::uint32_t block, std::vector<std::uint8_t>& bytes) {
    input_->messages.clear();
    const auto size = static_cast<tmsize_t>(bytes.size());
    const tmsize_t got = layout_.tiled ? TIFFReadEncodedTile(tiff(), block, bytes.data(), size)
                                       : TIFFReadEncodedStrip(tiff(), block, bytes.data(), size);
    return got > 0;
}

void TiffDecoder::decodeBlock(std::uint32_t block, std::vector<std::uint8_t>& bytes) {
    if (!decodeInto(block, bytes)) {
        incomplete();
    }
    checkMessages(*input_);
}

// A fax strip may say that it ends before its last row, and the library leaves the rest of the
// buffer as it was: what differs after two decodings into different buffers was never coded.
void TiffDecoder::decodeFax(std::uint32_t block, std::uint32_t rows,
                            std::vector<std::uint8_t>& bytes) {
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0x55});
    decodeBlock(block, bytes);
    const std::vector<std::uint8_t> first = bytes;
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0xAA});
    decodeBlock(block, bytes);
    const unsigned padding = 8 * static_cast<unsigned>(rowSize_) - layout_.blockWidth;
    for (std::uint32_t row = 0; row < rows; ++row) {
        const std::size_t last = rowSize_ * (row + 1) - 1;
        if (std::memcmp(&first[last + 1 - rowSize_], &bytes[last + 1 - rowSize_], rowSize_ - 1) !=
                0 ||
            (first[last] ^ bytes[last]) >> padding != 0) {
            incomplete();
        }
    }
}

void TiffDecoder::convertRow(std::uint32_t row, std::uint8_t* rgb) {
    const std::uint32_t band = row / layout_.blockHeight;
    if (loadedBand_ != band) {
        loadBand(band);
    }
    const std::uint32_t rowInBand = row - band * layout_.blockHeight;
    const std::size_t offset = rowSize_ * (rowInBand / layout_.chromaDown);
    std::array<const std::uint8_t*, 16> planes{};
    for (std::uint32_t column = 0; column < columns_; ++column) {
        for (unsigned plane = 0; plane < layout_.planes(); ++plane) {
            planes[plane] = blocks_[column * layout_.planes() + plane].data() + offset;
        }
        const std::uint64_t blockLeft = std::uint64_t{firstColumn_ + column} * layout_.blockWidth;
        const std::uint64_t from = std::max<std::uint64_t>(left_, blockLeft);
        const std::uint64_t to =
            std::min<std::uint64_t>(std::uint64_t{left_} + width_, blockLeft + layout_.blockWidth);
        samples_->convert({planes.data(), layout_.planes()},
                          static_cast<std::size_t>(from - blockLeft),
                          static_cast<std::size_t>(to - from), rowInBand % layout_.chromaDown,
                          rgb + (inksKept_ ? 6 : 3) * (from - left_));
    }
}

void TiffDecoder::readRowByRow(std::uint32_t row, std::uint8_t* rgb) {
    // Within a strip every row has to be decoded to reach the next; whole strips can be passed.
    const std::uint32_t stripStart = row / layout_.blockHeight * layout_.blockHeight;
    decodedRows_ = std::max(decodedRows_, stripStart);
    std::array<const std::uint8_t*, 16> planes{};
    for (; decodedRows_ <= row; ++decodedRows_) {
        for (unsigned plane = 0; plane < layout_.planes(); ++plane) {
            TiffInput& input = *planeInputs_[plane];
            input.messages.clear();
            if (TIFFReadScanline(input.handle.get(), planeRows_[plane].data(), decodedRows_,
                                 static_cast<std::uint16_t>(plane)) != 1) {
                incomplete();
            }
            checkMessages(input);
            planes[plane] = planeRows_[plane].data();
        }
    }
    samples_->convert({planes.data(), layout_.planes()}, left_, width_, 0, rgb);
}

void TiffDecoder::readRows(const MutablePixelView& rows) {
    if (!samples_) {
        start();
    }
    for (int y = 0; y < rows.height(); ++y) {
        if (rowByRow_) {
            readRowByRow(nextRow_++, rows.row(y));
        } else {
            convertRow(nextRow_++, rows.row(y));
        }
    }
}

} // namespace

std::unique_ptr<PictureDecoder> openTiff(ByteSource& source) {
    return std::make_unique<TiffDecoder>(source);
}

} // namespace veldara
