// Starting the threads that encode tiles, on a machine that may not give them.
#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace veldara {

// Starts `count` threads that each do the work, or as many as the machine gives: fewer are slower,
// and good enough. Throws Error when it gives none.
void startWorkers(std::vector<std::thread>& workers, std::size_t count,
                  const std::function<void()>& work);

} // namespace veldara
