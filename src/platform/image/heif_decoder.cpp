// HEIC and AVIF through libheif, which gives a picture whole and already upright: grids put
// together, rotation and mirror properties applied, ten and twelve bits brought to eight.
#include "platform/error.h"
#include "platform/image/coded_colour.h"
#include "platform/image/colour.h"
#include "platform/image/exif.h"
#include "platform/image/heif_library.h"
#include "platform/image/memory_limits.h"
#include "platform/image/whole_picture_decoder.h"

#include <memory>
#include <string>
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

// Reads a ByteSource for the library.
class HeifInput {
  public:
    explicit HeifInput(ByteSource& source) : source_(source) {}

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
            position_ += size;
            return whole ? 0 : 1;
        } catch (const std::exception&) {
            return 1;
        }
    }

    ByteSource& source_;
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

class HeifDecoder : public WholePictureDecoder {
  public:
    HeifDecoder(ByteSource& source, CodedKind kind);

    ColourProfile colourProfile() override;

  protected:
    DecodedPixels decode() override;

  private:
    int dotsPerInch() const;

    CodedKind kind_;
    const HeifLibrary& heif_;
    HeifInput input_;
    Context context_;
    Handle handle_;
    DecodedImage image_;
};

HeifDecoder::HeifDecoder(ByteSource& source, CodedKind kind)
    : kind_(kind), heif_(libraryFor(kind)), input_(source), context_(heif_.context_alloc()) {
    constexpr const char* damaged = "its header is damaged or incomplete";
    if (!context_) {
        throw Error("there is not enough memory");
    }
    const heif_error read =
        heif_.context_read_from_reader(context_.get(), &HeifInput::calls(), &input_, nullptr);
    if (read.code != heif_error_Ok) {
        fail(read, kind_, damaged);
    }
    heif_image_handle* handle = nullptr;
    const heif_error primary = heif_.context_get_primary_image_handle(context_.get(), &handle);
    handle_.reset(handle);
    if (primary.code != heif_error_Ok || !handle_) {
        fail(primary, kind_, damaged);
    }
    facts_.width = heif_.image_handle_get_width(handle_.get());
    facts_.height = heif_.image_handle_get_height(handle_.get());
    if (facts_.width <= 0 || facts_.height <= 0) {
        throw Error(damaged);
    }
    facts_.dotsPerInch = dotsPerInch();
    facts_.streams = false;
}

// The camera's block also has an orientation, but here the container's properties are what counts,
// and the library applies them.
int HeifDecoder::dotsPerInch() const {
    heif_item_id id = 0;
    if (heif_.image_handle_get_list_of_metadata_block_IDs(handle_.get(), "Exif", &id, 1) != 1) {
        return 0;
    }
    const std::size_t size = heif_.image_handle_get_metadata_size(handle_.get(), id);
    constexpr std::size_t most = 1 << 20;
    constexpr std::size_t offsetSize = 4; // how far behind these four bytes the block begins
    std::vector<std::uint8_t> bytes(size);
    if (size <= offsetSize || size > most ||
        heif_.image_handle_get_metadata(handle_.get(), id, bytes.data()).code != heif_error_Ok) {
        return 0;
    }
    const std::size_t skipped = std::size_t{bytes[0]} << 24 | std::size_t{bytes[1]} << 16 |
                                std::size_t{bytes[2]} << 8 | bytes[3];
    if (skipped >= size - offsetSize) {
        return 0;
    }
    return readExif(std::span<const std::uint8_t>(bytes).subspan(offsetSize + skipped)).dotsPerInch;
}

ColourProfile HeifDecoder::colourProfile() {
    const heif_color_profile_type type = heif_.image_handle_get_color_profile_type(handle_.get());
    if (type == heif_color_profile_type_rICC || type == heif_color_profile_type_prof) {
        ColourProfile profile(heif_.image_handle_get_raw_color_profile_size(handle_.get()));
        if (heif_.image_handle_get_raw_color_profile(handle_.get(), profile.data()).code ==
            heif_error_Ok) {
            return profileForRgbRows(profile, profileKind(profile) == ProfileKind::grey);
        }
    }
    heif_color_profile_nclx* found = nullptr;
    const heif_error error = heif_.image_handle_get_nclx_color_profile(handle_.get(), &found);
    const CodedProfile coded(found);
    if (error.code != heif_error_Ok || !coded) {
        return {};
    }
    return profileOf(CodedColour{static_cast<unsigned>(coded->color_primaries),
                                 static_cast<unsigned>(coded->transfer_characteristics)});
}

DecodedPixels HeifDecoder::decode() {
    const bool opacity = heif_.image_handle_has_alpha_channel(handle_.get()) != 0;
    const unsigned channels = opacity ? 4 : 3;
    // Its own planes, which have two bytes a sample beyond eight bits, and the pixels made of them.
    const unsigned sampleBytes =
        heif_.image_handle_get_luma_bits_per_pixel(handle_.get()) > 8 ? 2 : 1;
    requireMemory(std::uint64_t{channels} * (1 + sampleBytes) *
                      static_cast<std::uint64_t>(facts_.width) *
                      static_cast<std::uint64_t>(facts_.height),
                  facts_.width, facts_.height);
    const Options options(heif_.decoding_options_alloc());
    if (!options) {
        throw Error("there is not enough memory");
    }
    options->convert_hdr_to_8bit = 1;
    options->strict_decoding = 1;
    heif_image* image = nullptr;
    const heif_error error = heif_.decode_image(
        handle_.get(), &image, heif_colorspace_RGB,
        opacity ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, options.get());
    image_.reset(image);
    constexpr const char* damaged = "its picture data is damaged or incomplete";
    if (error.code != heif_error_Ok || !image_) {
        fail(error, kind_, damaged);
    }
    heif_error warning{};
    if (heif_.image_get_decoding_warnings(image, 0, &warning, 1) > 0 ||
        heif_.image_get_width(image, heif_channel_interleaved) != facts_.width ||
        heif_.image_get_height(image, heif_channel_interleaved) != facts_.height) {
        throw Error(damaged);
    }
    int stride = 0;
    const std::uint8_t* pixels =
        heif_.image_get_plane_readonly(image, heif_channel_interleaved, &stride);
    if (pixels == nullptr || stride < 0) {
        throw Error(damaged);
    }
    return {pixels, static_cast<std::size_t>(stride), channels,
            heif_.image_handle_is_premultiplied_alpha(handle_.get()) != 0};
}

} // namespace

std::unique_ptr<PictureDecoder> openHeic(ByteSource& source) {
    return std::make_unique<HeifDecoder>(source, CodedKind{"HEIC", heif_compression_HEVC});
}

std::unique_ptr<PictureDecoder> openAvif(ByteSource& source) {
    return std::make_unique<HeifDecoder>(source, CodedKind{"AVIF", heif_compression_AV1});
}

} // namespace veldara
