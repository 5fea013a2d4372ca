#include "platform/image/memory_limits.h"

#include "platform/error.h"

#include <algorithm>
#include <istream>
#include <limits>

#ifdef _WIN32
#include <windows.h>
// Needs the declarations of the header above.
#include <psapi.h>
#else
#include <cstdio>
#include <fstream>

#include <sys/resource.h>
#include <unistd.h>
#endif

namespace veldara {

namespace {

constexpr std::uint64_t unlimited = std::numeric_limits<std::uint64_t>::max();

#ifndef _WIN32

// What the kernel holds to be free without swapping, file caches included.
std::uint64_t freeOfMachine() {
    std::ifstream table("/proc/meminfo");
    std::string name;
    std::uint64_t kilobytes = 0;
    std::string unit;
    while (table >> name >> kilobytes) {
        std::getline(table, unit);
        if (name == "MemAvailable:") {
            return kilobytes * 1024;
        }
    }
    return unlimited;
}

// Bytes of this program: its address space, and what of it lies in memory.
struct OwnMemory {
    std::uint64_t addresses = 0;
    std::uint64_t held = 0;
};

OwnMemory ownMemory() {
    std::ifstream table("/proc/self/statm");
    OwnMemory own;
    table >> own.addresses >> own.held;
    const auto page = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    return {own.addresses * page, own.held * page};
}

// What is left of the address space that a ulimit allows.
std::uint64_t freeOfProcess(const OwnMemory& own) {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) {
        return unlimited;
    }
    return limit.rlim_cur > own.addresses ? limit.rlim_cur - own.addresses : 0;
}

std::uint64_t freeOfContainer() {
    std::ifstream most("/sys/fs/cgroup/memory.max");
    std::ifstream used("/sys/fs/cgroup/memory.current");
    std::ifstream statistics("/sys/fs/cgroup/memory.stat");
    return memoryLeftInGroup(most, used, statistics);
}

#endif

} // namespace

std::uint64_t memoryLeftInGroup(std::istream& most, std::istream& used, std::istream& statistics) {
    std::uint64_t limit = 0;
    std::uint64_t taken = 0;
    if (!(most >> limit) || !(used >> taken)) {
        return unlimited;
    }
    std::string name;
    std::uint64_t bytes = 0;
    while (statistics >> name >> bytes) {
        if (name == "inactive_file" || name == "active_file") {
            taken -= std::min(taken, bytes); // cached files give way
        }
    }
    return limit > taken ? limit - taken : 0;
}

std::uint64_t memoryLeft(std::uint64_t physical, std::uint64_t held, std::uint64_t free) {
    const std::uint64_t most = physical == unlimited ? unlimited : physical - physical / 4;
    return std::min(free, most > held ? most - held : 0);
}

#ifdef _WIN32

namespace {

MEMORYSTATUSEX memoryStatus() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    if (!GlobalMemoryStatusEx(&status)) {
        status.ullTotalPhys = unlimited;
        status.ullAvailPageFile = unlimited;
        status.ullAvailVirtual = unlimited;
    }
    return status;
}

// With what was promised to this program and not touched yet.
std::uint64_t heldMemory() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    return GetProcessMemoryInfo(GetCurrentProcess(),
                                reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                                sizeof counters)
               ? counters.PrivateUsage
               : 0;
}

} // namespace

std::uint64_t physicalMemory() {
    return memoryStatus().ullTotalPhys;
}

std::uint64_t availableMemory() {
    const MEMORYSTATUSEX status = memoryStatus();
    return memoryLeft(status.ullTotalPhys, heldMemory(),
                      std::min(status.ullAvailPageFile, status.ullAvailVirtual));
}

#else

std::uint64_t physicalMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    return pages > 0 ? static_cast<std::uint64_t>(pages) *
                           static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))
                     : unlimited;
}

std::uint64_t availableMemory() {
    const OwnMemory own = ownMemory();
    return memoryLeft(physicalMemory(), own.held,
                      std::min({freeOfMachine(), freeOfProcess(own), freeOfContainer()}));
}

#endif

bool mayTakeMemory(std::uint64_t bytes) {
    // Small pictures are not worth the question.
    constexpr std::uint64_t always = 16 << 20;
    return bytes <= always || bytes <= availableMemory();
}

void requireMemory(std::uint64_t bytes, int width, int height) {
    if (!mayTakeMemory(bytes)) {
        throw Error("there is not enough memory for a picture of " + std::to_string(width) + " x " +
                    std::to_string(height) + " pixels");
    }
}

std::string tooFewBytesReason(int width, int height) {
    return "the file is too small to hold the " + std::to_string(width) + " x " +
           std::to_string(height) + " pixels that it claims";
}

} // namespace veldara
