// Our own writer of the one kind of TIFF that the program makes: 8-bit RGB in strips, with LZW and
// the horizontal predictor.
#include "platform/error.h"
#include "platform/image/lzw_encoder.h"
#include "platform/image/picture_encoder.h"

#include <algorithm>
#include <array>

#include <tiff.h>

namespace veldara {

namespace {

// Small enough that readers need little memory, large enough that the code tables pay.
constexpr std::size_t stripSize = 256 << 10;

// Offsets of an ordinary TIFF file are 32 bits wide, and LZW can make noise larger than it was.
bool needsWideOffsets(std::uint64_t pixelBytes) {
    return pixelBytes > 2'800'000'000;
}

void putNumber(std::vector<std::uint8_t>& bytes, std::uint64_t value, unsigned size) {
    for (unsigned i = 0; i < size; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
    }
}

std::vector<std::uint8_t> numbers(std::initializer_list<std::uint64_t> values, unsigned size) {
    std::vector<std::uint8_t> bytes;
    for (const std::uint64_t value : values) {
        putNumber(bytes, value, size);
    }
    return bytes;
}

// The fields of the page, in ascending order of their tags, as the format asks for.
class Directory {
  public:
    explicit Directory(bool wide) : wide_(wide) {}

    void add(unsigned tag, unsigned type, std::uint64_t count, std::vector<std::uint8_t> value) {
        fields_.push_back({tag, type, count, std::move(value)});
    }
    void addShort(unsigned tag, unsigned value) { add(tag, TIFF_SHORT, 1, numbers({value}, 2)); }
    void addLong(unsigned tag, std::uint64_t value) { add(tag, TIFF_LONG, 1, numbers({value}, 4)); }

    // Appends the values that do not fit into their fields, then the directory; returns its place.
    std::uint64_t appendTo(std::vector<std::uint8_t>& file) {
        const std::size_t room = wide_ ? 8 : 4;
        for (Field& field : fields_) {
            if (field.value.size() > room) {
                file.resize((file.size() + 1) / 2 * 2); // values start at even places
                const std::uint64_t place = file.size();
                file.insert(file.end(), field.value.begin(), field.value.end());
                field.value = numbers({place}, static_cast<unsigned>(room));
            }
            field.value.resize(room);
        }
        file.resize((file.size() + 7) / 8 * 8);
        const std::uint64_t place = file.size();
        putNumber(file, fields_.size(), wide_ ? 8 : 2);
        for (const Field& field : fields_) {
            putNumber(file, field.tag, 2);
            putNumber(file, field.type, 2);
            putNumber(file, field.count, wide_ ? 8 : 4);
            file.insert(file.end(), field.value.begin(), field.value.end());
        }
        putNumber(file, 0, wide_ ? 8 : 4); // no other page
        return place;
    }

  private:
    struct Field {
        unsigned tag;
        unsigned type;
        std::uint64_t count;
        std::vector<std::uint8_t> value;
    };

    bool wide_;
    std::vector<Field> fields_;
};

class TiffEncoder : public PictureEncoder {
  public:
    explicit TiffEncoder(const PictureToEncode& picture)
        : picture_(picture), rowSize_(std::size_t{3} * static_cast<std::size_t>(picture.width)),
          rowsPerStrip_(std::clamp<std::size_t>(stripSize / rowSize_, 1,
                                                static_cast<std::size_t>(picture.height))),
          wide_(needsWideOffsets(std::uint64_t{rowSize_} * static_cast<unsigned>(picture.height))),
          strip_(rowSize_ * rowsPerStrip_) {
        // Few photographs grow by being compressed.
        reserveLargePages(file_, rowSize_ * static_cast<std::size_t>(picture.height));
        file_ = {'I', 'I'};
        putNumber(file_, wide_ ? 43 : 42, 2);
        if (wide_) {
            putNumber(file_, 8, 2); // bytes of an offset
            putNumber(file_, 0, 2);
        }
        file_.resize(wide_ ? 16 : 8);
    }

    void writeRows(const PixelView& rows) override {
        for (int y = 0; y < rows.height(); ++y) {
            predictRow(rows.row(y), &strip_[rowSize_ * rowsInStrip_]);
            if (++rowsInStrip_ == rowsPerStrip_) {
                writeStrip();
            }
        }
    }

    std::vector<std::uint8_t> finish() override {
        if (rowsInStrip_ > 0) {
            writeStrip();
        }
        const std::uint64_t place = directory().appendTo(file_);
        const std::vector<std::uint8_t> pointer = numbers({place}, wide_ ? 8 : 4);
        std::copy(pointer.begin(), pointer.end(), file_.begin() + (wide_ ? 8 : 4));
        if (!wide_ && file_.size() > 0xFFFFFFFF) {
            throw Error("the file would be larger than its format allows");
        }
        return std::move(file_);
    }

  private:
    // Every sample as its difference from the one of the same colour to its left.
    void predictRow(const std::uint8_t* row, std::uint8_t* differences) const {
        std::copy_n(row, 3, differences);
        for (std::size_t i = 3; i < rowSize_; ++i) {
            differences[i] = static_cast<std::uint8_t>(row[i] - row[i - 3]);
        }
    }

    void writeStrip() {
        const std::uint64_t place = file_.size();
        lzw_.encode({strip_.data(), rowSize_ * rowsInStrip_}, file_);
        putNumber(stripPlaces_, place, wide_ ? 8 : 4);
        putNumber(stripSizes_, file_.size() - place, 4);
        rowsInStrip_ = 0;
    }

    Directory directory() {
        const std::uint64_t strips = stripSizes_.size() / 4;
        Directory fields(wide_);
        fields.addLong(TIFFTAG_IMAGEWIDTH, static_cast<std::uint64_t>(picture_.width));
        fields.addLong(TIFFTAG_IMAGELENGTH, static_cast<std::uint64_t>(picture_.height));
        fields.add(TIFFTAG_BITSPERSAMPLE, TIFF_SHORT, 3, numbers({8, 8, 8}, 2));
        fields.addShort(TIFFTAG_COMPRESSION, COMPRESSION_LZW);
        fields.addShort(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        fields.add(TIFFTAG_STRIPOFFSETS, wide_ ? TIFF_LONG8 : TIFF_LONG, strips,
                   std::move(stripPlaces_));
        fields.addShort(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
        fields.addShort(TIFFTAG_SAMPLESPERPIXEL, 3);
        fields.addLong(TIFFTAG_ROWSPERSTRIP, rowsPerStrip_);
        fields.add(TIFFTAG_STRIPBYTECOUNTS, TIFF_LONG, strips, std::move(stripSizes_));
        if (picture_.dotsPerInch > 0) {
            const auto dots = static_cast<std::uint64_t>(picture_.dotsPerInch);
            fields.add(TIFFTAG_XRESOLUTION, TIFF_RATIONAL, 1, numbers({dots, 1}, 4));
            fields.add(TIFFTAG_YRESOLUTION, TIFF_RATIONAL, 1, numbers({dots, 1}, 4));
        }
        fields.addShort(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        if (picture_.dotsPerInch > 0) {
            fields.addShort(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
        }
        fields.addShort(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        if (!picture_.profile.empty()) {
            fields.add(TIFFTAG_ICCPROFILE, TIFF_UNDEFINED, picture_.profile.size(),
                       picture_.profile);
        }
        return fields;
    }

    PictureToEncode picture_;
    std::size_t rowSize_;
    std::size_t rowsPerStrip_;
    bool wide_;
    std::vector<std::uint8_t> strip_;
    std::size_t rowsInStrip_ = 0;
    LzwEncoder lzw_;
    std::vector<std::uint8_t> file_;
    std::vector<std::uint8_t> stripPlaces_; // as the directory wants them
    std::vector<std::uint8_t> stripSizes_;
};

} // namespace

std::unique_ptr<PictureEncoder> openTiffEncoder(const PictureToEncode& picture) {
    return std::make_unique<TiffEncoder>(picture);
}

} // namespace veldara
