// Which Huffman tables the pieces of a JPEG photo are coded with.
#pragma once

#include "platform/image/jpeg_errors.h"

#include <array>
#include <vector>

namespace veldara {

// Whether every block that was decoded with the table can be coded with it again. An encoder may
// have left out what it did not need: the end of a block, or differences of brightness that arise
// only where a piece begins.
bool holdsEveryDifference(const JHUFF_TBL& table); // for DC
bool holdsEveryBlock(const JHUFF_TBL& table);      // for AC

// Whether the table has codes for coefficients that no photo of 8 bits a sample has, so that their
// values have to be looked at.
bool exceedsEightBitPhotos(const JHUFF_TBL& table); // for AC

// What the codes of an AC table can say, as far as a damaged photo may ask for more: a run of zeros
// that leaves its block ends at the last coefficient, where it is shorter than its code said.
class LastCoefficientCodes {
  public:
    LastCoefficientCodes() = default; // of a table that holds everything
    explicit LastCoefficientCodes(const JHUFF_TBL& table);

    bool holdEverything() const { return everything_; }

    // Whether the last coefficient of the block, if it is not zero, has a code with the run of
    // zeros before it.
    bool hold(const JCOEF* block) const;

  private:
    std::array<bool, 256> held_{};
    bool everything_ = true;
};

// The tables of the pieces, as far as they concern writing.
struct PieceTables {
    bool checkEveryValue = false;                       // see exceedsEightBitPhotos
    std::vector<LastCoefficientCodes> lastCoefficients; // of each component
};

// Gives the pieces the photo's own tables, which fit it best, where they serve for pieces, and the
// standard's tables elsewhere. The photo's header was read; the compressor has its default tables.
// Throws Error when there is not enough memory.
PieceTables chooseHuffmanTables(const jpeg_decompress_struct& photo, JpegErrors& errors,
                                jpeg_compress_struct& piece);

} // namespace veldara
