// Work on a tile whose failure becomes the outcome of its step instead of an exception.
#pragma once

#include "output/encoded_tiles.h"
#include "platform/error.h"

#include <exception>

namespace veldara {

// A failure that knows which part of making a tile it belongs to.
class TileError : public Error {
  public:
    TileError(TileOutcome failure, const std::string& reason) : Error(reason), outcome(failure) {}
    const TileOutcome outcome;
};

// Runs one part of making a tile; whatever it throws becomes a TileError with that outcome.
template <class Work>
auto asPart(TileOutcome failure, Work work) {
    try {
        return work();
    } catch (const TileError&) {
        throw;
    } catch (const std::exception& error) {
        throw TileError(failure, error.what());
    }
}

// Runs the work; what it throws becomes the step's outcome and reason: a TileError its own outcome,
// anything else `failure`. True when it threw nothing.
template <class Work>
bool attempt(TileStep& step, TileOutcome failure, Work work) {
    try {
        asPart(failure, work);
        return true;
    } catch (const TileError& error) {
        step = {error.outcome, error.what()};
    }
    return false;
}

} // namespace veldara
