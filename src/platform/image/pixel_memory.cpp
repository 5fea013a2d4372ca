#include "platform/image/pixel_memory.h"

#include "platform/image/memory_limits.h"

#include <cstdlib>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace veldara {

namespace {

void requireRoom(std::size_t bytes) {
    if (!mayTakeMemory(bytes)) {
        throw std::bad_alloc();
    }
}

} // namespace

#ifdef __linux__

namespace {

constexpr std::size_t largePage = std::size_t{2} << 20;

// Advice: nothing is lost when it is not taken.
void preferLargePages(void* memory, std::size_t bytes) {
    madvise(memory, bytes, MADV_HUGEPAGE);
}

} // namespace

PixelMemory takePixelMemory(std::size_t bytes) {
    if (bytes < 2 * largePage) {
        auto* small = static_cast<std::uint8_t*>(std::malloc(bytes));
        if (small == nullptr) {
            throw std::bad_alloc();
        }
        return PixelMemory(small);
    }
    requireRoom(bytes);
    void* large = nullptr;
    if (posix_memalign(&large, largePage, bytes) != 0) {
        throw std::bad_alloc();
    }
    preferLargePages(large, bytes);
    return PixelMemory(static_cast<std::uint8_t*>(large));
}

void reserveLargePages(std::vector<std::uint8_t>& bytes, std::size_t count) {
    requireRoom(count);
    bytes.reserve(count);
    void* start = bytes.data();
    std::size_t room = bytes.capacity();
    if (std::align(largePage, largePage, start, room) != nullptr) {
        preferLargePages(start, room);
    }
}

#else

PixelMemory takePixelMemory(std::size_t bytes) {
    requireRoom(bytes);
    auto* memory = static_cast<std::uint8_t*>(std::malloc(bytes));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return PixelMemory(memory);
}

void reserveLargePages(std::vector<std::uint8_t>& bytes, std::size_t count) {
    requireRoom(count);
    bytes.reserve(count);
}

#endif

void FreePixelMemory::operator()(std::uint8_t* bytes) const noexcept {
    std::free(bytes);
}

} // namespace veldara
