// Whether a picture can be believed and afforded, asked before any memory is taken for it.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace veldara {

// Bytes of memory that the program may take now: what the machine has free, within the limits set
// for the program, and together with what the program holds already no more than three quarters of
// the machine's memory. The rest stays for everything else that runs.
std::uint64_t availableMemory();

// That rule for a machine of so many bytes, of which so many are free, and a program that holds so
// many.
std::uint64_t memoryLeft(std::uint64_t physical, std::uint64_t held, std::uint64_t free);

// The greatest number where the system does not tell.
std::uint64_t physicalMemory();

// Bytes that are left to the group of processes that a container is, from what its files
// memory.max, memory.current and memory.stat say (Linux, control groups of version 2); the greatest
// number where they set no limit.
std::uint64_t memoryLeftInGroup(std::istream& most, std::istream& used, std::istream& statistics);

// Whether that many bytes can be taken at once. Small blocks always can, without asking.
bool mayTakeMemory(std::uint64_t bytes);

// Throws Error with the bare reason when that many bytes, for a picture of that size, cannot be
// taken.
void requireMemory(std::uint64_t bytes, int width, int height);

// The reason for refusing a file that is too small for the picture that its header promises.
std::string tooFewBytesReason(int width, int height);

} // namespace veldara
