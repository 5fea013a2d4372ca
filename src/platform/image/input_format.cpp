#include "platform/image/input_format.h"

#include "platform/error.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>

namespace veldara {

// Each in the file of its decoder.
std::unique_ptr<PictureDecoder> openJpeg(ByteSource& source);
std::unique_ptr<PictureDecoder> openTiff(ByteSource& source);
std::unique_ptr<PictureDecoder> openBmp(ByteSource& source);
std::unique_ptr<PictureDecoder> openPng(ByteSource& source);
std::unique_ptr<PictureDecoder> openWebp(ByteSource& source);
std::unique_ptr<PictureDecoder> openHeic(ByteSource& source);
std::unique_ptr<PictureDecoder> openAvif(ByteSource& source);

namespace {

using Start = std::span<const std::uint8_t>;

bool startsWith(Start start, std::initializer_list<std::uint8_t> signature) {
    return start.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), start.begin());
}

bool isJpeg(Start start) {
    return startsWith(start, {0xFF, 0xD8, 0xFF});
}

// Classic and large files, of either byte order.
bool isTiff(Start start) {
    return startsWith(start, {'I', 'I', 42, 0}) || startsWith(start, {'M', 'M', 0, 42}) ||
           startsWith(start, {'I', 'I', 43, 0}) || startsWith(start, {'M', 'M', 0, 43});
}

bool isBmp(Start start) {
    return startsWith(start, {'B', 'M'});
}

bool isPng(Start start) {
    return startsWith(start, {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'});
}

bool isWebp(Start start) {
    return startsWith(start, {'R', 'I', 'F', 'F'}) && start.size() >= 12 &&
           startsWith(start.subspan(8), {'W', 'E', 'B', 'P'});
}

// Whether the first box of an ISO media file names one of these brands, as its own or as one that
// it is compatible with.
bool hasBrand(Start start, std::initializer_list<std::string_view> brands) {
    if (start.size() < 12 || !startsWith(start.subspan(4), {'f', 't', 'y', 'p'})) {
        return false;
    }
    const std::size_t size = std::size_t{start[2]} << 8 | start[3];
    const std::size_t end = std::min(size, start.size());
    for (std::size_t at = 8; at + 4 <= end; at += 4) {
        const std::string_view brand(reinterpret_cast<const char*>(&start[at]), 4);
        const bool isVersion = at == 12;
        if (!isVersion && std::find(brands.begin(), brands.end(), brand) != brands.end()) {
            return true;
        }
    }
    return false;
}

bool isAvif(Start start) {
    return hasBrand(start, {"avif", "avis"});
}

bool isHeic(Start start) {
    return !isAvif(start) && hasBrand(start, {"heic", "heix", "heim", "heis", "hevc", "hevx",
                                              "hevm", "hevs", "mif1", "msf1"});
}

constexpr std::array<std::string_view, 4> jpegEndings{".jpg", ".jpeg", ".jpe", ".jfif"};
constexpr std::array<std::string_view, 2> tiffEndings{".tif", ".tiff"};
constexpr std::array<std::string_view, 2> bmpEndings{".bmp", ".dib"};
constexpr std::array<std::string_view, 1> pngEndings{".png"};
constexpr std::array<std::string_view, 1> webpEndings{".webp"};
constexpr std::array<std::string_view, 4> heicEndings{".heic", ".heif", ".hif", ".heics"};
constexpr std::array<std::string_view, 1> avifEndings{".avif"};

// In the order of the window's file filter.
constexpr std::array<InputFormat, 7> table{{
    {"JPEG", jpegEndings, "image/jpeg", "Jpeg Files Only (*.jpg)", true, TileFormat::jpeg, isJpeg,
     openJpeg},
    {"TIFF", tiffEndings, "image/tiff", "Tiff Files Only (*.tif)", false, TileFormat::tiff, isTiff,
     openTiff},
    {"BMP", bmpEndings, "image/bmp", "BMP Files Only (*.bmp)", false, TileFormat::bmp, isBmp,
     openBmp},
    {"PNG", pngEndings, "image/png", "", false, std::nullopt, isPng, openPng},
    {"WebP", webpEndings, "image/webp", "", true, std::nullopt, isWebp, openWebp},
    {"HEIC", heicEndings, "image/heic", "", true, std::nullopt, isHeic, openHeic},
    {"AVIF", avifEndings, "image/avif", "", true, std::nullopt, isAvif, openAvif},
}};

// "JPEG, TIFF or BMP"
std::string namesOfAll() {
    std::string names;
    for (const InputFormat& format : table) {
        names += (names.empty() ? "" : &format == &table.back() ? " or " : ", ");
        names += format.name;
    }
    return names;
}

} // namespace

std::span<const InputFormat> inputFormats() {
    return table;
}

const InputFormat& inputFormat(std::string_view name) {
    const auto* const found = std::find_if(
        table.begin(), table.end(), [&](const InputFormat& format) { return format.name == name; });
    if (found == table.end()) {
        throw Error("there is no such kind of picture file");
    }
    return *found;
}

TileFormat defaultTileFormat(const ImageHeader& header) {
    return header.format->tileFormat.value_or(header.lossy ? TileFormat::jpeg : TileFormat::tiff);
}

const InputFormat& inputFormatOf(ByteSource& source) {
    if (source.size() == 0) {
        throw Error("the file is empty");
    }
    std::array<std::uint8_t, signatureSize> start{};
    const std::size_t got = source.readAt(0, start.data(), start.size());
    const auto* const found =
        std::find_if(table.begin(), table.end(), [&](const InputFormat& format) {
            return format.matches({start.data(), got});
        });
    if (found == table.end()) {
        throw Error("it is not a " + namesOfAll() + " picture");
    }
    return *found;
}

} // namespace veldara
