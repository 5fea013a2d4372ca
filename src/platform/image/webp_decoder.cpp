// WebP through libwebp, which gives a picture whole, but can be stopped on the way. Of an animation
// the first picture, on white.
#include "platform/error.h"
#include "platform/image/colour.h"
#include "platform/image/exif.h"
#include "platform/image/memory_limits.h"
#include "platform/image/pixel_memory.h"
#include "platform/image/webp_file.h"
#include "platform/image/whole_picture_decoder.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <vector>

#include <webp/decode.h>

namespace veldara {

namespace {

// More than any camera or profile maker writes.
constexpr std::uint64_t greatestSidePart = 64 << 20;

[[noreturn]] void incomplete() {
    throw Error("its picture data is damaged or incomplete");
}

class WebpDecoder : public WholePictureDecoder {
  public:
    explicit WebpDecoder(ByteSource& source) : source_(source), file_(readWebpFile(source)) {
        facts_.width = file_.width;
        facts_.height = file_.height;
        facts_.lossless = file_.lossless;
        facts_.streams = false;
        facts_.heldBytes = std::uint64_t{4} * static_cast<unsigned>(file_.width) *
                               static_cast<unsigned>(file_.height) +
                           file_.picture.size;
        std::vector<std::uint8_t> block = sidePart(file_.exif);
        constexpr std::size_t label = 6; // some programs write JPEG's "Exif" before the block
        const bool labelled = block.size() > label && std::memcmp(block.data(), "Exif\0", 6) == 0;
        const ExifFacts exif =
            readExif(std::span<const std::uint8_t>(block).subspan(labelled ? label : 0));
        facts_.orientation = exif.orientation;
        facts_.dotsPerInch = exif.dotsPerInch;
    }

    ColourProfile colourProfile() override {
        return profileForRgbRows(sidePart(file_.profile), false);
    }

  protected:
    DecodedPixels decode() override;

  private:
    // Empty when there is none, or it is not whole: it says nothing about the pixels.
    std::vector<std::uint8_t> sidePart(const FilePart& part) const {
        std::vector<std::uint8_t> bytes(part.size <= greatestSidePart ? part.size : 0);
        return source_.readFully(part.at, bytes.data(), bytes.size()) ? bytes
                                                                      : std::vector<std::uint8_t>();
    }
    VP8StatusCode decodeInParts(std::span<const std::uint8_t> bytes, WebPDecoderConfig& config);

    ByteSource& source_;
    WebpFile file_;
    PixelMemory canvas_;
};

struct EndDecoding {
    void operator()(WebPIDecoder* decoder) const { WebPIDelete(decoder); }
};

// Looks at the stop flag before each part of the bytes.
VP8StatusCode WebpDecoder::decodeInParts(std::span<const std::uint8_t> bytes,
                                         WebPDecoderConfig& config) {
    // Few, since with every part the last rows of a lossless picture are decoded once more.
    constexpr std::size_t parts = 32;
    const std::unique_ptr<WebPIDecoder, EndDecoding> decoder(WebPIDecode(nullptr, 0, &config));
    if (!decoder) {
        throw std::bad_alloc();
    }
    VP8StatusCode status = VP8_STATUS_SUSPENDED;
    for (std::size_t part = 1; part <= parts && status == VP8_STATUS_SUSPENDED; ++part) {
        if (shallStop()) {
            throw Error("its decoding was stopped");
        }
        const std::size_t end = part == parts ? bytes.size() : bytes.size() / parts * part;
        status = WebPIUpdate(decoder.get(), bytes.data(), end);
    }
    return status;
}

DecodedPixels WebpDecoder::decode() {
    if (file_.picture.at + file_.picture.size > source_.size()) {
        incomplete();
    }
    const auto width = static_cast<std::size_t>(file_.width);
    const auto height = static_cast<std::size_t>(file_.height);
    requireMemory(facts_.heldBytes, file_.width, file_.height);
    std::vector<std::uint8_t> bytes(file_.picture.size);
    WebPDecoderConfig config{};
    if (WebPInitDecoderConfig(&config) == 0 ||
        !source_.readFully(file_.picture.at, bytes.data(), bytes.size()) ||
        WebPGetFeatures(bytes.data(), bytes.size(), &config.input) != VP8_STATUS_OK ||
        config.input.width > file_.width - file_.left ||
        config.input.height > file_.height - file_.top) {
        incomplete();
    }
    const unsigned channels = config.input.has_alpha != 0 ? 4 : 3;
    const std::size_t stride = width * channels;
    canvas_ = takePixelMemory(stride * height);
    // Around a picture that does not fill the canvas: white, or what becomes white.
    std::memset(canvas_.get(), channels == 4 ? 0 : 255, stride * height);
    const std::size_t first = static_cast<std::size_t>(file_.top) * stride +
                              static_cast<std::size_t>(file_.left) * channels;
    config.options.use_threads = 1;
    config.output.colorspace = channels == 4 ? MODE_RGBA : MODE_RGB;
    config.output.is_external_memory = 1;
    config.output.u.RGBA = {canvas_.get() + first, static_cast<int>(stride),
                            stride * height - first};
    if (decodeInParts(bytes, config) != VP8_STATUS_OK) {
        incomplete();
    }
    return {canvas_.get(), stride, channels, false};
}

} // namespace

std::unique_ptr<PictureDecoder> openWebp(ByteSource& source) {
    return std::make_unique<WebpDecoder>(source);
}

} // namespace veldara
