#include "platform/image/jpeg_file.h"

#include "platform/image/memory_limits.h"

#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>

namespace veldara {

namespace {

constexpr int markerExif = JPEG_APP0 + 1;
constexpr int markerProfile = JPEG_APP0 + 2;
constexpr unsigned longestMarker = 0xFFFF;
constexpr int mostScans = 100;

JpegInput& inputOf(j_decompress_ptr library) {
    return *reinterpret_cast<JpegInput*>(library->src);
}

JpegErrors& errorsOf(j_decompress_ptr library) {
    return *reinterpret_cast<JpegErrors*>(library->err);
}

// Reads without letting an exception into the library.
std::optional<std::size_t> readBlock(JpegInput& input) noexcept {
    try {
        return input.source->readAt(input.position, input.buffer.data(), input.buffer.size());
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

boolean fillInput(j_decompress_ptr library) {
    JpegInput& input = inputOf(library);
    const std::optional<std::size_t> got = readBlock(input);
    if (!got) {
        errorsOf(library).fail("the drive could not be read");
    }
    if (*got == 0) {
        // An end marker instead of the missing bytes. When pixels are missing, too, the decoder
        // runs into it and warns; when all were there, the file only lacks its last two bytes.
        input.ended = true;
        input.buffer[0] = 0xFF;
        input.buffer[1] = JPEG_EOI;
    }
    input.position += *got;
    input.manager.next_input_byte = input.buffer.data();
    input.manager.bytes_in_buffer = *got == 0 ? 2 : *got;
    return TRUE;
}

void skipInput(j_decompress_ptr library, long count) {
    JpegInput& input = inputOf(library);
    if (count <= 0) {
        return;
    }
    auto left = static_cast<std::uint64_t>(count);
    if (left <= input.manager.bytes_in_buffer) {
        input.manager.next_input_byte += left;
        input.manager.bytes_in_buffer -= static_cast<std::size_t>(left);
        return;
    }
    left -= input.manager.bytes_in_buffer;
    input.position += left;
    input.manager.bytes_in_buffer = 0;
}

} // namespace

JpegInput::JpegInput(ByteSource& bytes) : source(&bytes) {
    manager.init_source = [](j_decompress_ptr) {};
    manager.fill_input_buffer = fillInput;
    manager.skip_input_data = skipInput;
    manager.resync_to_restart = jpeg_resync_to_restart;
    manager.term_source = [](j_decompress_ptr) {};
}

JpegDecompressor::JpegDecompressor() {
    state.err = &errors.manager;
    errors.guard([this] { jpeg_create_decompress(&state); });
}

JpegDecompressor::~JpegDecompressor() {
    jpeg_destroy_decompress(&state);
}

JpegFile::JpegFile(ByteSource& source) : input_(source) {
    state().src = &input_.manager;
    readHeader();
    checkKind();
    oneScan_ = !jpeg_has_multiple_scans(&state());
    // The shortest code is one bit; a sequential block needs two codes, a progressive one can share
    // all but its first with others.
    const std::uint64_t fewestBits = blockCount() * (state().progressive_mode ? 1 : 2);
    if (fewestBits / 8 > source.size()) {
        throw Error(tooFewBytesReason(static_cast<int>(state().image_width),
                                      static_cast<int>(state().image_height)));
    }
}

void JpegFile::readHeader() {
    try {
        errors().guard([this] {
            jpeg_save_markers(&state(), markerExif, longestMarker);
            jpeg_save_markers(&state(), markerProfile, longestMarker);
            jpeg_read_header(&state(), TRUE);
        });
    } catch (const Error&) {
        if (!input_.ended) {
            throw;
        }
    }
    if (input_.ended) {
        throw Error("the file ends within its header");
    }
}

void JpegFile::checkKind() const {
    if (state().arith_code) {
        // Arithmetic coding may drop trailing bytes by design, so that a truncated file cannot be
        // told from a whole one.
        throw Error("arithmetic-coded JPEG is not supported");
    }
    switch (state().jpeg_color_space) {
    case JCS_GRAYSCALE:
    case JCS_YCbCr:
    case JCS_RGB:
    case JCS_CMYK:
    case JCS_YCCK:
        break;
    default:
        throw Error("its kind of colour is not supported");
    }
}

std::uint64_t JpegFile::blockCount() const {
    std::uint64_t blocks = 0;
    for (int i = 0; i < state().num_components; ++i) {
        const jpeg_component_info& component = state().comp_info[i];
        blocks += std::uint64_t{component.width_in_blocks} * component.height_in_blocks;
    }
    return blocks;
}

ExifFacts JpegFile::exifFacts() const {
    constexpr std::array<std::uint8_t, 6> label = {'E', 'x', 'i', 'f', 0, 0};
    ExifFacts facts;
    for (jpeg_saved_marker_ptr marker = state().marker_list; marker != nullptr;
         marker = marker->next) {
        if (marker->marker == markerExif && marker->data_length > label.size() &&
            std::memcmp(marker->data, label.data(), label.size()) == 0) {
            facts = readExif({marker->data + label.size(), marker->data_length - label.size()});
            break;
        }
    }
    if (state().saw_JFIF_marker && state().density_unit != 0) {
        const int jfif =
            wholeDotsPerInch(state().X_density, state().density_unit == 2 ? 2.54 : 1.0);
        facts.dotsPerInch = jfif != 0 ? jfif : facts.dotsPerInch;
    }
    return facts;
}

ColourProfile JpegFile::profile() {
    JOCTET* bytes = nullptr;
    unsigned size = 0;
    boolean found = FALSE;
    errors().guard([&] { found = jpeg_read_icc_profile(&state(), &bytes, &size); });
    if (!found) {
        return {};
    }
    const std::unique_ptr<JOCTET, decltype(&std::free)> owned(bytes, std::free);
    return {bytes, bytes + size};
}

void JpegFile::checkAllScansCame() const {
    bool complete = !input_.ended;
    for (int i = 0; i < state().num_components && complete; ++i) {
        complete = state().comp_info[i].quant_table != nullptr;
        for (int k = 0; state().progressive_mode && k < DCTSIZE2; ++k) {
            complete = complete && state().coef_bits[i][k] == 0;
        }
    }
    if (!complete) {
        throw Error("its picture data is damaged or incomplete");
    }
}

void JpegFile::countScans(j_common_ptr library) {
    auto* state = reinterpret_cast<j_decompress_ptr>(library);
    if (state->input_scan_number > mostScans) {
        errorsOf(state).fail("it has too many scans");
    }
}

} // namespace veldara
