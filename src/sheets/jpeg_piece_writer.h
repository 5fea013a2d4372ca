// Codes rectangles of a JPEG photo's coefficients as JPEG files of their own, or as parts of one
// that are put one behind the other.
#pragma once

#include "sheets/jpeg_coefficients.h"
#include "sheets/jpeg_geometry.h"
#include "sheets/jpeg_huffman.h"

#include <cstdint>
#include <vector>

namespace veldara {

// The library's state for writing, given back in every outcome.
struct JpegCompressor {
    JpegErrors errors;
    jpeg_compress_struct state{};

    JpegCompressor();
    JpegCompressor(const JpegCompressor&) = delete;
    JpegCompressor& operator=(const JpegCompressor&) = delete;
    ~JpegCompressor();
};

// Where the library puts what it writes.
struct JpegOutput {
    jpeg_destination_mgr manager{}; // first, so that the library's pointer is a pointer to this
    std::vector<std::uint8_t> bytes;
    std::size_t used = 0;

    JpegOutput();
};

class JpegPieceWriter {
  public:
    // Takes the photo's tables and settings; the photo itself is not touched later. One of several
    // scans has been read by then. A photo of one
    // scan makes pieces in parts, with a restart marker between rows of MCUs and with the photo's
    // own Huffman tables where they serve; another one makes whole pieces with the best tables,
    // progressive when it is.
    explicit JpegPieceWriter(JpegFile& photo);

    // These rows of MCUs (of the photo, among those of the piece) as the part of a piece's file
    // that follows the rows before: with the header when they are the first rows, with the end
    // marker when they are the last. Throws Error with the bare reason.
    std::vector<std::uint8_t> write(const JpegCoefficients& coefficients, const McuGrid& grid,
                                    const PixelRectangle& piece, const McuRows& rows);

  private:
    static JBLOCKARRAY accessArray(j_common_ptr library, jvirt_barray_ptr array, JDIMENSION first,
                                   JDIMENSION count, boolean writable);
    void setUp(JpegFile& photo);
    void setUpWhole(const jpeg_decompress_struct& photo);
    void pointToRows(const JpegCoefficients& coefficients, const McuGrid& grid,
                     const PixelRectangle& piece, const McuRows& rows);
    void checkBlocks() const;
    void compress();
    int codedRows(int mcuRows) const;

    JpegCompressor library_;
    JpegOutput output_;
    std::vector<jpeg_scan_info> scans_;
    bool inParts_ = true;
    PieceTables tables_;
    std::vector<std::vector<JBLOCKROW>> rows_; // of each component, from the piece's first block
    std::vector<std::size_t> widths_;          // in blocks, of each component
    std::vector<jvirt_barray_ptr> arrays_;
};

} // namespace veldara
