#include "platform/image/pixel_memory.h"

#include <cstdlib>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace veldara {

#ifdef __linux__

PixelMemory takePixelMemory(std::size_t bytes) {
    constexpr std::size_t largePage = std::size_t{2} << 20;
    if (bytes < 2 * largePage) {
        auto* small = static_cast<std::uint8_t*>(std::malloc(bytes));
        if (small == nullptr) {
            throw std::bad_alloc();
        }
        return PixelMemory(small);
    }
    void* large = nullptr;
    if (posix_memalign(&large, largePage, bytes) != 0) {
        throw std::bad_alloc();
    }
    madvise(large, bytes, MADV_HUGEPAGE); // advice: nothing is lost when it is not taken
    return PixelMemory(static_cast<std::uint8_t*>(large));
}

#else

PixelMemory takePixelMemory(std::size_t bytes) {
    auto* memory = static_cast<std::uint8_t*>(std::malloc(bytes));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return PixelMemory(memory);
}

#endif

void FreePixelMemory::operator()(std::uint8_t* bytes) const noexcept {
    std::free(bytes);
}

} // namespace veldara
