#include "output/tile_pool.h"

#include "output/attempt.h"
#include "output/worker_threads.h"

#include <algorithm>
#include <mutex>
#include <thread>

namespace veldara {

TilePixels WholePhotoSource::tile(std::size_t number) {
    const TileRect& rect = tiles_.at(number);
    return {photo_.view().cut(rect.left, rect.top, rect.width(), rect.height()), nullptr};
}

std::size_t workerCount(int asked) {
    return asked > 0 ? static_cast<std::size_t>(asked)
                     : std::max(std::thread::hardware_concurrency(), 1U);
}

// Everything that the workers share. One lock guards it all except the source, which has its own,
// so that reading one tile does not block taking another.
struct TilePool::State : TileWorkers {
    State(TileSource& tileSource, std::size_t tiles, const TileTreatment& tileTreatment,
          TileFormat fileType)
        : source(tileSource), count(tiles), treatment(tileTreatment), type(fileType) {}

    TileSource& source;
    const std::size_t count;
    const TileTreatment treatment;
    const TileFormat type;

    std::mutex sourceLock;
    std::size_t toFetch = 0; // guarded by sourceLock

    std::size_t ahead = 1; // tiles that may be started beyond the committed ones

    void work();
    bool fetch(std::size_t& number, TilePixels& pixels, TileStep& step);
    bool waitForRoom(std::size_t number);
    EncodedTile encode(const TilePixels& pixels) const;
};

// False when the run ends first.
bool TilePool::State::waitForRoom(std::size_t number) {
    std::unique_lock guard(lock);
    changed.wait(guard, [&] { return stopping || number < committed + ahead; });
    return !stopping;
}

// False when there is nothing left to fetch.
bool TilePool::State::fetch(std::size_t& number, TilePixels& pixels, TileStep& step) {
    const std::lock_guard guard(sourceLock);
    number = toFetch;
    if (number >= count || !waitForRoom(number)) {
        return false;
    }
    ++toFetch;
    if (!attempt(step, TileOutcome::sourceFailed, [&] { pixels = source.tile(number); })) {
        toFetch = count; // nothing can follow a tile that is missing
    }
    return true;
}

EncodedTile TilePool::State::encode(const TilePixels& pixels) const {
    EncodedTile result;
    attempt(result.step, TileOutcome::encodeFailed, [&] {
        const TileImage image = makeTileImage(pixels.view, treatment);
        result.bytes =
            encodeImage(image.view(), type, treatment.resolution, source.colourProfile());
    });
    return result;
}

void TilePool::State::work() {
    for (;;) {
        std::size_t number = 0;
        TilePixels pixels;
        EncodedTile result;
        if (!fetch(number, pixels, result.step)) {
            return;
        }
        if (result.step.outcome == TileOutcome::written) {
            result = encode(pixels);
        }
        pixels = {};
        finished.put(number, std::move(result));
    }
}

TilePool::TilePool(TileSource& source, std::size_t tiles, const TileTreatment& treatment,
                   TileFormat type, int workers)
    : state_(std::make_unique<State>(source, tiles, treatment, type)) {
    const std::size_t many = std::min(workerCount(workers), std::max<std::size_t>(tiles, 1));
    // One more than there are workers, so that all of them are busy during a write.
    state_->ahead = many + 1;
    startWorkers(state_->threads, many, [state = state_.get()] { state->work(); });
}

TilePool::~TilePool() {
    state_->stop();
}

TileWorkers& TilePool::workers() {
    return *state_;
}

} // namespace veldara
