#include "output/threaded_tiles.h"

namespace veldara {

void TileWorkers::stop() {
    {
        const std::lock_guard guard(lock);
        stopping = true;
    }
    changed.notify_all();
    for (std::thread& worker : threads) {
        worker.join();
    }
}

bool ThreadedTiles::waitReady(std::size_t number, std::chrono::milliseconds time) {
    return workers().finished.waitReady(number, time);
}

EncodedTile ThreadedTiles::take(std::size_t number) {
    return workers().finished.take(number);
}

void ThreadedTiles::commit(std::size_t number) {
    TileWorkers& shared = workers();
    {
        const std::lock_guard guard(shared.lock);
        shared.committed = number + 1;
    }
    shared.changed.notify_all();
}

} // namespace veldara
