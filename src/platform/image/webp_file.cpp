#include "platform/image/webp_file.h"

#include "platform/error.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <webp/decode.h>

namespace veldara {

namespace {

constexpr std::uint64_t chunkHeaderSize = 8;
constexpr std::uint64_t frameHeaderSize = 16;

[[noreturn]] void damaged() {
    throw Error("its header is damaged or incomplete");
}

unsigned number(const std::uint8_t* bytes, unsigned count) { // low byte first
    unsigned value = 0;
    for (unsigned i = count; i > 0; --i) {
        value = value << 8 | bytes[i - 1];
    }
    return value;
}

struct Chunk {
    std::array<char, 4> name{};
    FilePart content;
    std::uint64_t next = 0;
    bool is(std::string_view text) const { return text == std::string_view(name.data(), 4); }
};

Chunk chunkAt(ByteSource& source, std::uint64_t at) {
    std::array<std::uint8_t, chunkHeaderSize> header{};
    if (!source.readFully(at, header.data(), header.size())) {
        damaged();
    }
    Chunk chunk;
    std::copy_n(header.begin(), 4, chunk.name.begin());
    const std::uint64_t size = number(&header[4], 4);
    chunk.content = {at + chunkHeaderSize, size};
    chunk.next = chunk.content.at + size + size % 2; // padded to an even size
    return chunk;
}

// Takes the pixels' chunk, and the chunk of opacity before it, into the part to be decoded.
void addPicture(const Chunk& chunk, WebpFile& file) {
    const std::uint64_t start = chunk.content.at - chunkHeaderSize;
    if (file.picture.size == 0) {
        file.picture.at = start;
    }
    file.picture.size = chunk.content.at + chunk.content.size - file.picture.at;
    file.lossless = chunk.is("VP8L");
}

bool isPixels(const Chunk& chunk) {
    return chunk.is("VP8 ") || chunk.is("VP8L");
}

// The first picture of an animation.
void readFrame(ByteSource& source, const Chunk& frame, WebpFile& file) {
    std::array<std::uint8_t, 6> place{};
    if (frame.content.size < frameHeaderSize ||
        !source.readFully(frame.content.at, place.data(), place.size())) {
        damaged();
    }
    file.left = static_cast<int>(2 * number(place.data(), 3));
    file.top = static_cast<int>(2 * number(&place[3], 3));
    const std::uint64_t end = frame.content.at + frame.content.size;
    for (std::uint64_t at = frame.content.at + frameHeaderSize; at + chunkHeaderSize <= end;) {
        const Chunk chunk = chunkAt(source, at);
        if (chunk.is("ALPH") || isPixels(chunk)) {
            addPicture(chunk, file);
        }
        if (isPixels(chunk)) {
            return;
        }
        at = chunk.next;
    }
    damaged();
}

void readCanvas(ByteSource& source, const Chunk& chunk, WebpFile& file) {
    std::array<std::uint8_t, 10> content{};
    if (chunk.content.size < content.size() ||
        !source.readFully(chunk.content.at, content.data(), content.size())) {
        damaged();
    }
    file.width = static_cast<int>(number(&content[4], 3)) + 1;
    file.height = static_cast<int>(number(&content[7], 3)) + 1;
}

// A file without a canvas of its own is as large as its pixels.
void readSizeOfPixels(ByteSource& source, WebpFile& file) {
    std::array<std::uint8_t, 64> start{};
    const std::size_t got = source.readAt(file.picture.at, start.data(), start.size());
    WebPBitstreamFeatures features{};
    if (WebPGetFeatures(start.data(), got, &features) != VP8_STATUS_OK) {
        damaged();
    }
    file.width = features.width;
    file.height = features.height;
}

} // namespace

WebpFile readWebpFile(ByteSource& source) {
    constexpr std::uint64_t firstChunk = 12;
    constexpr int mostChunks = 10'000; // no real file comes near
    WebpFile file;
    bool animated = false;
    int chunks = 0;
    for (std::uint64_t at = firstChunk;
         at + chunkHeaderSize <= source.size() && chunks < mostChunks; ++chunks) {
        const Chunk chunk = chunkAt(source, at);
        const bool wanted = file.picture.size == 0 || (!file.lossless && !animated);
        if (chunk.is("VP8X")) {
            readCanvas(source, chunk, file);
        } else if (chunk.is("ANMF") && file.picture.size == 0) {
            animated = true;
            readFrame(source, chunk, file);
        } else if ((chunk.is("ALPH") || isPixels(chunk)) && wanted) {
            addPicture(chunk, file);
        } else if (chunk.is("ICCP")) {
            file.profile = chunk.content;
        } else if (chunk.is("EXIF")) {
            file.exif = chunk.content;
        }
        at = chunk.next;
    }
    if (file.picture.size == 0) {
        throw Error("it holds no picture");
    }
    if (file.width == 0) {
        readSizeOfPixels(source, file);
    }
    return file;
}

} // namespace veldara
