#include "output/worker_threads.h"

#include "platform/error.h"

#include <system_error>

namespace veldara {

void startWorkers(std::vector<std::thread>& workers, std::size_t count,
                  const std::function<void()>& work) {
    // Reserve first: a thread that cannot be added to the list cannot be joined.
    workers.reserve(workers.size() + count);
    try {
        for (std::size_t i = 0; i < count; ++i) {
            workers.emplace_back(work);
        }
    } catch (const std::system_error&) {
        if (workers.empty()) {
            throw Error("The machine has no thread left to make the tiles with.");
        }
    }
}

} // namespace veldara
