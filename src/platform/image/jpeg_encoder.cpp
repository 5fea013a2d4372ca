#include "platform/image/jpeg_errors.h"
#include "platform/image/picture_encoder.h"

#include <algorithm>
#include <array>
#include <exception>

namespace veldara {

namespace {

constexpr int quality = 95;

// Few photographs take more than a byte for a pixel at that quality.
std::size_t usualSize(const PictureToEncode& picture) {
    return static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
}

// The library's window onto the growing file.
struct JpegOutput {
    jpeg_destination_mgr manager{}; // first, so that the library's pointer is a pointer to this
    std::vector<std::uint8_t> bytes;
    std::array<JOCTET, 65536> buffer{};

    JpegOutput();
    void restart() {
        manager.next_output_byte = buffer.data();
        manager.free_in_buffer = buffer.size();
    }
};

JpegOutput& outputOf(j_compress_ptr library) {
    return *reinterpret_cast<JpegOutput*>(library->dest);
}

bool append(JpegOutput& output, std::size_t count) noexcept {
    try {
        output.bytes.insert(output.bytes.end(), output.buffer.begin(),
                            output.buffer.begin() + static_cast<std::ptrdiff_t>(count));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void store(j_compress_ptr library, std::size_t count) {
    if (!append(outputOf(library), count)) {
        reinterpret_cast<JpegErrors*>(library->err)->fail("there is not enough memory");
    }
    outputOf(library).restart();
}

JpegOutput::JpegOutput() {
    manager.init_destination = [](j_compress_ptr library) { outputOf(library).restart(); };
    manager.empty_output_buffer = [](j_compress_ptr library) -> boolean {
        store(library, outputOf(library).buffer.size());
        return TRUE;
    };
    manager.term_destination = [](j_compress_ptr library) {
        store(library, outputOf(library).buffer.size() - outputOf(library).manager.free_in_buffer);
    };
}

struct Compressor {
    JpegErrors errors;
    jpeg_compress_struct state{};

    Compressor() {
        state.err = &errors.manager;
        errors.guard([this] { jpeg_create_compress(&state); });
    }
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;
    ~Compressor() { jpeg_destroy_compress(&state); }
};

void setUp(jpeg_compress_struct& state, const PictureToEncode& picture) {
    state.image_width = static_cast<JDIMENSION>(picture.width);
    state.image_height = static_cast<JDIMENSION>(picture.height);
    state.input_components = 3;
    state.in_color_space = JCS_RGB;
    jpeg_set_defaults(&state);
    jpeg_set_quality(&state, quality, TRUE);
    state.comp_info[0].h_samp_factor = 1; // colour as fine as brightness
    state.comp_info[0].v_samp_factor = 1;
    if (picture.dotsPerInch > 0) {
        state.density_unit = 1; // per inch
        state.X_density = static_cast<UINT16>(std::min(picture.dotsPerInch, 65535));
        state.Y_density = state.X_density;
    }
}

void compressRows(jpeg_compress_struct& state, const PixelView& pixels) {
    constexpr int most = 16;
    std::array<JSAMPROW, most> lines{};
    int done = 0;
    while (done < pixels.height()) {
        const int count = std::min(most, pixels.height() - done);
        for (int i = 0; i < count; ++i) {
            // The library does not write to them; its type is older than const.
            lines[static_cast<std::size_t>(i)] = const_cast<JSAMPROW>(pixels.row(done + i));
        }
        done += static_cast<int>(
            jpeg_write_scanlines(&state, lines.data(), static_cast<JDIMENSION>(count)));
    }
}

class JpegEncoder : public PictureEncoder {
  public:
    explicit JpegEncoder(const PictureToEncode& picture) {
        jpeg_compress_struct& state = library_.state;
        state.dest = &output_.manager;
        reserveLargePages(output_.bytes, usualSize(picture));
        library_.errors.guard([&] {
            setUp(state, picture);
            jpeg_start_compress(&state, TRUE);
            if (!picture.profile.empty()) {
                jpeg_write_icc_profile(&state, picture.profile.data(),
                                       static_cast<unsigned>(picture.profile.size()));
            }
        });
    }

    void writeRows(const PixelView& rows) override {
        library_.errors.guard([&] { compressRows(library_.state, rows); });
    }

    std::vector<std::uint8_t> finish() override {
        library_.errors.guard([&] { jpeg_finish_compress(&library_.state); });
        return std::move(output_.bytes);
    }

  private:
    JpegOutput output_;
    Compressor library_;
};

} // namespace

std::unique_ptr<PictureEncoder> openJpegEncoder(const PictureToEncode& picture) {
    return std::make_unique<JpegEncoder>(picture);
}

} // namespace veldara
