// Starts the threads that encode tiles.
#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace veldara {

// Starts `count` threads that each do the work, or as many as the machine allows: with fewer it is
// only slower. Throws Error when it allows none.
void startWorkers(std::vector<std::thread>& workers, std::size_t count,
                  const std::function<void()>& work);

} // namespace veldara
