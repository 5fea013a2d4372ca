// A JPEG file that the library has opened: its state, its errors, its window onto the bytes, and
// what the header says. Decoding rows and cutting in the compressed domain both begin here.
#pragma once

#include "platform/image/byte_source.h"
#include "platform/image/exif.h"
#include "platform/image/image.h"
#include "platform/image/jpeg_errors.h"

#include <array>
#include <cstdint>

namespace veldara {

// The library's window onto the file.
struct JpegInput {
    jpeg_source_mgr manager{}; // first, so that the library's pointer is a pointer to this
    ByteSource* source = nullptr;
    std::uint64_t position = 0;
    bool ended = false; // the library asked for bytes behind the last one
    std::array<JOCTET, 65536> buffer{};

    explicit JpegInput(ByteSource& bytes);
};

// The library's state, given back in every outcome.
struct JpegDecompressor {
    JpegErrors errors;
    jpeg_decompress_struct state{};

    JpegDecompressor();
    JpegDecompressor(const JpegDecompressor&) = delete;
    JpegDecompressor& operator=(const JpegDecompressor&) = delete;
    ~JpegDecompressor();
};

class JpegFile {
  public:
    // Reads the header; the source must outlive it. Throws Error with the bare reason when it is
    // damaged, is of a kind that cannot be read, or promises more than the file has bytes for.
    explicit JpegFile(ByteSource& source);

    jpeg_decompress_struct& state() { return library_.state; }
    const jpeg_decompress_struct& state() const { return library_.state; }
    JpegErrors& errors() { return library_.errors; }
    bool ended() const { return input_.ended; }

    // One scan holds everything, so the picture can be read from the top down as it comes.
    bool hasOneScan() const { return oneScan_; }

    // Blocks of 8 x 8 coefficients, without the padding to whole MCUs.
    std::uint64_t blockCount() const;

    // The camera's orientation, and the resolution that the header gives (else the camera).
    ExifFacts exifFacts() const;

    // The colour profile of the stored samples, as it is in the file; empty when there is none.
    ColourProfile profile();

    // Throws Error when a scan is missing after the last one was read.
    void checkAllScansCame() const;

    // To be called between scans: leaves the library when there are more than any encoder makes,
    // since each costs a pass over the whole picture.
    static void countScans(j_common_ptr library);

  private:
    void readHeader();
    void checkKind() const;

    JpegDecompressor library_;
    JpegInput input_;
    bool oneScan_ = true;
};

} // namespace veldara
