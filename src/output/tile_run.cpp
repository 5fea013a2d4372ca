#include "output/tile_run.h"

#include "platform/error.h"

#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>

namespace veldara {
namespace {

// A tile as a worker left it.
struct EncodedTile {
    std::vector<std::uint8_t> bytes;
    TileStep step;
};

// Runs the work; what it throws becomes the outcome. True when it threw nothing.
template <class Work>
bool attempt(TileStep& step, TileOutcome failure, Work work) {
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        step = {failure, error.what()};
    }
    return false;
}

} // namespace

TilePixels WholePhotoSource::tile(std::size_t number) {
    const TileRect& rect = tiles_.at(number);
    return {photo_.view().cut(rect.left, rect.top, rect.width(), rect.height()), nullptr};
}

TileDisk realDisk(const std::filesystem::path& folder) {
    TileDisk disk;
    disk.freeSpace = [folder]() -> std::optional<std::uint64_t> {
        std::error_code error;
        const std::filesystem::space_info space = std::filesystem::space(folder, error);
        return error ? std::nullopt : std::optional<std::uint64_t>(space.available);
    };
    disk.write = writeWholeFile;
    return disk;
}

// Everything that the workers share, under one lock except the source, which has its own so that
// decoding one tile does not hold up handing out another.
struct TileRun::State {
    State(TileSource& tileSource, TileJob tileJob, TileDisk tileDisk)
        : source(tileSource), job(std::move(tileJob)), disk(std::move(tileDisk)) {}

    TileSource& source;
    const TileJob job;
    const TileDisk disk;

    std::mutex sourceLock;
    std::size_t toFetch = 0; // guarded by sourceLock

    std::mutex lock;
    std::condition_variable changed;
    std::map<std::size_t, EncodedTile> encoded;
    std::size_t committed = 0;
    std::size_t ahead = 1; // tiles that may be in work or waiting beyond the committed ones
    bool stopping = false;

    std::vector<std::thread> workers;

    void work();
    bool waitForRoom(std::size_t number);
    EncodedTile encode(const TilePixels& pixels) const;
};

// False when the run ends first.
bool TileRun::State::waitForRoom(std::size_t number) {
    std::unique_lock guard(lock);
    changed.wait(guard, [&] { return stopping || number < committed + ahead; });
    return !stopping;
}

EncodedTile TileRun::State::encode(const TilePixels& pixels) const {
    EncodedTile result;
    std::optional<TileImage> image;
    const bool made = attempt(result.step, TileOutcome::compensationFailed, [&] {
        image.emplace(makeTileImage(pixels.view, job.treatment));
    });
    if (made) {
        attempt(result.step, TileOutcome::encodeFailed, [&] {
            result.bytes = encodeImage(image->view(), job.type, job.treatment.resolution,
                                       source.colourProfile());
        });
    }
    return result;
}

void TileRun::State::work() {
    for (;;) {
        std::size_t number = 0;
        TilePixels pixels;
        EncodedTile result;
        bool fetched = false;
        {
            const std::lock_guard guard(sourceLock);
            number = toFetch;
            if (number >= job.files.size() || !waitForRoom(number)) {
                return;
            }
            ++toFetch;
            fetched = attempt(result.step, TileOutcome::sourceFailed,
                              [&] { pixels = source.tile(number); });
            if (!fetched) {
                toFetch = job.files.size(); // nothing can follow a tile that is missing
            }
        }
        if (fetched) {
            result = encode(pixels);
        }
        pixels = {};
        {
            const std::lock_guard guard(lock);
            encoded.emplace(number, std::move(result));
        }
        changed.notify_all();
    }
}

TileRun::TileRun(TileSource& source, TileJob job, TileDisk disk)
    : state_(std::make_unique<State>(source, std::move(job), std::move(disk))) {
    std::size_t workers = static_cast<std::size_t>(state_->job.workers);
    if (state_->job.workers <= 0) {
        workers = std::max(std::thread::hardware_concurrency(), 1U);
    }
    workers = std::min(workers, std::max<std::size_t>(count(), 1));
    state_->ahead = workers + 1; // one more, so that a worker has something to do during a write
    for (std::size_t i = 0; i < workers; ++i) {
        state_->workers.emplace_back([state = state_.get()] { state->work(); });
    }
}

TileRun::~TileRun() {
    {
        const std::lock_guard guard(state_->lock);
        state_->stopping = true;
    }
    state_->changed.notify_all();
    for (std::thread& worker : state_->workers) {
        worker.join();
    }
}

std::size_t TileRun::count() const {
    return state_->job.files.size();
}

std::size_t TileRun::written() const {
    const std::lock_guard guard(state_->lock);
    return state_->committed;
}

bool TileRun::waitReady(std::chrono::milliseconds time) {
    std::unique_lock guard(state_->lock);
    return state_->changed.wait_for(guard, time,
                                    [&] { return state_->encoded.count(state_->committed) != 0; });
}

TileStep TileRun::next() {
    EncodedTile tile;
    std::size_t number = 0;
    {
        std::unique_lock guard(state_->lock);
        number = state_->committed;
        if (number >= state_->job.files.size()) {
            throw Error("All tiles are written already.");
        }
        state_->changed.wait(guard, [&] { return state_->encoded.count(number) != 0; });
        tile = std::move(state_->encoded.at(number));
        state_->encoded.erase(number);
    }
    if (tile.step.outcome != TileOutcome::written) {
        return tile.step;
    }
    const std::optional<std::uint64_t> room = state_->disk.freeSpace();
    if (room && *room < tile.bytes.size()) {
        return {TileOutcome::outOfSpace, {}};
    }
    if (!attempt(tile.step, TileOutcome::saveFailed,
                 [&] { state_->disk.write(state_->job.files[number], tile.bytes); })) {
        return tile.step;
    }
    tile.bytes = {};
    {
        const std::lock_guard guard(state_->lock);
        state_->committed = number + 1;
    }
    state_->changed.notify_all();
    return tile.step;
}

} // namespace veldara
