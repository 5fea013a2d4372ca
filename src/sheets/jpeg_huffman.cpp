#include "sheets/jpeg_huffman.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>

namespace veldara {

namespace {

constexpr int largestDifference = 11; // bits of a DC difference of 8-bit samples
constexpr int largestCoefficient = 10;
constexpr std::size_t endOfBlock = 0;
constexpr std::size_t sixteenZeros = 0xF0;

// How often each symbol has a code; a table is sound when none has two.
std::array<int, 256> codesOfSymbols(const JHUFF_TBL& table) {
    int count = 0;
    for (int length = 1; length <= 16; ++length) {
        count += table.bits[length];
    }
    std::array<int, 256> codes{};
    for (int i = 0; i < std::min(count, 256); ++i) {
        ++codes[table.huffval[i]];
    }
    return codes;
}

bool isSound(const std::array<int, 256>& codes) {
    return std::all_of(codes.begin(), codes.end(), [](int count) { return count <= 1; });
}

// The standard's tables, which the library has by default: one for brightness, one for colour.
struct StandardTables {
    std::array<JHUFF_TBL, 2> dc{};
    std::array<JHUFF_TBL, 2> ac{};
};

void put(jpeg_compress_struct& piece, JpegErrors& errors, JHUFF_TBL*& slot,
         const JHUFF_TBL& table) {
    if (slot == nullptr) {
        errors.guard([&] { slot = jpeg_alloc_huff_table(reinterpret_cast<j_common_ptr>(&piece)); });
    }
    *slot = table;
    slot->sent_table = FALSE;
}

const JHUFF_TBL* tableOf(JHUFF_TBL* const* slots, int number) {
    return number >= 0 && number < NUM_HUFF_TBLS ? slots[number] : nullptr;
}

// The places of a block's coefficients in the order in which they are coded: along diagonals, to
// and fro.
constexpr std::array<std::uint8_t, DCTSIZE2> zigzag() {
    std::array<std::uint8_t, DCTSIZE2> order{};
    std::size_t next = 0;
    for (int diagonal = 0; diagonal < 2 * DCTSIZE - 1; ++diagonal) {
        for (int i = 0; i <= diagonal; ++i) {
            const int row = diagonal % 2 == 0 ? diagonal - i : i;
            const int column = diagonal - row;
            if (row < DCTSIZE && column < DCTSIZE) {
                order[next++] = static_cast<std::uint8_t>(row * DCTSIZE + column);
            }
        }
    }
    return order;
}

constexpr std::array<std::uint8_t, DCTSIZE2> codedOrder = zigzag();

} // namespace

bool holdsEveryDifference(const JHUFF_TBL& table) {
    const std::array<int, 256> codes = codesOfSymbols(table);
    return isSound(codes) && std::all_of(codes.begin(), codes.begin() + largestDifference + 1,
                                         [](int count) { return count == 1; });
}

bool holdsEveryBlock(const JHUFF_TBL& table) {
    // Every run and value that was decoded has its code, and so has the run of sixteen zeros, since
    // there is no other form to write them in. Only the end of a block can be written otherwise,
    // and damaged blocks (see LastCoefficientCodes).
    const std::array<int, 256> codes = codesOfSymbols(table);
    return isSound(codes) && codes[endOfBlock] == 1;
}

bool exceedsEightBitPhotos(const JHUFF_TBL& table) {
    const std::array<int, 256> codes = codesOfSymbols(table);
    for (int symbol = 0; symbol < 256; ++symbol) {
        if (codes[static_cast<std::size_t>(symbol)] != 0 && symbol % 16 > largestCoefficient) {
            return true;
        }
    }
    return false;
}

LastCoefficientCodes::LastCoefficientCodes(const JHUFF_TBL& table) {
    const std::array<int, 256> codes = codesOfSymbols(table);
    for (std::size_t symbol = 0; symbol < codes.size(); ++symbol) {
        held_[symbol] = codes[symbol] != 0;
        const std::size_t size = symbol % 16;
        everything_ =
            everything_ && (held_[symbol] || size == 0 || size > std::size_t{largestCoefficient});
    }
    everything_ = everything_ && held_[sixteenZeros];
}

bool LastCoefficientCodes::hold(const JCOEF* block) const {
    const int last = block[DCTSIZE2 - 1];
    if (last == 0) {
        return true;
    }
    std::size_t run = 0;
    while (run < DCTSIZE2 - 2 && block[codedOrder[DCTSIZE2 - 2 - run]] == 0) {
        ++run;
    }
    const auto size =
        static_cast<std::size_t>(std::bit_width(static_cast<unsigned>(std::abs(last))));
    return held_[run % 16 * 16 + size] && (run < 16 || held_[sixteenZeros]);
}

PieceTables chooseHuffmanTables(const jpeg_decompress_struct& photo, JpegErrors& errors,
                                jpeg_compress_struct& piece) {
    StandardTables standard;
    for (std::size_t i = 0; i < 2; ++i) {
        standard.dc[i] = *piece.dc_huff_tbl_ptrs[i];
        standard.ac[i] = *piece.ac_huff_tbl_ptrs[i];
    }
    PieceTables tables;
    tables.lastCoefficients.resize(static_cast<std::size_t>(photo.num_components));
    for (int i = 0; i < photo.num_components; ++i) {
        const int dc = photo.comp_info[i].dc_tbl_no;
        const int ac = photo.comp_info[i].ac_tbl_no;
        if (dc < 0 || dc >= NUM_HUFF_TBLS || ac < 0 || ac >= NUM_HUFF_TBLS) {
            continue; // reading says so
        }
        piece.comp_info[i].dc_tbl_no = dc;
        piece.comp_info[i].ac_tbl_no = ac;
        const JHUFF_TBL* own = tableOf(photo.dc_huff_tbl_ptrs, dc);
        put(piece, errors, piece.dc_huff_tbl_ptrs[dc],
            own != nullptr && holdsEveryDifference(*own)
                ? *own
                : standard.dc[static_cast<std::size_t>(std::min(dc, 1))]);
        own = tableOf(photo.ac_huff_tbl_ptrs, ac);
        tables.checkEveryValue =
            tables.checkEveryValue || (own != nullptr && exceedsEightBitPhotos(*own));
        if (own != nullptr && holdsEveryBlock(*own)) {
            put(piece, errors, piece.ac_huff_tbl_ptrs[ac], *own);
            tables.lastCoefficients[static_cast<std::size_t>(i)] = LastCoefficientCodes(*own);
        } else {
            put(piece, errors, piece.ac_huff_tbl_ptrs[ac],
                standard.ac[static_cast<std::size_t>(std::min(ac, 1))]);
        }
    }
    return tables;
}

} // namespace veldara
