#include "platform/image/parallel_rows.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace veldara {

void forRows(int count, int fewestPerCore, const std::function<void(int first, int end)>& work) {
    const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    const int parts = std::clamp(count / std::max(1, fewestPerCore), 1, cores);
    std::vector<std::exception_ptr> failures(static_cast<std::size_t>(parts));
    const auto runPart = [&](int part) {
        try {
            const auto start = [&](int i) {
                return static_cast<int>(std::int64_t{count} * i / parts);
            };
            work(start(part), start(part + 1));
        } catch (...) {
            failures[static_cast<std::size_t>(part)] = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    int own = 1; // the caller's parts: the first, and those for which no thread could be started
    try {
        for (; own < parts; ++own) {
            threads.emplace_back(runPart, own);
        }
    } catch (const std::system_error&) {
        // The machine gives no more threads; slower is good enough.
    }
    runPart(0);
    for (int part = own; part < parts; ++part) {
        runPart(part);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
}

} // namespace veldara
