#include "sheets/jpeg_agreement.h"

#include "platform/error.h"
#include "platform/image/input_format.h"
#include "sheets/jpeg_cutter.h"
#include "sheets/rectangle_grid.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>

namespace veldara::test {

namespace {

constexpr std::int64_t mostPixels = 4'000'000;

// The stored photo as the program decodes it; nothing when that is refused.
std::optional<Image> decoded(std::span<const std::uint8_t> bytes) {
    try {
        MemoryBytes source(bytes);
        const std::unique_ptr<PictureDecoder> decoder = inputFormat("JPEG").open(source);
        Image image(decoder->facts().width, decoder->facts().height);
        decoder->readRows(image.mutableView());
        return image;
    } catch (const Error&) {
        return std::nullopt;
    }
}

// One to three columns and rows, not of the same size, that reach into each other.
std::vector<PixelRectangle> cover(int width, int height, std::uint32_t choice) {
    return sheetsOf(width, height, std::min(width, 1 + static_cast<int>(choice % 3)),
                    std::min(height, 1 + static_cast<int>(choice / 3 % 3)),
                    static_cast<int>(choice / 9 % 20));
}

std::string differenceIn(const Image& whole, const JpegPiece& piece, const PixelRectangle& wanted) {
    const std::optional<Image> part = decoded(piece.bytes);
    if (!part) {
        return "a piece cannot be decoded";
    }
    if (part->width() != piece.width || part->height() != piece.height) {
        return "a piece is not as large as it says";
    }
    for (int y = wanted.top; y < wanted.bottom(); ++y) {
        if (std::memcmp(whole.row(y) + std::ptrdiff_t{3} * wanted.left,
                        part->row(y - piece.top) + std::ptrdiff_t{3} * (wanted.left - piece.left),
                        std::size_t{3} * static_cast<std::size_t>(wanted.width)) != 0) {
            return "a piece has other pixels than the photo, in row " + std::to_string(y);
        }
    }
    return "";
}

} // namespace

CutResult cutAnything(std::span<const std::uint8_t> bytes, std::uint32_t choice) {
    std::vector<JpegPiece> pieces;
    std::vector<PixelRectangle> wanted;
    try {
        JpegCutter cutter(std::make_unique<MemoryBytes>(bytes));
        const JpegFacts& facts = cutter.facts();
        if (std::int64_t{facts.width} * facts.height > mostPixels) {
            return {CutOutcome::refused, "too large for this test"};
        }
        wanted = cover(facts.width, facts.height, choice);
        cutter.start(wanted, 1 + static_cast<int>(choice % 2));
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            pieces.push_back(cutter.next());
        }
    } catch (const Error& error) {
        return {CutOutcome::refused, error.what()};
    }
    const std::optional<Image> whole = decoded(bytes);
    if (!whole) {
        return {CutOutcome::wrong, "what cannot be decoded was cut"};
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const std::string difference = differenceIn(*whole, pieces[i], wanted[i]);
        if (!difference.empty()) {
            return {CutOutcome::wrong, difference};
        }
    }
    return {CutOutcome::cut, ""};
}

} // namespace veldara::test
