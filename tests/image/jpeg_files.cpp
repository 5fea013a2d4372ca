#include "image/jpeg_files.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <jpeglib.h>

namespace veldara::test {

namespace {

[[noreturn]] void complain(j_common_ptr library) {
    char text[JMSG_LENGTH_MAX];
    library->err->format_message(library, text);
    std::fprintf(stderr, "test file: %s\n", text);
    std::abort();
}

void setColours(jpeg_compress_struct& state, const JpegKind& kind) {
    state.input_components = kind.components;
    state.in_color_space = kind.components == 1   ? JCS_GRAYSCALE
                           : kind.components == 3 ? JCS_RGB
                                                  : JCS_CMYK;
    jpeg_set_defaults(&state);
    if (kind.components == 3) {
        jpeg_set_colorspace(&state, kind.rgb ? JCS_RGB : JCS_YCbCr);
    }
    if (kind.components == 4) {
        jpeg_set_colorspace(&state, kind.ycck ? JCS_YCCK : JCS_CMYK);
        state.write_Adobe_marker = kind.adobeMarker ? TRUE : FALSE;
    }
}

} // namespace

std::vector<JpegKind> everyJpegKind() {
    std::vector<JpegKind> kinds;
    const auto add = [&](const char* name, auto change) {
        JpegKind kind;
        kind.name = name;
        change(kind);
        kinds.push_back(kind);
    };
    add("colour444", [](JpegKind&) {});
    add("colour422", [](JpegKind& k) { k.across = 2; });
    add("colour420", [](JpegKind& k) { k.across = k.down = 2; });
    add("colour440", [](JpegKind& k) { k.down = 2; });
    add("colour411", [](JpegKind& k) { k.across = 4; });
    add("colour410", [](JpegKind& k) { k.across = 4, k.down = 2; });
    add("colour3x1", [](JpegKind& k) { k.across = 3; });
    add("colour441", [](JpegKind& k) { k.down = 4; });
    add("rgb", [](JpegKind& k) { k.rgb = true; });
    add("grey", [](JpegKind& k) { k.components = 1; });
    add("grey2x2", [](JpegKind& k) { k.components = 1, k.across = k.down = 2; });
    add("progressive444", [](JpegKind& k) { k.progressive = true; });
    add("progressive420", [](JpegKind& k) { k.progressive = true, k.across = k.down = 2; });
    add("progressiveGrey", [](JpegKind& k) { k.progressive = true, k.components = 1; });
    add("restart444", [](JpegKind& k) { k.restartInterval = 2; });
    add("restart420", [](JpegKind& k) { k.restartInterval = 3, k.across = k.down = 2; });
    add("separateScans", [](JpegKind& k) { k.separateScans = true; });
    add("separateScans420", [](JpegKind& k) { k.separateScans = true, k.across = k.down = 2; });
    add("inks", [](JpegKind& k) { k.components = 4; });
    add("inksAdobe", [](JpegKind& k) { k.components = 4, k.adobeMarker = true; });
    add("inksYcck", [](JpegKind& k) { k.components = 4, k.ycck = k.adobeMarker = true; });
    add("inksYcck420", [](JpegKind& k) {
        k.components = 4, k.ycck = k.adobeMarker = true, k.across = k.down = 2;
    });
    add("inksProgressive",
        [](JpegKind& k) { k.components = 4, k.adobeMarker = true, k.progressive = true; });
    return kinds;
}

Bytes makeJpeg(const JpegKind& kind, const Bytes& samples, int width, int height) {
    jpeg_compress_struct state{};
    jpeg_error_mgr errors{};
    state.err = jpeg_std_error(&errors);
    errors.error_exit = complain;
    jpeg_create_compress(&state);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&state, &memory, &size);
    state.image_width = static_cast<JDIMENSION>(width);
    state.image_height = static_cast<JDIMENSION>(height);
    setColours(state, kind);
    jpeg_set_quality(&state, kind.quality, TRUE);
    state.comp_info[0].h_samp_factor = kind.across;
    state.comp_info[0].v_samp_factor = kind.down;
    if (kind.ycck) { // black is as fine as brightness
        state.comp_info[3].h_samp_factor = kind.across;
        state.comp_info[3].v_samp_factor = kind.down;
    }
    state.restart_interval = kind.restartInterval;
    state.arith_code = kind.arithmetic ? TRUE : FALSE;
    if (kind.progressive) {
        jpeg_simple_progression(&state);
    }
    std::vector<jpeg_scan_info> scans;
    if (kind.separateScans) {
        for (int i = 0; i < kind.components; ++i) {
            scans.push_back({1, {i, 0, 0, 0}, 0, 63, 0, 0});
        }
        state.scan_info = scans.data();
        state.num_scans = kind.components;
    }
    jpeg_start_compress(&state, TRUE);
    const auto rowSize =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(kind.components);
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
        auto* row = const_cast<JSAMPROW>(&samples[y * rowSize]);
        jpeg_write_scanlines(&state, &row, 1);
    }
    jpeg_finish_compress(&state);
    jpeg_destroy_compress(&state);
    Bytes file(memory, memory + size);
    std::free(memory);
    return file;
}

Bytes samplesFor(const JpegKind& kind, const Image& picture) {
    Bytes samples;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const std::uint8_t* pixel = picture.row(y) + std::ptrdiff_t{3} * x;
            if (kind.components == 1) {
                samples.push_back(pixel[1]);
            } else {
                samples.insert(samples.end(), pixel, pixel + 3);
            }
            if (kind.components == 4) {
                samples.push_back(static_cast<std::uint8_t>(pixel[0] / 4));
            }
        }
    }
    return samples;
}

Bytes makeJpeg(const JpegKind& kind, const Image& picture) {
    return makeJpeg(kind, samplesFor(kind, picture), picture.width(), picture.height());
}

Decoded decodePlainly(const Bytes& file) {
    jpeg_decompress_struct state{};
    jpeg_error_mgr errors{};
    state.err = jpeg_std_error(&errors);
    errors.error_exit = complain;
    jpeg_create_decompress(&state);
    jpeg_mem_src(&state, file.data(), static_cast<unsigned long>(file.size()));
    jpeg_read_header(&state, TRUE);
    if (state.num_components == 4) {
        state.out_color_space = JCS_CMYK;
    }
    jpeg_start_decompress(&state);
    Decoded decoded{static_cast<int>(state.output_width),
                    static_cast<int>(state.output_height),
                    state.output_components,
                    {}};
    const std::size_t rowSize =
        std::size_t{state.output_width} * static_cast<unsigned>(state.output_components);
    decoded.samples.resize(rowSize * state.output_height);
    while (state.output_scanline < state.output_height) {
        JSAMPROW row = &decoded.samples[rowSize * state.output_scanline];
        jpeg_read_scanlines(&state, &row, 1);
    }
    jpeg_finish_decompress(&state);
    jpeg_destroy_decompress(&state);
    return decoded;
}

Image decodedPicture(const Bytes& file) {
    const Decoded decoded = decodePlainly(file);
    Image image(decoded.width, decoded.height);
    const std::uint8_t* sample = decoded.samples.data();
    for (std::size_t i = 0; i < image.byteCount(); ++i) {
        image.row(0)[i] = *sample;
        sample += decoded.components == 3 || i % 3 == 2 ? 1 : 0;
    }
    return image;
}

Bytes withSegment(const Bytes& jpeg, int marker, const Bytes& content) {
    Bytes file(jpeg.begin(), jpeg.begin() + 2);
    const std::size_t length = content.size() + 2;
    append(file, {0xFF, static_cast<std::uint8_t>(marker), static_cast<std::uint8_t>(length >> 8),
                  static_cast<std::uint8_t>(length & 255U)});
    append(file, content);
    file.insert(file.end(), jpeg.begin() + 2, jpeg.end());
    return file;
}

Bytes exifContent(unsigned orientation, unsigned dotsPerInch, bool bigEndian) {
    Bytes block;
    const auto number = [&](std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) {
            const int shift = 8 * (bigEndian ? size - 1 - i : i);
            block.push_back(static_cast<std::uint8_t>(value >> shift & 255U));
        }
    };
    const auto shortEntry = [&](unsigned tag, unsigned value) {
        number(tag, 2), number(3, 2), number(1, 4), number(value, 2), number(0, 2);
    };
    block = bigEndian ? Bytes{'M', 'M'} : Bytes{'I', 'I'};
    number(42, 2), number(8, 4);
    number(dotsPerInch != 0 ? 3 : 1, 2);
    shortEntry(0x0112, orientation);
    if (dotsPerInch != 0) {
        number(0x011A, 2), number(5, 2), number(1, 4), number(8 + 2 + 36 + 4, 4);
        shortEntry(0x0128, 2);
    }
    number(0, 4);
    if (dotsPerInch != 0) {
        number(dotsPerInch * 10, 4), number(10, 4);
    }
    Bytes content = {'E', 'x', 'i', 'f', 0, 0};
    append(content, block);
    return content;
}

} // namespace veldara::test
