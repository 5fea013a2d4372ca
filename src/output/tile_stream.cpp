#include "output/tile_stream.h"

#include "output/attempt.h"
#include "output/tile_pool.h"
#include "output/tile_sink.h"
#include "output/worker_threads.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace veldara {
namespace {

// A strip of rows is large enough to be worth a lock and small enough to stay in the caches between
// the thread that decodes it and those that encode it.
constexpr std::size_t stripBytes = 768 << 10;
constexpr int fewestStripRows = 8;
constexpr int mostStripRows = 128;

int stripRowsFor(int width) {
    const std::size_t rows = stripBytes / (std::size_t{3} * static_cast<std::size_t>(width));
    return static_cast<int>(std::clamp<std::size_t>(rows, fewestStripRows, mostStripRows));
}

// Rows of the photo within the columns of the crop.
struct Strip {
    int top = 0;
    int height = 0;
    Image pixels;
    int bottom() const { return top + height - 1; }
};

// The progress of one tile.
struct TileProgress {
    int nextRow = 0;
    bool busy = false; // a worker is encoding it
    bool done = false;
    std::unique_ptr<TileSink> sink;
};

// The rows of one strip that one tile needs next.
struct Piece {
    std::size_t tile = 0;
    Strip* strip = nullptr;
    int top = 0;
    int height = 0;
    bool last = false;
};

} // namespace

// Everything is guarded by the lock, except the reader, which belongs to the thread that set
// `decoding`, and a tile's sink, which belongs to the thread that set `busy`.
struct TileStream::State : TileWorkers {
    State(std::unique_ptr<RowReader> reader, std::vector<TileRect> rects, int wide,
          TileSinks tileSinks, std::size_t many)
        : photo(std::move(reader)), tiles(std::move(rects)),
          tilesWide(static_cast<std::size_t>(wide)), sinks(std::move(tileSinks)),
          mostStrips(2 * many + 2), progress(tiles.size()) {}

    const std::unique_ptr<RowReader> photo;
    const std::vector<TileRect> tiles;
    const std::size_t tilesWide;
    const TileSinks sinks;
    const std::size_t mostStrips;

    int cropLeft = 0;
    int cropWidth = 0;
    int cropBottom = 0;
    int stripRows = 0;

    bool decoding = false;
    int skip = 0;    // rows to skip before the next read
    int nextRow = 0; // of the photo
    std::deque<Strip> strips;
    std::vector<Image> spare; // pixels of dropped strips, for reuse
    std::vector<TileProgress> progress;
    std::size_t firstOpen = 0; // all tiles before it are done
    std::optional<TileStep> sourceFailure;

    void setUp();
    void work();
    bool mayDecode() const;
    std::optional<Piece> nextPiece();
    Strip* stripWith(int row);
    Strip newStrip();
    void decode(std::unique_lock<std::mutex>& guard);
    void encode(const Piece& piece, std::unique_lock<std::mutex>& guard);
    void finish(std::size_t tile, EncodedTile result);
    bool lacksRows(std::size_t tile) const;
    void failSource(const TileStep& step);
    void dropUsedStrips();
};

void TileStream::State::setUp() {
    int right = 0;
    cropLeft = tiles.front().left;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        progress[i].nextRow = tiles[i].top;
        cropLeft = std::min(cropLeft, tiles[i].left);
        right = std::max(right, tiles[i].right);
        cropBottom = std::max(cropBottom, tiles[i].bottom);
    }
    cropWidth = right - cropLeft + 1;
    stripRows = stripRowsFor(cropWidth);
    nextRow = tiles.front().top;
    skip = nextRow;
    photo->wantColumns(cropLeft, cropWidth);
}

// Rows are decoded while there is room for them, and no more than two rows of tiles ahead of what
// is written.
bool TileStream::State::mayDecode() const {
    if (decoding || nextRow > cropBottom || strips.size() >= mostStrips) {
        return false;
    }
    const std::size_t beyond = (committed / tilesWide + 2) * tilesWide;
    return beyond >= tiles.size() || nextRow < tiles[beyond].top;
}

Strip* TileStream::State::stripWith(int row) {
    for (Strip& strip : strips) {
        if (strip.top <= row && row <= strip.bottom()) {
            return &strip;
        }
    }
    return nullptr;
}

// The topmost piece, so that strips are dropped in order.
std::optional<Piece> TileStream::State::nextPiece() {
    while (firstOpen < tiles.size() && progress[firstOpen].done) {
        ++firstOpen;
    }
    std::optional<Piece> best;
    for (std::size_t i = firstOpen; i < tiles.size() && tiles[i].top < nextRow; ++i) {
        const TileProgress& tile = progress[i];
        if (tile.busy || tile.done || (best && best->top <= tile.nextRow)) {
            continue;
        }
        if (Strip* strip = stripWith(tile.nextRow)) {
            const int bottom = std::min(strip->bottom(), tiles[i].bottom);
            best =
                Piece{i, strip, tile.nextRow, bottom - tile.nextRow + 1, bottom == tiles[i].bottom};
        }
    }
    return best;
}

Strip TileStream::State::newStrip() {
    Strip strip;
    strip.top = nextRow;
    strip.height = std::min(stripRows, cropBottom - nextRow + 1);
    if (!spare.empty()) {
        strip.pixels = std::move(spare.back());
        spare.pop_back();
    }
    return strip;
}

void TileStream::State::decode(std::unique_lock<std::mutex>& guard) {
    Strip strip = newStrip();
    const int pass = std::exchange(skip, 0);
    decoding = true;
    guard.unlock();
    TileStep step;
    const bool good = attempt(step, TileOutcome::sourceFailed, [&] {
        if (strip.pixels.empty()) {
            strip.pixels = Image(cropWidth, stripRows);
        }
        photo->skipRows(pass);
        photo->readRows(strip.pixels.mutableView().cut(0, 0, cropWidth, strip.height));
    });
    guard.lock();
    decoding = false;
    if (good) {
        nextRow = strip.bottom() + 1;
        strips.push_back(std::move(strip));
        dropUsedStrips();
    } else {
        failSource(step);
    }
    changed.notify_all();
}

void TileStream::State::encode(const Piece& piece, std::unique_lock<std::mutex>& guard) {
    TileProgress& tile = progress[piece.tile];
    const TileRect& rect = tiles[piece.tile];
    tile.busy = true;
    guard.unlock();
    EncodedTile result;
    const bool good = attempt(result.step, TileOutcome::encodeFailed, [&] {
        if (!tile.sink) {
            tile.sink = sinks(piece.tile);
        }
        tile.sink->writeRows(piece.strip->pixels.view().cut(
            rect.left - cropLeft, piece.top - piece.strip->top, rect.width(), piece.height));
        if (piece.last) {
            result.bytes = tile.sink->finish();
        }
    });
    guard.lock();
    tile.busy = false;
    tile.nextRow = piece.top + piece.height;
    if (good && lacksRows(piece.tile)) {
        result.step = *sourceFailure;
    }
    if (piece.last || result.step.outcome != TileOutcome::written) {
        finish(piece.tile, std::move(result));
    }
    dropUsedStrips();
    changed.notify_all();
}

void TileStream::State::finish(std::size_t tile, EncodedTile result) {
    progress[tile].done = true;
    progress[tile].sink.reset();
    finished.put(tile, std::move(result));
}

// Whether the tile needs rows that cannot be decoded.
bool TileStream::State::lacksRows(std::size_t tile) const {
    return sourceFailure && tiles[tile].bottom >= nextRow;
}

// Busy tiles are finished by their worker.
void TileStream::State::failSource(const TileStep& step) {
    sourceFailure = step;
    cropBottom = nextRow - 1; // stops decoding
    for (std::size_t i = firstOpen; i < tiles.size(); ++i) {
        if (!progress[i].done && !progress[i].busy && lacksRows(i)) {
            finish(i, {{}, step});
        }
    }
}

// A strip can be dropped when every unfinished tile has encoded its rows.
void TileStream::State::dropUsedStrips() {
    while (!strips.empty()) {
        const int bottom = strips.front().bottom();
        for (std::size_t i = firstOpen; i < tiles.size() && tiles[i].top <= bottom; ++i) {
            if (!progress[i].done && progress[i].nextRow <= bottom) {
                return;
            }
        }
        spare.push_back(std::move(strips.front().pixels));
        strips.pop_front();
    }
}

void TileStream::State::work() {
    std::unique_lock guard(lock);
    while (!stopping) {
        // Decoding has priority, because all other workers wait for it.
        if (mayDecode()) {
            decode(guard);
        } else if (const std::optional<Piece> piece = nextPiece()) {
            encode(*piece, guard);
        } else {
            changed.wait(guard);
        }
    }
}

namespace {

TileSinks fileSinks(const RowReader& photo, const std::vector<TileRect>& tiles,
                    const TileTreatment& treatment, TileFormat type) {
    return [&photo, tiles, treatment, type](std::size_t tile) {
        return openTileSink(tiles[tile], treatment, type, photo.colourProfile());
    };
}

} // namespace

TileStream::TileStream(std::unique_ptr<RowReader> photo, std::vector<TileRect> tiles, int tilesWide,
                       const TileTreatment& treatment, TileFormat type, int workers) {
    TileSinks sinks = fileSinks(*photo, tiles, treatment, type);
    begin(std::move(photo), std::move(tiles), tilesWide, std::move(sinks), workers);
}

TileStream::TileStream(std::unique_ptr<RowReader> photo, std::vector<TileRect> tiles, int tilesWide,
                       TileSinks sinks, int workers) {
    begin(std::move(photo), std::move(tiles), tilesWide, std::move(sinks), workers);
}

void TileStream::begin(std::unique_ptr<RowReader> photo, std::vector<TileRect> tiles, int tilesWide,
                       TileSinks sinks, int workers) {
    const std::size_t threads = workerCount(workers);
    state_ = std::make_unique<State>(std::move(photo), std::move(tiles), tilesWide,
                                     std::move(sinks), threads);
    state_->setUp();
    startWorkers(state_->threads, threads, [state = state_.get()] { state->work(); });
}

TileStream::~TileStream() {
    state_->stop();
}

TileWorkers& TileStream::workers() {
    return *state_;
}

} // namespace veldara
