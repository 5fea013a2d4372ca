// JPEG through libjpeg-turbo: headers, and rows that are decoded as they are asked for.
#include "platform/image/colour.h"
#include "platform/image/jpeg_file.h"
#include "platform/image/memory_limits.h"
#include "platform/image/picture_decoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <vector>

namespace veldara {

namespace {

class JpegDecoder : public PictureDecoder {
  public:
    explicit JpegDecoder(ByteSource& source);

    ColourProfile colourProfile() override;
    void wantColumns(int left, int width) override;
    void skipRows(int count) override;
    void readRows(const MutablePixelView& rows) override;

  private:
    bool isCmyk() const { return state_.out_color_space == JCS_CMYK; }
    void start();
    void cropColumns();
    void passSkippedRows();
    void readDirect(const MutablePixelView& rows);
    void readConverted(const MutablePixelView& rows);

    JpegFile file_;
    jpeg_decompress_struct& state_ = file_.state();
    // What the library calls while it reads the scans of a picture that has several.
    struct Progress {
        jpeg_progress_mgr manager{}; // first, so that the library's pointer is a pointer to this
        const JpegDecoder* decoder = nullptr;
    };
    static void watchScans(j_common_ptr library);

    Progress progress_;
    bool started_ = false;
    int wantedLeft_ = 0;
    int wantedWidth_ = 0;
    int skipped_ = 0;  // rows that were passed over and not yet decoded
    int cropLeft_ = 0; // of what the library returns, around the wanted columns
    std::vector<std::uint8_t> line_;
    std::optional<CmykToRgb> inks_;
};

JpegDecoder::JpegDecoder(ByteSource& source) : file_(source) {
    state_.out_color_space = state_.num_components == 4 ? JCS_CMYK : JCS_RGB;
    facts_.width = static_cast<int>(state_.image_width);
    facts_.height = static_cast<int>(state_.image_height);
    facts_.streams = file_.hasOneScan();
    wantedWidth_ = facts_.width;
    const ExifFacts exif = file_.exifFacts();
    facts_.orientation = exif.orientation;
    facts_.dotsPerInch = exif.dotsPerInch;
    if (!facts_.streams) {
        facts_.heldBytes = file_.blockCount() * sizeof(JBLOCK);
        requireMemory(facts_.heldBytes, facts_.width, facts_.height);
    }
}

ColourProfile JpegDecoder::colourProfile() {
    return isCmyk() ? ColourProfile{}
                    : profileForRgbRows(file_.profile(), state_.jpeg_color_space == JCS_GRAYSCALE);
}

void JpegDecoder::wantColumns(int left, int width) {
    wantedLeft_ = left;
    wantedWidth_ = width;
}

void JpegDecoder::watchScans(j_common_ptr library) {
    JpegFile::countScans(library);
    if (reinterpret_cast<const Progress*>(library->progress)->decoder->shallStop()) {
        reinterpret_cast<JpegErrors*>(library->err)->fail("its decoding was stopped");
    }
}

void JpegDecoder::start() {
    started_ = true;
    if (isCmyk()) {
        inks_.emplace(file_.profile());
    }
    progress_.manager.progress_monitor = watchScans;
    progress_.decoder = this;
    state_.progress = &progress_.manager;
    state_.do_block_smoothing = FALSE; // it invents what missing scans would have said
    file_.errors().guard([this] { jpeg_start_decompress(&state_); });
    if (!facts_.streams) {
        file_.checkAllScansCame();
    }
    cropColumns();
    line_.resize(std::size_t{state_.output_width} *
                 static_cast<unsigned>(state_.output_components));
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
    file_.errors().guard([this, fast, slow] {
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
    file_.errors().guard([&] { jpeg_crop_scanline(&state_, &offset, &width); });
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
    file_.errors().guard([this, &rows] {
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
        file_.errors().guard([this] {
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
