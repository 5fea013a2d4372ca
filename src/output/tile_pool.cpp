#include "output/tile_pool.h"

#include "output/attempt.h"
#include "output/tile_mailbox.h"
#include "output/worker_threads.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
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

// Everything that the workers share, under one lock except the source, which has its own so that
// fetching one tile does not hold up handing out another.
struct TilePool::State {
    State(TileSource& tileSource, std::size_t tiles, const TileTreatment& tileTreatment,
          FileType fileType)
        : source(tileSource), count(tiles), treatment(tileTreatment), type(fileType) {}

    TileSource& source;
    const std::size_t count;
    const TileTreatment treatment;
    const FileType type;

    std::mutex sourceLock;
    std::size_t toFetch = 0; // guarded by sourceLock

    std::mutex lock;
    std::condition_variable changed;
    std::size_t committed = 0;
    std::size_t ahead = 1; // tiles that may be in work or waiting beyond the committed ones
    bool stopping = false;

    TileMailbox finished;
    std::vector<std::thread> workers;

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
    std::optional<TileImage> image;
    const bool made = attempt(result.step, TileOutcome::compensationFailed,
                              [&] { image.emplace(makeTileImage(pixels.view, treatment)); });
    if (made) {
        attempt(result.step, TileOutcome::encodeFailed, [&] {
            result.bytes =
                encodeImage(image->view(), type, treatment.resolution, source.colourProfile());
        });
    }
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
                   FileType type, int workers)
    : state_(std::make_unique<State>(source, tiles, treatment, type)) {
    const std::size_t many = std::min(workerCount(workers), std::max<std::size_t>(tiles, 1));
    // One more than there are workers, so that all of them have something to do during a write.
    state_->ahead = many + 1;
    startWorkers(state_->workers, many, [state = state_.get()] { state->work(); });
}

TilePool::~TilePool() {
    {
        const std::lock_guard guard(state_->lock);
        state_->stopping = true;
    }
    state_->changed.notify_all();
    for (std::thread& worker : state_->workers) {
        worker.join();
    }
}

bool TilePool::waitReady(std::size_t number, std::chrono::milliseconds time) {
    return state_->finished.waitReady(number, time);
}

EncodedTile TilePool::take(std::size_t number) {
    return state_->finished.take(number);
}

void TilePool::commit(std::size_t number) {
    {
        const std::lock_guard guard(state_->lock);
        state_->committed = number + 1;
    }
    state_->changed.notify_all();
}

} // namespace veldara
