#include "sheets/jpeg_cutting.h"

#include "platform/error.h"

#include <algorithm>
#include <cstring>

namespace veldara::test {

std::unique_ptr<JpegCutter> cutterOf(const Bytes& file) {
    return std::make_unique<JpegCutter>(std::make_unique<MemoryBytes>(file));
}

std::vector<JpegPiece> cutAll(const Bytes& file, const std::vector<PixelRectangle>& wanted,
                              int workers) {
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    cutter->start(wanted, workers);
    std::vector<JpegPiece> pieces;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        pieces.push_back(cutter->next());
    }
    return pieces;
}

std::string cuttingComplaint(const Bytes& file, const std::vector<PixelRectangle>& wanted) {
    try {
        cutAll(file, wanted);
    } catch (const Error& error) {
        return error.what();
    }
    return "";
}

testing::AssertionResult sameSamples(const Decoded& whole, const JpegPiece& piece,
                                     const PixelRectangle& wanted) {
    const Decoded part = decodePlainly(piece.bytes);
    if (part.width != piece.width || part.height != piece.height ||
        part.components != whole.components) {
        return testing::AssertionFailure() << "the file's size is not the piece's";
    }
    if (wanted.left < piece.left || wanted.top < piece.top ||
        wanted.right() > piece.left + piece.width || wanted.bottom() > piece.top + piece.height) {
        return testing::AssertionFailure() << "the wanted rectangle is not in the piece";
    }
    const auto samples = static_cast<std::size_t>(whole.components);
    const auto at = [samples](const Decoded& picture, int x, int y) {
        return picture.samples.data() +
               samples * (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                          static_cast<std::size_t>(x));
    };
    for (int y = wanted.top; y < wanted.bottom(); ++y) {
        if (std::memcmp(at(whole, wanted.left, y),
                        at(part, wanted.left - piece.left, y - piece.top),
                        samples * static_cast<std::size_t>(wanted.width)) != 0) {
            return testing::AssertionFailure() << "other samples in row " << y;
        }
    }
    return testing::AssertionSuccess();
}

void expectExact(const Bytes& file, const std::vector<PixelRectangle>& wanted, int workers) {
    const Decoded whole = decodePlainly(file);
    const std::vector<JpegPiece> pieces = cutAll(file, wanted, workers);
    ASSERT_EQ(pieces.size(), wanted.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        EXPECT_TRUE(sameSamples(whole, pieces[i], wanted[i]))
            << "piece " << i << " for " << wanted[i].left << ',' << wanted[i].top << ' '
            << wanted[i].width << 'x' << wanted[i].height;
    }
}

} // namespace veldara::test
