// Spreads work on rows over the processor's cores.
#pragma once

#include <functional>

namespace veldara {

// Calls work(first, end) for stretches that cover 0 .. count - 1, one stretch a core, and returns
// when all are done; in the caller alone when there are fewer than fewestPerCore rows for two. What
// the work throws is thrown again here.
void forRows(int count, int fewestPerCore, const std::function<void(int first, int end)>& work);

} // namespace veldara
