#include "sheets/jpeg_cutter.h"

#include "platform/error.h"
#include "platform/image/jpeg_file.h"
#include "platform/image/memory_limits.h"
#include "sheets/jpeg_coefficients.h"
#include "sheets/jpeg_cut_schedule.h"
#include "sheets/jpeg_miniature.h"
#include "sheets/jpeg_piece_writer.h"

#include <algorithm>
#include <new>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace veldara {

namespace {

// A strip is a good piece of work for a worker, and several of them stay in the processor's cache.
constexpr std::uint64_t usualStripBytes = std::uint64_t{1} << 20;
constexpr std::uint64_t mostRowsInStrip = 4;

// Strips in the ring beside the one that each worker is at.
constexpr int stripsBetween = 3;

// No machine reads as fast as that many can write.
constexpr int mostWorkers = 32;

JpegColour colourOf(const jpeg_decompress_struct& state) {
    switch (state.jpeg_color_space) {
    case JCS_GRAYSCALE:
        return JpegColour::grey;
    case JCS_RGB:
        return JpegColour::rgb;
    case JCS_CMYK:
        return JpegColour::cmyk;
    case JCS_YCCK:
        return JpegColour::ycck;
    default:
        return JpegColour::yCbCr;
    }
}

JpegFacts factsOf(JpegFile& file) {
    const jpeg_decompress_struct& state = file.state();
    JpegFacts facts;
    facts.width = static_cast<int>(state.image_width);
    facts.height = static_cast<int>(state.image_height);
    facts.components = state.num_components;
    facts.colour = colourOf(state);
    facts.inksInverted = facts.components == 4 && state.saw_Adobe_marker != FALSE;
    facts.colourTransform =
        facts.colour == JpegColour::yCbCr || facts.colour == JpegColour::ycck ? 1 : 0;
    const ExifFacts marks = file.exifFacts();
    facts.orientation = marks.orientation;
    facts.dotsPerInch = marks.dotsPerInch;
    facts.profile = file.profile();
    facts.streams = file.hasOneScan();
    return facts;
}

McuGrid gridOf(const jpeg_decompress_struct& state) {
    return {static_cast<int>(state.image_width), static_cast<int>(state.image_height),
            state.max_h_samp_factor * DCTSIZE, state.max_v_samp_factor * DCTSIZE};
}

// No decoder could show the pieces otherwise.
void checkSampling(const jpeg_decompress_struct& state) {
    for (int i = 0; i < state.num_components; ++i) {
        const jpeg_component_info& component = state.comp_info[i];
        if (state.max_h_samp_factor % component.h_samp_factor != 0 ||
            state.max_v_samp_factor % component.v_samp_factor != 0) {
            throw Error("its kind of colour sampling is not supported");
        }
    }
}

int coresOr(int workers) {
    if (workers == 0) {
        workers = static_cast<int>(std::thread::hardware_concurrency());
    }
    return std::clamp(workers, 1, mostWorkers);
}

} // namespace

class JpegCutter::Work {
  public:
    explicit Work(std::unique_ptr<ByteSource> photo)
        : source_(std::move(photo)), file_(*source_), facts_(factsOf(file_)),
          grid_(gridOf(file_.state())) {
        checkSampling(file_.state());
        facts_.coefficientBytes =
            JpegCoefficients::rowBytes(file_.state()) * static_cast<std::uint64_t>(grid_.rows());
    }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    ~Work();

    const JpegFacts& facts() const { return facts_; }
    const McuGrid& grid() const { return grid_; }
    void start(const std::vector<PixelRectangle>& wanted, int workers);
    bool waitReady(std::chrono::milliseconds time) {
        return taken_ == pieces_.size() || schedule_->waitReady(time);
    }
    JpegPiece next();
    bool wantSmall(const PixelRectangle& area, const SmallSize& size);
    std::optional<Image> small(std::chrono::milliseconds time);

  private:
    struct Shape {
        int rowsPerStrip = 1;
        int stripsKept = 1;
    };
    Shape shape(int workers) const;
    void makeWriters();
    void startThreads(int workers);
    void read();
    void readStrips();
    void readWhole();
    void code(const std::unique_ptr<JpegPieceWriter>& writer);

    template <class Task>
    void guarded(Task&& task) noexcept {
        try {
            task();
        } catch (const std::bad_alloc&) {
            schedule_->fail(std::make_exception_ptr(Error("there is not enough memory")));
        } catch (...) {
            schedule_->fail(std::current_exception());
        }
    }

    std::unique_ptr<ByteSource> source_;
    JpegFile file_;
    JpegFacts facts_;
    McuGrid grid_;
    int rowsPerStrip_ = 1;
    std::vector<PixelRectangle> pieces_;
    std::size_t taken_ = 0;
    std::optional<JpegCutSchedule> schedule_;
    std::optional<JpegCoefficients> coefficients_;
    std::optional<JpegMiniature> miniature_;
    std::vector<std::unique_ptr<JpegPieceWriter>> writers_; // one a worker
    std::vector<std::thread> threads_;
};

JpegCutter::Work::~Work() {
    if (schedule_) {
        schedule_->stop();
    }
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

JpegCutter::Work::Shape JpegCutter::Work::shape(int workers) const {
    if (!facts_.streams) {
        return {grid_.rows(), 1}; // the photo is one strip
    }
    const std::uint64_t rowBytes = JpegCoefficients::rowBytes(file_.state());
    const auto rows =
        static_cast<int>(std::clamp<std::uint64_t>(usualStripBytes / rowBytes, 1, mostRowsInStrip));
    return {rows, std::min(workers + stripsBetween, (grid_.rows() + rows - 1) / rows)};
}

void JpegCutter::Work::start(const std::vector<PixelRectangle>& wanted, int workers) {
    std::vector<McuRows> rows;
    for (const PixelRectangle& rectangle : wanted) {
        if (!liesInPhoto(grid_, rectangle)) {
            throw Error("a part was asked for that the photo does not have");
        }
        pieces_.push_back(withContext(grid_, rectangle));
        rows.push_back(mcuRowsOf(grid_, pieces_.back()));
    }
    if (pieces_.empty() && !miniature_) {
        return;
    }
    workers = coresOr(workers);
    const Shape strips = shape(workers);
    rowsPerStrip_ = strips.rowsPerStrip;
    try {
        schedule_.emplace(rows, strips.rowsPerStrip, strips.stripsKept,
                          miniature_ ? miniature_->rowsNeeded() : 0);
        writers_.resize(static_cast<std::size_t>(workers));
        if (facts_.streams) {
            makeWriters();
        }
        coefficients_.emplace(file_,
                              std::min(strips.rowsPerStrip * strips.stripsKept, grid_.rows()));
    } catch (const std::bad_alloc&) {
        throw Error("there is not enough memory");
    }
    startThreads(workers);
}

void JpegCutter::Work::makeWriters() {
    for (std::unique_ptr<JpegPieceWriter>& writer : writers_) {
        writer = std::make_unique<JpegPieceWriter>(file_);
    }
}

void JpegCutter::Work::startThreads(int workers) {
    threads_.reserve(static_cast<std::size_t>(workers) + 1);
    try {
        threads_.emplace_back([this] { guarded([this] { read(); }); });
        for (const std::unique_ptr<JpegPieceWriter>& writer : writers_) {
            threads_.emplace_back([this, &writer] { guarded([&] { code(writer); }); });
        }
    } catch (const std::system_error&) {
        if (threads_.size() < 2) { // fewer workers are slower, and good enough
            throw Error("the machine has no thread left to cut the photo with");
        }
    }
}

void JpegCutter::Work::read() {
    if (facts_.streams) {
        readStrips();
    } else {
        readWhole();
    }
}

void JpegCutter::Work::readStrips() {
    coefficients_->read([this](int rows) {
        if (miniature_ && rows > 0 && rows <= miniature_->rowsNeeded()) {
            miniature_->add(*coefficients_, rows - 1); // the last one that has come
        }
        if (rows >= schedule_->rowsNeeded()) {
            schedule_->endReading();
            return false;
        }
        return rows % rowsPerStrip_ != 0 || schedule_->beginStrip(rows / rowsPerStrip_);
    });
}

void JpegCutter::Work::readWhole() {
    if (!coefficients_->read([this](int) { return !schedule_->stopped(); })) {
        return;
    }
    makeWriters(); // tables may change from scan to scan
    for (int row = 0; miniature_ && row < miniature_->rowsNeeded(); ++row) {
        miniature_->add(*coefficients_, row);
    }
    schedule_->endReading();
}

void JpegCutter::Work::code(const std::unique_ptr<JpegPieceWriter>& writer) {
    while (const std::optional<CutJob> job = schedule_->takeJob()) {
        schedule_->finishJob(*job,
                             writer->write(*coefficients_, grid_, pieces_[job->piece], job->rows));
    }
}

JpegPiece JpegCutter::Work::next() {
    if (taken_ == pieces_.size()) {
        throw Error("the photo has no further piece");
    }
    try {
        JpegPiece piece;
        piece.bytes = schedule_->takePiece();
        const PixelRectangle& place = pieces_[taken_++];
        piece.left = place.left;
        piece.top = place.top;
        piece.width = place.width;
        piece.height = place.height;
        return piece;
    } catch (const std::bad_alloc&) {
        throw Error("there is not enough memory");
    }
}

bool JpegCutter::Work::wantSmall(const PixelRectangle& area, const SmallSize& size) {
    if (!JpegMiniature::serves(file_.state(), area, size)) {
        return false;
    }
    miniature_.emplace(file_.state(), area, size);
    return true;
}

std::optional<Image> JpegCutter::Work::small(std::chrono::milliseconds time) {
    return schedule_->waitRead(time) ? std::optional(miniature_->picture()) : std::nullopt;
}

JpegCutter::JpegCutter(std::unique_ptr<ByteSource> photo)
    : work_(std::make_unique<Work>(std::move(photo))) {}

JpegCutter::~JpegCutter() = default;

const JpegFacts& JpegCutter::facts() const {
    return work_->facts();
}

bool JpegCutter::fitsMemory() const {
    return facts().streams || facts().coefficientBytes <= availableMemory() / 2;
}

PixelRectangle JpegCutter::pieceFor(const PixelRectangle& wanted) const {
    return withContext(work_->grid(), wanted);
}

bool JpegCutter::wantSmall(const PixelRectangle& area, const SmallSize& size) {
    return work_->wantSmall(area, size);
}

void JpegCutter::start(const std::vector<PixelRectangle>& wanted, int workers) {
    work_->start(wanted, workers);
}

bool JpegCutter::waitReady(std::chrono::milliseconds time) {
    return work_->waitReady(time);
}

JpegPiece JpegCutter::next() {
    return work_->next();
}

std::optional<Image> JpegCutter::small(std::chrono::milliseconds time) {
    return work_->small(time);
}

} // namespace veldara
