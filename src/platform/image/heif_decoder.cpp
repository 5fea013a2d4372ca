// HEIC and AVIF through libheif, which gives a picture whole and already upright: grids put
// together, rotation and mirror properties applied, ten and twelve bits brought to eight. Of the
// grids that telephones write, it is asked for the tiles instead, a row of them at a time, so that
// the first tiles of the poster are encoded while the last ones of the photo are still coded.
#include "platform/error.h"
#include "platform/image/coded_colour.h"
#include "platform/image/colour.h"
#include "platform/image/exif.h"
#include "platform/image/heif_grid.h"
#include "platform/image/heif_library.h"
#include "platform/image/memory_limits.h"
#include "platform/image/parallel_rows.h"
#include "platform/image/whole_picture_decoder.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veldara {

namespace {

// The kinds that share the container.
struct CodedKind {
    const char* name;
    heif_compression_format coding;
};

[[noreturn]] void notReadableHere(const CodedKind& kind) {
    throw Error("This " + std::string(kind.name) +
                " file is coded in a way that this system cannot read");
}

// Sequences of pictures share the container, and need not hold a picture that stands for itself.
bool saysNoPicture(const heif_error& error) {
    return error.code == heif_error_Unsupported_filetype ||
           error.subcode == heif_suberror_No_meta_box ||
           error.subcode == heif_suberror_No_pitm_box ||
           error.subcode == heif_suberror_No_pict_handler ||
           error.subcode == heif_suberror_No_or_invalid_primary_item ||
           error.subcode == heif_suberror_No_item_data;
}

[[noreturn]] void fail(const heif_error& error, const CodedKind& kind, const char* reason) {
    if (saysNoPicture(error)) {
        throw Error("it holds no picture");
    }
    if (error.code == heif_error_Unsupported_feature ||
        error.code == heif_error_Plugin_loading_error) {
        notReadableHere(kind);
    }
    if (error.code == heif_error_Memory_allocation_error) {
        throw Error("there is not enough memory");
    }
    throw Error(reason);
}

// Reads a ByteSource for the library. Bytes that hide tiles of a grid are shown without the bit
// that does so.
class HeifInput {
  public:
    HeifInput(ByteSource& source, std::vector<std::uint64_t> hidingBytes)
        : source_(source), hidingBytes_(std::move(hidingBytes)) {}

    static const heif_reader& calls() {
        static const heif_reader reader = [] {
            heif_reader made{};
            made.reader_api_version = 1;
            made.get_position = [](void* user) {
                return static_cast<std::int64_t>(static_cast<HeifInput*>(user)->position_);
            };
            made.read = [](void* data, std::size_t size, void* user) {
                return static_cast<HeifInput*>(user)->read(data, size);
            };
            made.seek = [](std::int64_t position, void* user) {
                static_cast<HeifInput*>(user)->position_ = static_cast<std::uint64_t>(position);
                return position < 0 ? 1 : 0;
            };
            made.wait_for_file_size = [](std::int64_t size, void* user) {
                const std::uint64_t there = static_cast<HeifInput*>(user)->source_.size();
                return size >= 0 && static_cast<std::uint64_t>(size) <= there
                           ? heif_reader_grow_status_size_reached
                           : heif_reader_grow_status_size_beyond_eof;
            };
            return made;
        }();
        return reader;
    }

  private:
    int read(void* data, std::size_t size) noexcept {
        try {
            const bool whole = source_.readFully(position_, data, size);
            const auto end = hidingBytes_.end();
            for (auto hiding = std::lower_bound(hidingBytes_.begin(), end, position_);
                 hiding != end && *hiding - position_ < size; ++hiding) {
                static_cast<std::uint8_t*>(data)[*hiding - position_] &= 0xFE;
            }
            position_ += size;
            return whole ? 0 : 1;
        } catch (const std::exception&) {
            return 1;
        }
    }

    ByteSource& source_;
    const std::vector<std::uint64_t> hidingBytes_; // in ascending order
    std::uint64_t position_ = 0;
};

// Frees what the library made, with the call of the library that belongs to it.
template <class Made, auto Free>
struct FreedBy {
    void operator()(Made* made) const { (heifLibrary()->*Free)(made); }
};
using Context = std::unique_ptr<heif_context, FreedBy<heif_context, &HeifLibrary::context_free>>;
using Handle =
    std::unique_ptr<const heif_image_handle,
                    FreedBy<const heif_image_handle, &HeifLibrary::image_handle_release>>;
using DecodedImage =
    std::unique_ptr<const heif_image, FreedBy<const heif_image, &HeifLibrary::image_release>>;
using Options =
    std::unique_ptr<heif_decoding_options,
                    FreedBy<heif_decoding_options, &HeifLibrary::decoding_options_free>>;
using CodedProfile =
    std::unique_ptr<heif_color_profile_nclx,
                    FreedBy<heif_color_profile_nclx, &HeifLibrary::nclx_color_profile_free>>;

const HeifLibrary& libraryFor(const CodedKind& kind) {
    const HeifLibrary* library = heifLibrary();
    if (library == nullptr || library->have_decoder_for_format(kind.coding) == 0) {
        notReadableHere(kind);
    }
    return *library;
}

// An open file, and pictures of it. Several threads may decode at the same time, as the library's
// own do: it reads under a lock.
class HeifFile {
  public:
    HeifFile(ByteSource& source, CodedKind kind, std::vector<std::uint64_t> hidingBytes = {});

    const HeifLibrary& library() const { return heif_; }
    const heif_image_handle* primary() const { return primary_.get(); }
    Handle item(std::uint32_t number) const; // null when the library does not hand it out

    int dotsPerInch() const;
    ColourProfile colourProfile() const;

    bool hasOpacity(const heif_image_handle* picture) const {
        return heif_.image_handle_has_alpha_channel(picture) != 0;
    }
    // What decoding the picture takes: its own planes, which have two bytes a sample beyond eight
    // bits, and the pixels made of them.
    std::uint64_t bytesFor(const heif_image_handle* picture) const;

    // The pixels, which live in the image.
    DecodedPixels decode(const heif_image_handle* picture, DecodedImage& image) const;

  private:
    CodedKind kind_;
    const HeifLibrary& heif_;
    HeifInput input_;
    Context context_;
    Handle primary_;
};

constexpr const char* damagedHeader = "its header is damaged or incomplete";
constexpr const char* damagedPixels = "its picture data is damaged or incomplete";

HeifFile::HeifFile(ByteSource& source, CodedKind kind, std::vector<std::uint64_t> hidingBytes)
    : kind_(kind), heif_(libraryFor(kind)), input_(source, std::move(hidingBytes)),
      context_(heif_.context_alloc()) {
    if (!context_) {
        throw Error("there is not enough memory");
    }
    const heif_error read =
        heif_.context_read_from_reader(context_.get(), &HeifInput::calls(), &input_, nullptr);
    if (read.code != heif_error_Ok) {
        fail(read, kind_, damagedHeader);
    }
    heif_image_handle* handle = nullptr;
    const heif_error error = heif_.context_get_primary_image_handle(context_.get(), &handle);
    primary_.reset(handle);
    if (error.code != heif_error_Ok || !primary_) {
        fail(error, kind_, damagedHeader);
    }
}

Handle HeifFile::item(std::uint32_t number) const {
    heif_image_handle* handle = nullptr;
    const heif_error error = heif_.context_get_image_handle(context_.get(), number, &handle);
    Handle owned(handle);
    return error.code == heif_error_Ok ? std::move(owned) : Handle();
}

// The camera's block also has an orientation, but here the container's properties are what counts,
// and the library applies them.
int HeifFile::dotsPerInch() const {
    heif_item_id id = 0;
    if (heif_.image_handle_get_list_of_metadata_block_IDs(primary(), "Exif", &id, 1) != 1) {
        return 0;
    }
    const std::size_t size = heif_.image_handle_get_metadata_size(primary(), id);
    constexpr std::size_t most = 1 << 20;
    constexpr std::size_t offsetSize = 4; // how far behind these four bytes the block begins
    std::vector<std::uint8_t> bytes(size);
    if (size <= offsetSize || size > most ||
        heif_.image_handle_get_metadata(primary(), id, bytes.data()).code != heif_error_Ok) {
        return 0;
    }
    const std::size_t skipped = std::size_t{bytes[0]} << 24 | std::size_t{bytes[1]} << 16 |
                                std::size_t{bytes[2]} << 8 | bytes[3];
    if (skipped >= size - offsetSize) {
        return 0;
    }
    return readExif(std::span<const std::uint8_t>(bytes).subspan(offsetSize + skipped)).dotsPerInch;
}

ColourProfile HeifFile::colourProfile() const {
    const heif_color_profile_type type = heif_.image_handle_get_color_profile_type(primary());
    if (type == heif_color_profile_type_rICC || type == heif_color_profile_type_prof) {
        ColourProfile profile(heif_.image_handle_get_raw_color_profile_size(primary()));
        if (heif_.image_handle_get_raw_color_profile(primary(), profile.data()).code ==
            heif_error_Ok) {
            return profileForRgbRows(profile, profileKind(profile) == ProfileKind::grey);
        }
    }
    heif_color_profile_nclx* found = nullptr;
    const heif_error error = heif_.image_handle_get_nclx_color_profile(primary(), &found);
    const CodedProfile coded(found);
    if (error.code != heif_error_Ok || !coded) {
        return {};
    }
    return profileOf(CodedColour{static_cast<unsigned>(coded->color_primaries),
                                 static_cast<unsigned>(coded->transfer_characteristics)});
}

std::uint64_t HeifFile::bytesFor(const heif_image_handle* picture) const {
    const unsigned channels = hasOpacity(picture) ? 4 : 3;
    const unsigned sampleBytes = heif_.image_handle_get_luma_bits_per_pixel(picture) > 8 ? 2 : 1;
    return std::uint64_t{channels} * (1 + sampleBytes) *
           static_cast<std::uint64_t>(heif_.image_handle_get_width(picture)) *
           static_cast<std::uint64_t>(heif_.image_handle_get_height(picture));
}

DecodedPixels HeifFile::decode(const heif_image_handle* picture, DecodedImage& image) const {
    const bool opacity = hasOpacity(picture);
    const Options options(heif_.decoding_options_alloc());
    if (!options) {
        throw Error("there is not enough memory");
    }
    options->convert_hdr_to_8bit = 1;
    options->strict_decoding = 1;
    heif_image* made = nullptr;
    const heif_error error = heif_.decode_image(
        picture, &made, heif_colorspace_RGB,
        opacity ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, options.get());
    image.reset(made);
    if (error.code != heif_error_Ok || !image) {
        fail(error, kind_, damagedPixels);
    }
    heif_error warning{};
    if (heif_.image_get_decoding_warnings(made, 0, &warning, 1) > 0 ||
        heif_.image_get_width(made, heif_channel_interleaved) !=
            heif_.image_handle_get_width(picture) ||
        heif_.image_get_height(made, heif_channel_interleaved) !=
            heif_.image_handle_get_height(picture)) {
        throw Error(damagedPixels);
    }
    int stride = 0;
    const std::uint8_t* pixels =
        heif_.image_get_plane_readonly(made, heif_channel_interleaved, &stride);
    if (pixels == nullptr || stride < 0) {
        throw Error(damagedPixels);
    }
    return {pixels, static_cast<std::size_t>(stride), opacity ? 4U : 3U,
            heif_.image_handle_is_premultiplied_alpha(picture) != 0};
}

class HeifDecoder : public WholePictureDecoder {
  public:
    HeifDecoder(ByteSource& source, CodedKind kind) : file_(source, kind) {
        facts_.width = file_.library().image_handle_get_width(file_.primary());
        facts_.height = file_.library().image_handle_get_height(file_.primary());
        if (facts_.width <= 0 || facts_.height <= 0) {
            throw Error(damagedHeader);
        }
        facts_.dotsPerInch = file_.dotsPerInch();
        facts_.streams = false;
        facts_.heldBytes = file_.bytesFor(file_.primary());
    }

    ColourProfile colourProfile() override { return file_.colourProfile(); }

  protected:
    DecodedPixels decode() override {
        requireMemory(facts_.heldBytes, facts_.width, facts_.height);
        return file_.decode(file_.primary(), image_);
    }

  private:
    HeifFile file_;
    DecodedImage image_;
};

class HeifGridDecoder : public PictureDecoder {
  public:
    HeifGridDecoder(ByteSource& source, CodedKind kind, HeifGrid grid);

    // Whether the tiles are what they have to be for this decoder: all of one size that fits the
    // grid, opaque, and with no other coded colour than the whole.
    bool fits() const;

    ColourProfile colourProfile() override { return file_.colourProfile(); }
    void wantColumns(int left, int width) override {
        left_ = left;
        width_ = width;
    }
    void skipRows(int count) override { nextRow_ += count; }
    void readRows(const MutablePixelView& rows) override;

  private:
    void decodeBand(int band);
    void decodeTile(int band, int column);

    HeifGrid grid_;
    HeifFile file_;
    int tileWidth_ = 0;
    int tileHeight_ = 0;
    int left_ = 0;
    int width_;
    int nextRow_ = 0;
    int decodedBand_ = -1;
    Image band_; // the wanted columns of the rows of a row of tiles
};

HeifGridDecoder::HeifGridDecoder(ByteSource& source, CodedKind kind, HeifGrid grid)
    : grid_(std::move(grid)), file_(source, kind, grid_.hidingBytes), width_(grid_.width) {
    facts_.width = grid_.width;
    facts_.height = grid_.height;
    facts_.dotsPerInch = file_.dotsPerInch();
    facts_.orientation = grid_.orientation;
    if (const Handle first = file_.item(grid_.tiles.front())) {
        tileWidth_ = file_.library().image_handle_get_width(first.get());
        tileHeight_ = file_.library().image_handle_get_height(first.get());
        facts_.heldBytes =
            static_cast<unsigned>(grid_.columns) * file_.bytesFor(first.get()); // more than at once
    }
}

// The matrix and the range by which colours were coded, and whether the file says any.
struct ColourCoding {
    bool said = false;
    int matrix = 0;
    bool fullRange = false;

    static ColourCoding of(const HeifLibrary& heif, const heif_image_handle* picture) {
        heif_color_profile_nclx* found = nullptr;
        const heif_error error = heif.image_handle_get_nclx_color_profile(picture, &found);
        const CodedProfile coded(found);
        if (error.code != heif_error_Ok || !coded) {
            return {};
        }
        return {true, coded->matrix_coefficients, coded->full_range_flag != 0};
    }
    bool operator==(const ColourCoding&) const = default;
};

bool HeifGridDecoder::fits() const {
    const HeifLibrary& heif = file_.library();
    const bool exchanged = exchangesSides(grid_.orientation);
    if (tileWidth_ <= 0 || tileHeight_ <= 0 || file_.hasOpacity(file_.primary()) ||
        heif.image_handle_get_width(file_.primary()) != (exchanged ? grid_.height : grid_.width) ||
        heif.image_handle_get_height(file_.primary()) != (exchanged ? grid_.width : grid_.height) ||
        (grid_.width - 1) / tileWidth_ + 1 != grid_.columns ||
        (grid_.height - 1) / tileHeight_ + 1 != grid_.rows) {
        return false;
    }
    const ColourCoding whole = ColourCoding::of(heif, file_.primary());
    return std::all_of(grid_.tiles.begin(), grid_.tiles.end(), [&](std::uint32_t number) {
        const Handle tile = file_.item(number);
        return tile && heif.image_handle_get_width(tile.get()) == tileWidth_ &&
               heif.image_handle_get_height(tile.get()) == tileHeight_ &&
               !file_.hasOpacity(tile.get()) &&
               (!whole.said || ColourCoding::of(heif, tile.get()) == whole);
    });
}

void HeifGridDecoder::decodeTile(int band, int column) {
    const int tileLeft = column * tileWidth_;
    const int from = std::max(left_, tileLeft);
    const int end = std::min(left_ + width_, tileLeft + tileWidth_);
    const int height = std::min(tileHeight_, grid_.height - band * tileHeight_);
    const Handle tile = file_.item(
        grid_.tiles[static_cast<std::size_t>(band) * static_cast<std::size_t>(grid_.columns) +
                    static_cast<std::size_t>(column)]);
    if (!tile) {
        throw Error(damagedPixels);
    }
    DecodedImage image;
    const DecodedPixels pixels = file_.decode(tile.get(), image);
    for (int y = 0; y < height; ++y) {
        rgbOnWhite(pixels.first + pixels.stride * static_cast<std::size_t>(y) +
                       pixels.channels * static_cast<std::size_t>(from - tileLeft),
                   pixels.channels, pixels.premultiplied, static_cast<std::size_t>(end - from),
                   band_.row(y) + std::ptrdiff_t{3} * (from - left_));
    }
}

void HeifGridDecoder::decodeBand(int band) {
    if (band_.empty()) {
        requireMemory(facts_.heldBytes, facts_.width, facts_.height);
        band_ = Image(width_, std::min(tileHeight_, grid_.height));
    }
    const int first = left_ / tileWidth_;
    const int end = (left_ + width_ - 1) / tileWidth_ + 1;
    forRows(end - first, 1, [&](int from, int to) {
        for (int column = from; column < to && !shallStop(); ++column) {
            decodeTile(band, first + column);
        }
    });
    if (shallStop()) {
        throw Error("its decoding was stopped");
    }
    decodedBand_ = band;
}

void HeifGridDecoder::readRows(const MutablePixelView& rows) {
    for (int y = 0; y < rows.height(); ++y, ++nextRow_) {
        const int band = nextRow_ / tileHeight_;
        if (band != decodedBand_) {
            decodeBand(band);
        }
        std::memcpy(rows.row(y), band_.row(nextRow_ - band * tileHeight_),
                    std::size_t{3} * static_cast<std::size_t>(width_));
    }
}

std::unique_ptr<PictureDecoder> openHeif(ByteSource& source, CodedKind kind) {
    if (std::optional<HeifGrid> grid = readHeifGrid(source)) {
        auto decoder = std::make_unique<HeifGridDecoder>(source, kind, std::move(*grid));
        if (decoder->fits()) {
            return decoder;
        }
    }
    return std::make_unique<HeifDecoder>(source, kind);
}

} // namespace

std::unique_ptr<PictureDecoder> openHeic(ByteSource& source) {
    return openHeif(source, CodedKind{"HEIC", heif_compression_HEVC});
}

std::unique_ptr<PictureDecoder> openAvif(ByteSource& source) {
    return openHeif(source, CodedKind{"AVIF", heif_compression_AV1});
}

} // namespace veldara
