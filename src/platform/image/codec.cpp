#include "platform/image/codec.h"

#include "platform/error.h"
#include "platform/image/colour.h"
#include "platform/image/ink_rows.h"
#include "platform/image/input_format.h"
#include "platform/image/memory_limits.h"
#include "platform/image/picture_bytes.h"
#include "platform/image/turn.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

namespace veldara {

namespace {

// A picture being decoded: the source, what reads it, and what it is.
struct OpenPicture {
    std::unique_ptr<ByteSource> source;
    std::unique_ptr<PictureDecoder> decoder;
    ImageHeader header;
};

OpenPicture openPicture(std::unique_ptr<ByteSource> source) {
    OpenPicture picture;
    picture.source = std::move(source);
    const InputFormat& format = inputFormatOf(*picture.source);
    picture.header.format = &format;
    picture.decoder = format.open(*picture.source);
    const PictureFacts& facts = picture.decoder->facts();
    picture.header.lossy = format.lossy && !facts.lossless;
    picture.header.width = facts.width;
    picture.header.height = facts.height;
    if (exchangesSides(facts.orientation)) {
        std::swap(picture.header.width, picture.header.height);
    }
    picture.header.dotsPerInch = facts.dotsPerInch;
    return picture;
}

// Rows that are decoded between two looks at the stop flag.
constexpr int bandHeight = 64;

// Decodes a picture whose sides are exchanged: a band of stored rows at a time becomes a band of
// columns, so that the photo is never in memory twice.
void decodeSideways(PictureDecoder& decoder, Image& image, const StopFlag& stop) {
    const Orientation orientation = decoder.facts().orientation;
    const int width = decoder.facts().width;
    const int height = decoder.facts().height;
    const bool mirrorColumns =
        orientation == Orientation::clockwise || orientation == Orientation::transversed;
    const bool mirrorRows =
        orientation == Orientation::counterClockwise || orientation == Orientation::transversed;
    Image band(width, std::min(bandHeight, height));
    for (int top = 0; top < height; top += bandHeight) {
        const int count = std::min(bandHeight, height - top);
        const MutablePixelView rows = band.mutableView().cut(0, 0, width, count);
        stop.check();
        decoder.readRows(rows);
        exchangeSides(
            rows,
            image.mutableView().cut(mirrorColumns ? height - top - count : top, 0, count, width),
            mirrorColumns, mirrorRows);
    }
}

void decodeUpright(PictureDecoder& decoder, Image& image, const StopFlag& stop) {
    const Orientation orientation = decoder.facts().orientation;
    MutablePixelView rows = image.mutableView();
    if (orientation == Orientation::halfTurned || orientation == Orientation::flipped) {
        rows = {image.row(image.height() - 1), image.width(), image.height(), -rows.stride()};
    }
    const bool mirrored =
        orientation == Orientation::halfTurned || orientation == Orientation::mirrored;
    for (int top = 0; top < image.height(); top += bandHeight) {
        const MutablePixelView band(rows.row(top), image.width(),
                                    std::min(bandHeight, image.height() - top), rows.stride());
        stop.check();
        decoder.readRows(band);
        for (int y = 0; mirrored && y < band.height(); ++y) {
            mirrorRow(band.row(y), band.width());
        }
    }
}

Image decodeWhole(OpenPicture& picture, const StopFlag& stop) {
    const ImageHeader& header = picture.header;
    // Both at once: each alone may fit where both do not.
    requireMemory(picture.decoder->facts().heldBytes +
                      std::uint64_t{3} * static_cast<std::uint64_t>(header.width) *
                          static_cast<std::uint64_t>(header.height),
                  header.width, header.height);
    Image image(header.width, header.height);
    image.colourProfile = picture.decoder->colourProfile();
    image.dotsPerInch = header.dotsPerInch;
    picture.decoder->stopBy(stop);
    try {
        if (exchangesSides(picture.decoder->facts().orientation)) {
            decodeSideways(*picture.decoder, image, stop);
        } else {
            decodeUpright(*picture.decoder, image, stop);
        }
    } catch (const Error&) {
        stop.check(); // libraries that are stopped in their work call it a failure
        throw;
    }
    return image;
}

// Runs a piece of reading; every way to fail becomes one sentence that names the file.
template <class Work>
auto reading(const std::string& name, Work&& work) {
    const auto sentence = [&](const std::string& reason) {
        return Error("Could not read \"" + name + "\": " + reason + ".");
    };
    try {
        return work();
    } catch (const Error& error) {
        throw sentence(error.what());
    } catch (const std::bad_alloc&) {
        throw sentence("there is not enough memory");
    } catch (const std::exception& error) {
        throw sentence(error.what());
    }
}

void checkColumns(const ImageHeader& header, int left, int width) {
    if (left < 0 || width <= 0 || left > header.width - width) {
        throw Error("the wanted columns do not lie within the picture");
    }
}

void checkRows(const ImageHeader& header, int nextRow, int count) {
    if (count < 0 || count > header.height - nextRow) {
        throw Error("it has no more rows");
    }
}

// Decodes as rows are asked for. Pictures that are only mirrored can be read this way, too.
class DecodingReader : public RowReader {
  public:
    DecodingReader(OpenPicture picture, std::string name)
        : picture_(std::move(picture)), name_(std::move(name)),
          profile_(picture_.decoder->colourProfile()), width_(picture_.header.width) {}

    const ImageHeader& header() const override { return picture_.header; }
    const ColourProfile& colourProfile() const override { return profile_; }
    std::optional<ColourProfile> greyProfile() const override {
        return reading(name_, [&] { return picture_.decoder->greyProfile(); });
    }
    bool streams() const override { return picture_.decoder->facts().streams; }

    void wantColumns(int left, int width) override {
        reading(name_, [&] {
            checkColumns(header(), left, width);
            picture_.decoder->wantColumns(mirrored() ? header().width - left - width : left, width);
            width_ = width;
        });
    }

    void skipRows(int count) override {
        reading(name_, [&] {
            checkRows(header(), nextRow_, count);
            picture_.decoder->skipRows(count);
            nextRow_ += count;
        });
    }

    void readRows(const MutablePixelView& rows) override {
        reading(name_, [&] {
            checkRows(header(), nextRow_, rows.height());
            checkWidth(rows.width());
            picture_.decoder->readRows(rows);
            nextRow_ += rows.height();
            for (int y = 0; mirrored() && y < rows.height(); ++y) {
                mirrorRow(rows.row(y), rows.width());
            }
        });
    }

  private:
    bool mirrored() const { return picture_.decoder->facts().orientation == Orientation::mirrored; }
    void checkWidth(int width) const {
        if (width != width_) {
            throw Error("the rows are not as wide as the wanted columns");
        }
    }

    OpenPicture picture_;
    std::string name_;
    ColourProfile profile_;
    int width_;
    int nextRow_ = 0;
};

// Stored rows of inks, two columns for each of the picture's.
class InkReader : public RowReader {
  public:
    InkReader(OpenPicture picture, std::string name, ColourProfile profile)
        : picture_(std::move(picture)), name_(std::move(name)), profile_(std::move(profile)),
          header_(picture_.header) {
        header_.width = 2 * picture_.decoder->facts().width;
        header_.height = picture_.decoder->facts().height;
    }

    const ImageHeader& header() const override { return header_; }
    const ColourProfile& colourProfile() const override { return profile_; }
    bool streams() const override { return picture_.decoder->facts().streams; }

    void wantColumns(int left, int width) override {
        reading(name_, [&] {
            checkColumns(header_, left, width);
            picture_.decoder->wantColumns(left / 2, width / 2);
        });
    }

    void skipRows(int count) override {
        reading(name_, [&] {
            checkRows(header_, nextRow_, count);
            picture_.decoder->skipRows(count);
            nextRow_ += count;
        });
    }

    void readRows(const MutablePixelView& rows) override {
        reading(name_, [&] {
            checkRows(header_, nextRow_, rows.height());
            picture_.decoder->readRows(rows);
            nextRow_ += rows.height();
        });
    }

  private:
    OpenPicture picture_;
    std::string name_;
    ColourProfile profile_;
    ImageHeader header_;
    int nextRow_ = 0;
};

// Hands out rows of a picture that had to be decoded as a whole.
class WholeReader : public RowReader {
  public:
    WholeReader(ImageHeader header, Image image, std::optional<ColourProfile> greyProfile,
                std::string name)
        : header_(header), image_(std::move(image)), greyProfile_(std::move(greyProfile)),
          name_(std::move(name)), width_(header.width) {}

    const ImageHeader& header() const override { return header_; }
    const ColourProfile& colourProfile() const override { return image_.colourProfile; }
    std::optional<ColourProfile> greyProfile() const override { return greyProfile_; }
    bool streams() const override { return false; }

    void wantColumns(int left, int width) override {
        reading(name_, [&] { checkColumns(header_, left, width); });
        left_ = left;
        width_ = width;
    }

    void skipRows(int count) override {
        reading(name_, [&] { checkRows(header_, nextRow_, count); });
        nextRow_ += count;
    }

    void readRows(const MutablePixelView& rows) override {
        reading(name_, [&] {
            checkRows(header_, nextRow_, rows.height());
            if (rows.width() != width_) {
                throw Error("the rows are not as wide as the wanted columns");
            }
        });
        for (int y = 0; y < rows.height(); ++y) {
            std::memcpy(rows.row(y), image_.row(nextRow_++) + std::ptrdiff_t{3} * left_,
                        std::size_t{3} * static_cast<std::size_t>(width_));
        }
    }

  private:
    ImageHeader header_;
    Image image_;
    std::optional<ColourProfile> greyProfile_;
    std::string name_;
    int left_ = 0;
    int width_;
    int nextRow_ = 0;
};

} // namespace

ImageHeader readImageHeader(std::unique_ptr<ByteSource> source, const std::string& name) {
    return reading(name, [&] { return openPicture(std::move(source)).header; });
}

Image loadImage(std::unique_ptr<ByteSource> source, const std::string& name, const StopFlag& stop) {
    return reading(name, [&] {
        OpenPicture picture = openPicture(std::move(source));
        return decodeWhole(picture, stop);
    });
}

std::unique_ptr<RowReader> openRowReader(std::unique_ptr<ByteSource> source,
                                         const std::string& name) {
    return reading(name, [&]() -> std::unique_ptr<RowReader> {
        OpenPicture picture = openPicture(std::move(source));
        const Orientation orientation = picture.decoder->facts().orientation;
        if (orientation == Orientation::upright || orientation == Orientation::mirrored) {
            return std::make_unique<DecodingReader>(std::move(picture), name);
        }
        Image image = decodeWhole(picture, StopFlag());
        return std::make_unique<WholeReader>(picture.header, std::move(image),
                                             picture.decoder->greyProfile(), name);
    });
}

namespace {

std::unique_ptr<ByteSource> opened(const std::filesystem::path& file) {
    return reading(pathText(file), [&] { return openFileBytes(file); });
}

} // namespace

ImageHeader readImageHeader(const std::filesystem::path& file) {
    return readImageHeader(opened(file), pathText(file));
}

Image loadImage(const std::filesystem::path& file, const StopFlag& stop) {
    return loadImage(opened(file), pathText(file), stop);
}

std::unique_ptr<RowReader> openRowReader(const std::filesystem::path& file) {
    return openRowReader(opened(file), pathText(file));
}

std::optional<InkPicture> openInkPicture(const std::filesystem::path& file) {
    return reading(pathText(file), [&]() -> std::optional<InkPicture> {
        OpenPicture picture = openPicture(opened(file));
        const PictureFacts facts = picture.decoder->facts();
        const std::optional<ColourProfile> profile = picture.decoder->keepInks();
        if (!profile) {
            return std::nullopt;
        }
        return InkPicture{
            facts.width, facts.height, facts.orientation, *profile,
            std::make_unique<InkReader>(std::move(picture), pathText(file), *profile)};
    });
}

void packInks(const std::uint8_t* pairs, std::uint8_t* inks, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i) {
        std::memcpy(inks + 4 * i, pairs + 6 * i, 4);
    }
}

namespace {

// Runs a piece of encoding; every way to fail becomes one sentence.
template <class Work>
auto encoding(Work&& work) {
    const auto sentence = [](const std::string& reason) {
        return Error("Could not encode the picture: " + reason + ".");
    };
    try {
        return work();
    } catch (const Error& error) {
        throw sentence(error.what());
    } catch (const std::bad_alloc&) {
        throw sentence("there is not enough memory");
    }
}

std::unique_ptr<PictureEncoder> openEncoder(const PictureToEncode& picture, TileFormat format) {
    if (picture.width <= 0 || picture.height <= 0) {
        throw Error("it has no pixels");
    }
    return tileFormatRow(format).open(picture);
}

class CheckedEncoder : public RowEncoder {
  public:
    CheckedEncoder(const PictureToEncode& picture, TileFormat format)
        : encoder_(openEncoder(picture, format)), width_(picture.width), rowsLeft_(picture.height) {
    }

    void writeRows(const PixelView& rows) override {
        encoding([&] {
            if (rows.width() != width_ || rows.height() > rowsLeft_) {
                throw Error("its rows are not those that were announced");
            }
            encoder_->writeRows(rows);
            rowsLeft_ -= rows.height();
        });
    }

    std::vector<std::uint8_t> finish() override {
        return encoding([&] {
            if (rowsLeft_ > 0) {
                throw Error("not all of its rows came");
            }
            return encoder_->finish();
        });
    }

  private:
    std::unique_ptr<PictureEncoder> encoder_;
    int width_;
    int rowsLeft_;
};

} // namespace

std::unique_ptr<RowEncoder> openRowEncoder(int width, int height, TileFormat format,
                                           int dotsPerInch, const ColourProfile& profile) {
    return encoding([&] {
        return std::make_unique<CheckedEncoder>(
            PictureToEncode{width, height, dotsPerInch, profileForRgbRows(profile, true)}, format);
    });
}

std::vector<std::uint8_t> encodeImage(const PixelView& pixels, TileFormat format, int dotsPerInch,
                                      const ColourProfile& profile) {
    const std::unique_ptr<RowEncoder> encoder =
        openRowEncoder(pixels.width(), pixels.height(), format, dotsPerInch, profile);
    encoder->writeRows(pixels);
    return encoder->finish();
}

} // namespace veldara
