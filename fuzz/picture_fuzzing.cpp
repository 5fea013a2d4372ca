#include "picture_fuzzing.h"

#include "platform/error.h"
#include "platform/image/input_format.h"
#include "platform/image/picture_bytes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

namespace veldara::fuzz {

namespace {

// Larger ones only cost time: nothing is different about them.
constexpr std::int64_t mostPixels = 4'000'000;

[[noreturn]] void disagree(const char* what) {
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

std::unique_ptr<ByteSource> sourceOf(std::span<const std::uint8_t> bytes) {
    return std::make_unique<MemoryBytes>(bytes);
}

// The HEVC codec takes some damaged pictures without an error and leaves pixels in them as they
// were in memory: two readings differ, whoever asks.
bool readsTheSameAgain(std::string_view kind) {
    return kind != "HEIC";
}

// Reads a band, columns and jumps chosen by the bytes themselves.
void readBands(std::span<const std::uint8_t> bytes, const Image& whole, bool compared) {
    std::uint32_t state = static_cast<std::uint32_t>(bytes.size()) * 2654435761U + bytes.back();
    const auto upTo = [&](int most) {
        state = state * 1664525U + 1013904223U;
        return static_cast<int>((state >> 8) % static_cast<std::uint32_t>(most + 1));
    };
    const auto reader = openRowReader(sourceOf(bytes), "fuzz");
    const int left = upTo(whole.width() - 1);
    const int width = 1 + upTo(whole.width() - left - 1);
    reader->wantColumns(left, width);
    for (int y = 0; y < whole.height();) {
        const int skip = upTo(whole.height() - y);
        reader->skipRows(skip);
        y += skip;
        const int count = std::min(1 + upTo(40), whole.height() - y);
        if (count <= 0) {
            break;
        }
        Image band(width, count);
        reader->readRows(band.mutableView());
        const PixelView expected = whole.view().cut(left, y, width, count);
        for (int i = 0; i < count && compared; ++i) {
            if (std::memcmp(band.row(i), expected.row(i),
                            std::size_t{3} * static_cast<std::size_t>(width)) != 0) {
                disagree("a band differs from the whole picture");
            }
        }
        y += count;
    }
}

} // namespace

void readEveryWay(std::span<const std::uint8_t> bytes, std::string_view kind) {
    std::optional<Image> whole;
    try {
        const ImageHeader header = readImageHeader(sourceOf(bytes), "fuzz");
        if (header.format->name != kind ||
            std::int64_t{header.width} * header.height > mostPixels) {
            return;
        }
        whole = loadImage(sourceOf(bytes), "fuzz");
        if (whole->width() != header.width || whole->height() != header.height) {
            disagree("the picture is not of the size that its header says");
        }
    } catch (const Error& error) {
        if (std::strncmp(error.what(), "Could not read \"fuzz\": ", 23) != 0) {
            disagree("a refusal that does not name the file");
        }
        return;
    }
    try {
        readBands(bytes, *whole, readsTheSameAgain(kind));
    } catch (const Error&) {
        if (readsTheSameAgain(kind)) {
            disagree("a picture that loads as a whole is refused row by row");
        }
    }
}

} // namespace veldara::fuzz
