// PNG through libpng: row by row, or whole when the file is interlaced.
#include "platform/error.h"
#include "platform/image/coded_colour.h"
#include "platform/image/colour.h"
#include "platform/image/exif.h"
#include "platform/image/memory_limits.h"
#include "platform/image/picture_decoder.h"
#include "platform/image/pixel_memory.h"
#include "platform/image/whole_picture_decoder.h"

#include <array>
#include <csetjmp>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include <png.h>

namespace veldara {

namespace {

constexpr const char* damagedHeader = "its header is damaged or incomplete";
constexpr const char* damagedPixels = "its picture data is damaged or incomplete";

// The library's reading structure. It fails by jumping out; `guard` makes that an Error on this
// side, so that no exception passes through C code.
class PngFile {
  public:
    explicit PngFile(ByteSource& source) : source_(source) {
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, leave, ignore);
        info_ = png_ != nullptr ? png_create_info_struct(png_) : nullptr;
        if (info_ == nullptr) {
            png_destroy_read_struct(&png_, nullptr, nullptr);
            throw Error("there is not enough memory");
        }
        png_set_read_fn(png_, this, read);
    }
    PngFile(const PngFile&) = delete;
    PngFile& operator=(const PngFile&) = delete;
    ~PngFile() { png_destroy_read_struct(&png_, &info_, nullptr); }

    png_structp png() const { return png_; }
    png_infop info() const { return info_; }

    // Calls the library. What is called may own nothing that needs a destructor: a failure jumps
    // over it.
    template <class Work>
    void guard(const char* reason, Work&& work) {
        if (setjmp(jump_) != 0) { // NOLINT: the library knows no other way
            throw Error(reason);
        }
        std::forward<Work>(work)();
    }

  private:
    [[noreturn]] static void leave(png_structp png, png_const_charp /*text*/) {
        auto* file = static_cast<PngFile*>(png_get_error_ptr(png));
        std::longjmp(file->jump_, 1); // NOLINT
    }
    static void ignore(png_structp /*png*/, png_const_charp /*text*/) {}

    static void read(png_structp png, png_bytep bytes, png_size_t count) {
        auto* file = static_cast<PngFile*>(png_get_io_ptr(png));
        bool whole = false;
        try {
            whole = file->source_.readFully(file->position_, bytes, count);
        } catch (const Error&) {
            whole = false; // the drive failed
        }
        file->position_ += count;
        if (!whole) {
            png_error(png, "the file ends early");
        }
    }

    ByteSource& source_;
    std::uint64_t position_ = 0;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    std::jmp_buf jump_{};
};

class PngDecoder : public PictureDecoder {
  public:
    explicit PngDecoder(ByteSource& source);

    ColourProfile colourProfile() override { return profileForRgbRows(ownProfile(), grey_); }
    std::optional<ColourProfile> greyProfile() override;
    void wantColumns(int left, int width) override;
    void skipRows(int count) override { nextRow_ += count; }
    void readRows(const MutablePixelView& rows) override;

  private:
    void readHeader();
    void checkSize(std::uint64_t fileSize) const;
    std::optional<CodedColour> codedColour() const;
    ColourProfile gammaProfile() const;
    ColourProfile ownProfile() const;
    void start();
    void readInterlaced();
    const std::uint8_t* decodedRow(int row);

    PngFile file_;
    bool interlaced_ = false;
    bool grey_ = false;
    bool started_ = false;
    unsigned channels_ = 3;
    std::size_t rowSize_ = 0;
    std::vector<std::uint8_t> line_;
    PixelMemory whole_; // all rows of an interlaced picture
    int left_ = 0;
    int width_ = 0;
    int decodedRows_ = 0;
    int nextRow_ = 0;
};

PngDecoder::PngDecoder(ByteSource& source) : file_(source) {
    file_.guard(damagedHeader, [this] {
        const std::array<png_byte, 5> codedColourChunk{'c', 'I', 'C', 'P', 0};
        png_set_keep_unknown_chunks(file_.png(), PNG_HANDLE_CHUNK_ALWAYS, codedColourChunk.data(),
                                    1);
        png_read_info(file_.png(), file_.info());
    });
    readHeader();
    checkSize(source.size());
}

void PngDecoder::readHeader() {
    png_structp png = file_.png();
    png_infop info = file_.info();
    facts_.width = static_cast<int>(png_get_image_width(png, info));
    facts_.height = static_cast<int>(png_get_image_height(png, info));
    width_ = facts_.width;
    interlaced_ = png_get_interlace_type(png, info) != PNG_INTERLACE_NONE;
    grey_ = (png_get_color_type(png, info) & PNG_COLOR_MASK_COLOR) == 0;
    facts_.streams = !interlaced_;
    if (interlaced_) {
        facts_.heldBytes = std::uint64_t{4} * static_cast<unsigned>(facts_.width) *
                           static_cast<unsigned>(facts_.height);
    }
    png_uint_32 size = 0;
    png_bytep block = nullptr;
    if (png_get_eXIf_1(png, info, &size, &block) != 0) {
        const ExifFacts exif = readExif({block, size});
        facts_.orientation = exif.orientation;
        facts_.dotsPerInch = exif.dotsPerInch;
    }
    png_uint_32 across = 0;
    png_uint_32 down = 0;
    int unit = 0;
    if (png_get_pHYs(png, info, &across, &down, &unit) != 0 && unit == PNG_RESOLUTION_METER) {
        facts_.dotsPerInch = wholeDotsPerInch(across, 0.0254);
    }
}

void PngDecoder::checkSize(std::uint64_t fileSize) const {
    // A byte of deflated data stands for at most 1032.
    const std::uint64_t stored =
        png_get_rowbytes(file_.png(), file_.info()) * static_cast<std::uint64_t>(facts_.height);
    if (stored / 1032 > fileSize) {
        throw Error(tooFewBytesReason(facts_.width, facts_.height));
    }
}

// The newest kind of description, which older libraries return as an unknown chunk.
std::optional<CodedColour> PngDecoder::codedColour() const {
    png_unknown_chunkp chunks = nullptr;
    const int count = png_get_unknown_chunks(file_.png(), file_.info(), &chunks);
    for (int i = 0; i < count; ++i) {
        const png_unknown_chunk& chunk = chunks[i];
        // Matrix 0 and the full range: RGB as it is in every PNG.
        if (std::memcmp(chunk.name, "cICP", 4) == 0 && chunk.size == 4 && chunk.data[2] == 0 &&
            chunk.data[3] == 1) {
            return CodedColour{chunk.data[0], chunk.data[1]};
        }
    }
    return std::nullopt;
}

ColourProfile PngDecoder::gammaProfile() const {
    double gamma = 0;
    if (png_get_gAMA(file_.png(), file_.info(), &gamma) == 0 || gamma <= 0) {
        return {};
    }
    Chromaticities at;
    png_get_cHRM(file_.png(), file_.info(), &at.whiteX, &at.whiteY, &at.redX, &at.redY, &at.greenX,
                 &at.greenY, &at.blueX, &at.blueY);
    return profileOf(1 / gamma, at);
}

// As the file has it, or describes it by numbers.
ColourProfile PngDecoder::ownProfile() const {
    if (const std::optional<CodedColour> coded = codedColour()) {
        return profileOf(*coded);
    }
    png_charp name = nullptr;
    int method = 0;
    png_bytep bytes = nullptr;
    png_uint_32 size = 0;
    if (png_get_iCCP(file_.png(), file_.info(), &name, &method, &bytes, &size) != 0) {
        return {bytes, bytes + size};
    }
    int intent = 0;
    return png_get_sRGB(file_.png(), file_.info(), &intent) != 0 ? ColourProfile{} : gammaProfile();
}

std::optional<ColourProfile> PngDecoder::greyProfile() {
    return grey_ ? profileForGreyRows(ownProfile()) : std::nullopt;
}

void PngDecoder::wantColumns(int left, int width) {
    left_ = left;
    width_ = width;
}

void PngDecoder::start() {
    started_ = true;
    file_.guard(damagedHeader, [this] {
        png_structp png = file_.png();
        png_set_expand(png);
        png_set_scale_16(png);
        png_set_gray_to_rgb(png);
        png_set_interlace_handling(png);
        png_read_update_info(png, file_.info());
    });
    channels_ = png_get_channels(file_.png(), file_.info());
    rowSize_ = png_get_rowbytes(file_.png(), file_.info());
    if ((channels_ != 3 && channels_ != 4) ||
        rowSize_ != static_cast<std::size_t>(facts_.width) * channels_) {
        throw Error(damagedHeader);
    }
    if (interlaced_) {
        readInterlaced();
    } else {
        line_.resize(rowSize_);
    }
}

void PngDecoder::readInterlaced() {
    const std::size_t bytes = rowSize_ * static_cast<std::size_t>(facts_.height);
    requireMemory(bytes, facts_.width, facts_.height);
    whole_ = takePixelMemory(bytes);
    std::memset(whole_.get(), 0, bytes);
    file_.guard(damagedPixels, [this] {
        for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
            for (int y = 0; y < facts_.height && !shallStop(); ++y) {
                png_read_row(file_.png(), &whole_[rowSize_ * static_cast<std::size_t>(y)], nullptr);
            }
        }
    });
    if (shallStop()) {
        throw Error("its decoding was stopped");
    }
}

const std::uint8_t* PngDecoder::decodedRow(int row) {
    if (interlaced_) {
        return &whole_[rowSize_ * static_cast<std::size_t>(row)];
    }
    file_.guard(damagedPixels, [this, row] {
        for (; decodedRows_ <= row; ++decodedRows_) {
            png_read_row(file_.png(), line_.data(), nullptr);
        }
    });
    return line_.data();
}

void PngDecoder::readRows(const MutablePixelView& rows) {
    if (!started_) {
        start();
    }
    for (int y = 0; y < rows.height(); ++y) {
        const std::uint8_t* row = decodedRow(nextRow_ + y);
        rgbOnWhite(row + static_cast<std::size_t>(left_) * channels_, channels_,
                   /*premultiplied=*/false, static_cast<std::size_t>(width_), rows.row(y));
    }
    nextRow_ += rows.height();
}

} // namespace

std::unique_ptr<PictureDecoder> openPng(ByteSource& source) {
    return std::make_unique<PngDecoder>(source);
}

} // namespace veldara
