// Whether a picture can be believed and afforded, asked before any memory is taken for it.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace veldara {

// Bytes of memory that the machine could give now: what is free, within the limits set for the
// program.
std::uint64_t availableMemory();

// Bytes that are left to the group of processes that a container is, from what its files
// memory.max, memory.current and memory.stat say (Linux, control groups of version 2); the greatest
// number where they set no limit.
std::uint64_t memoryLeftInGroup(std::istream& most, std::istream& used, std::istream& statistics);

// Throws Error with the bare reason when that many bytes, for a picture of that size, are more than
// the machine has.
void requireMemory(std::uint64_t bytes, int width, int height);

// The reason for refusing a file that is too small for the picture that its header promises.
std::string tooFewBytesReason(int width, int height);

} // namespace veldara
