// Work whose failure becomes a run's outcome instead of an exception.
#pragma once

#include "output/encoded_tiles.h"

#include <exception>

namespace veldara {

// Runs the work; what it throws becomes the step's outcome and reason. True when it threw nothing.
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

} // namespace veldara
