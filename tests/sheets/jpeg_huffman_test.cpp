// Which tables pieces are coded with: the photo's own where they hold everything a piece can need.
#include "sheets/jpeg_cutting.h"
#include "sheets/jpeg_huffman.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace veldara::test {

namespace {

// A table with these symbols, all of them with codes of 12 bits.
JHUFF_TBL tableOf(const std::vector<int>& symbols) {
    JHUFF_TBL table{};
    table.bits[12] = static_cast<UINT8>(symbols.size());
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        table.huffval[i] = static_cast<UINT8>(symbols[i]);
    }
    return table;
}

std::vector<int> upTo(int last) {
    std::vector<int> symbols(static_cast<std::size_t>(last) + 1);
    std::iota(symbols.begin(), symbols.end(), 0);
    return symbols;
}

// All runs of up to fifteen zeros before values of up to ten bits, end of block, sixteen zeros.
std::vector<int> everySymbol() {
    std::vector<int> symbols = {0x00, 0xF0};
    for (int run = 0; run < 16; ++run) {
        for (int size = 1; size <= 10; ++size) {
            symbols.push_back(16 * run + size);
        }
    }
    return symbols;
}

// The photo coded again with tables that hold just what it needs.
Bytes withTightTables(const Bytes& file) {
    jpeg_decompress_struct from{};
    jpeg_compress_struct to{};
    jpeg_error_mgr errors{};
    from.err = to.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&from);
    jpeg_create_compress(&to);
    jpeg_mem_src(&from, file.data(), static_cast<unsigned long>(file.size()));
    jpeg_read_header(&from, TRUE);
    jvirt_barray_ptr* coefficients = jpeg_read_coefficients(&from);
    jpeg_copy_critical_parameters(&from, &to);
    to.optimize_coding = TRUE;
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&to, &memory, &size);
    jpeg_write_coefficients(&to, coefficients);
    jpeg_finish_compress(&to);
    jpeg_destroy_compress(&to);
    jpeg_finish_decompress(&from);
    jpeg_destroy_decompress(&from);
    Bytes result(memory, memory + size);
    std::free(memory);
    return result;
}

} // namespace

TEST(JpegHuffman, ATableForDifferencesHoldsElevenBits) {
    EXPECT_TRUE(holdsEveryDifference(tableOf(upTo(11))));
    EXPECT_TRUE(holdsEveryDifference(tableOf(upTo(15))));
    EXPECT_FALSE(holdsEveryDifference(tableOf(upTo(10))));
    std::vector<int> twice = upTo(11);
    twice.push_back(3);
    EXPECT_FALSE(holdsEveryDifference(tableOf(twice)));
}

TEST(JpegHuffman, ATableForBlocksCanEndThem) {
    EXPECT_TRUE(holdsEveryBlock(tableOf({0x00, 0x01})));
    EXPECT_FALSE(holdsEveryBlock(tableOf({0x01, 0xF0})));
    EXPECT_FALSE(holdsEveryBlock(tableOf({0x00, 0x01, 0x01})));
}

TEST(JpegHuffman, ValuesOfElevenBitsAreNotThoseOfAPhoto) {
    EXPECT_FALSE(exceedsEightBitPhotos(tableOf(everySymbol())));
    EXPECT_TRUE(exceedsEightBitPhotos(tableOf({0x00, 0x3B})));
}

TEST(JpegHuffman, TheLastCoefficientNeedsItsCode) {
    EXPECT_TRUE(LastCoefficientCodes(tableOf(everySymbol())).holdEverything());
    const LastCoefficientCodes codes(tableOf({0x00, 0x01, 0x02, 0xE1, 0xF0}));
    EXPECT_FALSE(codes.holdEverything());
    std::array<JCOEF, DCTSIZE2> block{};
    EXPECT_TRUE(codes.hold(block.data())) << "nothing to code";
    block[63] = -1;
    EXPECT_TRUE(codes.hold(block.data())) << "62 zeros are three times sixteen and fourteen";
    block[62] = 1; // the one before the last
    EXPECT_TRUE(codes.hold(block.data()));
    block[63] = 3;
    EXPECT_TRUE(codes.hold(block.data()));
    block[63] = 4;
    EXPECT_FALSE(codes.hold(block.data())) << "three bits";
    block[62] = 0;
    block[55] = 1; // between them in the coded order
    block[63] = 1;
    EXPECT_FALSE(codes.hold(block.data())) << "one zero before it";
    const LastCoefficientCodes withoutSixteen(tableOf({0x00, 0x01, 0xE1}));
    block[55] = 0;
    EXPECT_FALSE(withoutSixteen.hold(block.data()));
}

TEST(JpegHuffman, TightTablesOfThePhotoServeItsPieces) {
    for (const JpegKind& kind : everyJpegKind()) {
        if (kind.progressive || kind.separateScans) {
            continue;
        }
        const Bytes file = withTightTables(makeJpeg(kind, photo(320, 240)));
        const std::vector<PixelRectangle> sheets = sheetsOf(320, 240, 2, 2, 3);
        expectExact(file, sheets);
        const auto whole = static_cast<double>(file.size());
        const double piece = static_cast<double>(cutAll(file, {{0, 0, 320, 240}})[0].bytes.size());
        EXPECT_LT(piece, 1.02 * whole + 600) << kind.name;
    }
}

TEST(JpegHuffman, PiecesMayNeedStepsThatThePhotoDoesNotHave) {
    // Black, and then a grey near the middle: no block of the photo begins with the small step from
    // the middle to that grey, and every row of a piece at the right does.
    Image image = Image::filled(400, 96, 0, 0, 0);
    for (int y = 0; y < image.height(); ++y) {
        std::fill_n(image.row(y) + std::ptrdiff_t{3} * 200, 3 * 200, std::uint8_t{136});
    }
    expectExact(withTightTables(makeJpeg(JpegKind{}, image)), sheetsOf(400, 96, 4, 2, 0));
}

TEST(JpegHuffman, PicturesWithoutDetailAreCutWithTightTables) {
    // Their tables hold hardly anything, least of all the step from nothing to their brightness.
    for (const std::uint8_t brightness : {std::uint8_t{0}, std::uint8_t{255}}) {
        const Image plain = Image::filled(200, 100, brightness, brightness, brightness);
        expectExact(withTightTables(makeJpeg(JpegKind{}, plain)), sheetsOf(200, 100, 3, 2, 0));
    }
}

} // namespace veldara::test
