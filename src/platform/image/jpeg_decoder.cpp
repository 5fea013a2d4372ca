// JPEG through libjpeg-turbo: headers, and rows that are decoded as they are asked for.
#include "platform/image/colour.h"
#include "platform/image/exif.h"
#include "platform/image/jpeg_errors.h"
#include "platform/image/memory_limits.h"
#include "platform/image/picture_decoder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

namespace {

constexpr int markerExif = JPEG_APP0 + 1;
constexpr int markerProfile = JPEG_APP0 + 2;
constexpr unsigned longestMarker = 0xFFFF;

// More scans than any encoder makes; each costs a pass over the whole picture.
constexpr int mostScans = 100;

// The library's window onto the file.
struct JpegInput {
    jpeg_source_mgr manager{}; // first, so that the library's pointer is a pointer to this
    ByteSource* source = nullptr;
    std::uint64_t position = 0;
    bool ended = false; // the library asked for bytes behind the last one
    std::array<JOCTET, 65536> buffer{};

    explicit JpegInput(ByteSource& bytes);
};

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
        // An end mark instead of the missing bytes. When pixels are missing, too, the decoder
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

JpegInput::JpegInput(ByteSource& bytes) : source(&bytes) {
    manager.init_source = [](j_decompress_ptr) {};
    manager.fill_input_buffer = fillInput;
    manager.skip_input_data = skipInput;
    manager.resync_to_restart = jpeg_resync_to_restart;
    manager.term_source = [](j_decompress_ptr) {};
}

// The library's state, given back in every outcome.
struct Decompressor {
    JpegErrors errors;
    jpeg_decompress_struct state{};

    Decompressor() {
        state.err = &errors.manager;
        errors.guard([this] { jpeg_create_decompress(&state); });
    }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;
    ~Decompressor() { jpeg_destroy_decompress(&state); }
};

void countScans(j_common_ptr library) {
    auto* state = reinterpret_cast<j_decompress_ptr>(library);
    if (state->input_scan_number > mostScans) {
        errorsOf(state).fail("it has too many scans");
    }
}

class JpegDecoder : public PictureDecoder {
  public:
    explicit JpegDecoder(ByteSource& source);

    ColourProfile colourProfile() override;
    void wantColumns(int left, int width) override;
    void skipRows(int count) override;
    void readRows(const MutablePixelView& rows) override;

  private:
    bool isCmyk() const { return state_.out_color_space == JCS_CMYK; }
    void readHeader();
    std::uint64_t blockCount() const;
    void checkPlausible(std::uint64_t fileSize) const;
    void readResolutionAndOrientation();
    ColourProfile fileProfile();
    void start();
    void cropColumns();
    void passSkippedRows();
    void checkAllScansCame() const;
    void readDirect(const MutablePixelView& rows);
    void readConverted(const MutablePixelView& rows);

    Decompressor library_;
    jpeg_decompress_struct& state_ = library_.state;
    JpegInput input_;
    jpeg_progress_mgr progress_{};
    bool started_ = false;
    int wantedLeft_ = 0;
    int wantedWidth_ = 0;
    int skipped_ = 0;  // rows that were passed over and not yet decoded
    int cropLeft_ = 0; // of what the library hands out, around the wanted columns
    std::vector<std::uint8_t> line_;
    std::optional<CmykToRgb> inks_;
};

JpegDecoder::JpegDecoder(ByteSource& source) : input_(source) {
    state_.src = &input_.manager;
    readHeader();
    if (state_.arith_code) {
        // Arithmetic coding may drop trailing bytes by design, so that a truncated file cannot be
        // told from a whole one.
        throw Error("arithmetic-coded JPEG is not supported");
    }
    switch (state_.jpeg_color_space) {
    case JCS_GRAYSCALE:
    case JCS_YCbCr:
    case JCS_RGB:
        state_.out_color_space = JCS_RGB;
        break;
    case JCS_CMYK:
    case JCS_YCCK:
        state_.out_color_space = JCS_CMYK;
        break;
    default:
        throw Error("its kind of colour is not supported");
    }
    facts_.width = static_cast<int>(state_.image_width);
    facts_.height = static_cast<int>(state_.image_height);
    facts_.streams = !jpeg_has_multiple_scans(&state_);
    wantedWidth_ = facts_.width;
    readResolutionAndOrientation();
    checkPlausible(source.size());
}

void JpegDecoder::readHeader() {
    try {
        library_.errors.guard([this] {
            jpeg_save_markers(&state_, markerExif, longestMarker);
            jpeg_save_markers(&state_, markerProfile, longestMarker);
            jpeg_read_header(&state_, TRUE);
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

std::uint64_t JpegDecoder::blockCount() const {
    std::uint64_t blocks = 0;
    for (int i = 0; i < state_.num_components; ++i) {
        const jpeg_component_info& component = state_.comp_info[i];
        blocks += std::uint64_t{component.width_in_blocks} * component.height_in_blocks;
    }
    return blocks;
}

void JpegDecoder::checkPlausible(std::uint64_t fileSize) const {
    // The shortest code is one bit; a sequential block needs two codes, a progressive one can share
    // all but its first with others.
    const std::uint64_t blocks = blockCount();
    const std::uint64_t fewestBits = blocks * (state_.progressive_mode ? 1 : 2);
    if (fewestBits / 8 > fileSize) {
        throw Error(tooFewBytesReason(facts_.width, facts_.height));
    }
    if (!facts_.streams) {
        requireMemory(blocks * sizeof(JBLOCK), facts_.width, facts_.height);
    }
}

void JpegDecoder::readResolutionAndOrientation() {
    constexpr std::array<std::uint8_t, 6> label = {'E', 'x', 'i', 'f', 0, 0};
    ExifFacts exif;
    for (jpeg_saved_marker_ptr marker = state_.marker_list; marker != nullptr;
         marker = marker->next) {
        if (marker->marker == markerExif && marker->data_length > label.size() &&
            std::memcmp(marker->data, label.data(), label.size()) == 0) {
            exif = readExif({marker->data + label.size(), marker->data_length - label.size()});
            break;
        }
    }
    facts_.orientation = exif.orientation;
    facts_.dotsPerInch = exif.dotsPerInch;
    if (state_.saw_JFIF_marker && state_.density_unit != 0) {
        const int jfif = wholeDotsPerInch(state_.X_density, state_.density_unit == 2 ? 2.54 : 1.0);
        facts_.dotsPerInch = jfif != 0 ? jfif : exif.dotsPerInch;
    }
}

ColourProfile JpegDecoder::fileProfile() {
    JOCTET* bytes = nullptr;
    unsigned size = 0;
    boolean found = FALSE;
    library_.errors.guard([&] { found = jpeg_read_icc_profile(&state_, &bytes, &size); });
    if (!found) {
        return {};
    }
    const std::unique_ptr<JOCTET, decltype(&std::free)> owned(bytes, std::free);
    return {bytes, bytes + size};
}

ColourProfile JpegDecoder::colourProfile() {
    return isCmyk() ? ColourProfile{}
                    : profileForRgbRows(fileProfile(), state_.jpeg_color_space == JCS_GRAYSCALE);
}

void JpegDecoder::wantColumns(int left, int width) {
    wantedLeft_ = left;
    wantedWidth_ = width;
}

void JpegDecoder::start() {
    started_ = true;
    if (isCmyk()) {
        inks_.emplace(fileProfile());
    }
    progress_.progress_monitor = countScans;
    state_.progress = &progress_;
    state_.do_block_smoothing = FALSE; // it invents what missing scans would have said
    library_.errors.guard([this] { jpeg_start_decompress(&state_); });
    if (!facts_.streams) {
        checkAllScansCame();
    }
    cropColumns();
    line_.resize(std::size_t{state_.output_width} *
                 static_cast<unsigned>(state_.output_components));
}

void JpegDecoder::checkAllScansCame() const {
    bool complete = !input_.ended;
    for (int i = 0; i < state_.num_components && complete; ++i) {
        complete = state_.comp_info[i].quant_table != nullptr;
        for (int k = 0; state_.progressive_mode && k < DCTSIZE2; ++k) {
            complete = complete && state_.coef_bits[i][k] == 0;
        }
    }
    if (!complete) {
        throw Error("its picture data is damaged or incomplete");
    }
}

void JpegDecoder::skipRows(int count) {
    skipped_ += count;
}

void JpegDecoder::passSkippedRows() {
    // Rows next to a jump are made without their true neighbours where colour is subsampled; these
    // are decoded and dropped.
    const int margin = state_.max_v_samp_factor * DCTSIZE;
    const int fast = std::max(0, skipped_ - margin);
    const int slow = skipped_ - fast;
    skipped_ = 0;
    library_.errors.guard([this, fast, slow] {
        if (fast > 0) {
            jpeg_skip_scanlines(&state_, static_cast<JDIMENSION>(fast));
        }
        for (int y = 0; y < slow; ++y) {
            JSAMPROW line = line_.data();
            jpeg_read_scanlines(&state_, &line, 1);
        }
    });
}

void JpegDecoder::cropColumns() {
    // As with rows: the columns at a cut edge differ from those of the whole picture.
    const int margin = state_.max_h_samp_factor * DCTSIZE;
    const int left = std::max(0, wantedLeft_ - margin);
    const int right = std::min(facts_.width, wantedLeft_ + wantedWidth_ + margin);
    if (right - left == facts_.width) {
        return;
    }
    auto offset = static_cast<JDIMENSION>(left);
    auto width = static_cast<JDIMENSION>(right - left);
    library_.errors.guard([&] { jpeg_crop_scanline(&state_, &offset, &width); });
    cropLeft_ = static_cast<int>(offset);
}

void JpegDecoder::readRows(const MutablePixelView& rows) {
    if (!started_) {
        start();
    }
    if (skipped_ > 0) {
        passSkippedRows();
    }
    if (!isCmyk() && wantedWidth_ == static_cast<int>(state_.output_width)) {
        readDirect(rows);
    } else {
        readConverted(rows);
    }
}

void JpegDecoder::readDirect(const MutablePixelView& rows) {
    library_.errors.guard([this, &rows] {
        constexpr int most = 16;
        std::array<JSAMPROW, most> lines{};
        int done = 0;
        while (done < rows.height()) {
            const int asked = std::min(most, rows.height() - done);
            for (int i = 0; i < asked; ++i) {
                lines[static_cast<std::size_t>(i)] = rows.row(done + i);
            }
            done += static_cast<int>(
                jpeg_read_scanlines(&state_, lines.data(), static_cast<JDIMENSION>(asked)));
        }
    });
}

void JpegDecoder::readConverted(const MutablePixelView& rows) {
    const auto wanted = static_cast<std::size_t>(wantedWidth_);
    const auto before = static_cast<std::size_t>(wantedLeft_ - cropLeft_);
    for (int y = 0; y < rows.height(); ++y) {
        library_.errors.guard([this] {
            JSAMPROW line = line_.data();
            jpeg_read_scanlines(&state_, &line, 1);
        });
        if (!isCmyk()) {
            std::memcpy(rows.row(y), line_.data() + 3 * before, 3 * wanted);
            continue;
        }
        if (state_.saw_Adobe_marker) { // these count light, not ink
            for (std::uint8_t& ink : line_) {
                ink = static_cast<std::uint8_t>(255 - ink);
            }
        }
        inks_->convert(line_.data() + 4 * before, rows.row(y), wanted);
    }
}

} // namespace

std::unique_ptr<PictureDecoder> openJpeg(ByteSource& source) {
    return std::make_unique<JpegDecoder>(source);
}

} // namespace veldara
