#include "platform/image/memory_limits.h"

#include "platform/error.h"

#include <algorithm>
#include <istream>
#include <limits>

#ifdef _WIN32
#include <windows.h>
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

// What is left of the address space that a ulimit allows.
std::uint64_t freeOfProcess() {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) {
        return unlimited;
    }
    std::ifstream table("/proc/self/statm");
    std::uint64_t pages = 0;
    table >> pages;
    const std::uint64_t used = pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    return limit.rlim_cur > used ? limit.rlim_cur - used : 0;
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

std::uint64_t availableMemory() {
#ifdef _WIN32
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    if (!GlobalMemoryStatusEx(&status)) {
        return unlimited;
    }
    return std::min<std::uint64_t>(status.ullAvailPageFile, status.ullAvailVirtual);
#else
    return std::min({freeOfMachine(), freeOfProcess(), freeOfContainer()});
#endif
}

void requireMemory(std::uint64_t bytes, int width, int height) {
    // Small pictures are not worth the question.
    constexpr std::uint64_t always = 16 << 20;
    if (bytes > always && bytes > availableMemory()) {
        throw Error("there is not enough memory for a picture of " + std::to_string(width) + " x " +
                    std::to_string(height) + " pixels");
    }
}

std::string tooFewBytesReason(int width, int height) {
    return "the file is too small to hold the " + std::to_string(width) + " x " +
           std::to_string(height) + " pixels that it claims";
}

} // namespace veldara
