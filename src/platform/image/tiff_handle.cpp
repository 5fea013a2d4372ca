#include "platform/image/tiff_handle.h"

#include "platform/error.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <exception>
#include <limits>
#include <string>

namespace veldara {

namespace {

// The most that one field or strip may take; pictures are decoded strip by strip and never need it.
constexpr tmsize_t greatestAllocation = tmsize_t{1} << 31;

void keep(std::array<char, 200>& text, const char* format, va_list values) {
    if (text[0] == '\0') {
        std::vsnprintf(text.data(), text.size(), format, values);
    }
}

int keepError(TIFF*, void* user, const char*, const char* format, va_list values) {
    keep(static_cast<TiffMessages*>(user)->error, format, values);
    return 1;
}

int keepWarning(TIFF*, void* user, const char*, const char* format, va_list values) {
    keep(static_cast<TiffMessages*>(user)->warning, format, values);
    return 1;
}

struct FreeOptions {
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

std::unique_ptr<TIFFOpenOptions, FreeOptions> optionsWith(TiffMessages& messages) {
    std::unique_ptr<TIFFOpenOptions, FreeOptions> options(TIFFOpenOptionsAlloc());
    if (!options) {
        throw Error("there is not enough memory");
    }
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keepError, &messages);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), keepWarning, &messages);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), greatestAllocation);
    return options;
}

tmsize_t readInput(thandle_t user, void* buffer, tmsize_t count) noexcept {
    auto& input = *static_cast<TiffInput*>(user);
    try {
        const std::size_t got =
            count > 0 ? input.source.readAt(input.position, buffer, static_cast<std::size_t>(count))
                      : 0;
        input.position += got;
        return static_cast<tmsize_t>(got);
    } catch (const std::exception&) {
        return -1;
    }
}

tmsize_t writeNothing(thandle_t, void*, tmsize_t) noexcept {
    return -1;
}

toff_t seekFrom(std::uint64_t current, std::uint64_t size, toff_t offset, int whence) {
    switch (whence) {
    case SEEK_CUR:
        return current + offset;
    case SEEK_END:
        return size + offset;
    default:
        return offset;
    }
}

toff_t seekInput(thandle_t user, toff_t offset, int whence) noexcept {
    auto& input = *static_cast<TiffInput*>(user);
    input.position = seekFrom(input.position, input.source.size(), offset, whence);
    return input.position;
}

toff_t sizeOfInput(thandle_t user) noexcept {
    return static_cast<TiffInput*>(user)->source.size();
}

int closeNothing(thandle_t) noexcept {
    return 0;
}

} // namespace

TiffInput::TiffInput(ByteSource& bytes) : source(bytes) {
    const auto options = optionsWith(messages);
    handle.reset(TIFFClientOpenExt("picture", "rm", this, readInput, writeNothing, seekInput,
                                   closeNothing, sizeOfInput, nullptr, nullptr, options.get()));
    if (!handle) {
        throw Error("its header is damaged or incomplete");
    }
}

} // namespace veldara
