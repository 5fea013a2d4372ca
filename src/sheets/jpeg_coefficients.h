// A JPEG photo's coefficients on their way through memory: the library reads them into a ring of
// rows of MCUs (or all of them, when the ring is as large as the photo), and pieces are written
// from the rows while they are there.
#pragma once

#include "platform/image/jpeg_file.h"
#include "platform/image/pixel_memory.h"

#include <array>
#include <cstdint>
#include <exception>
#include <functional>
#include <vector>

namespace veldara {

class JpegCoefficients {
  public:
    // Room for the blocks of mcuRows rows of MCUs. Throws std::bad_alloc.
    JpegCoefficients(JpegFile& photo, int mcuRows);
    JpegCoefficients(const JpegCoefficients&) = delete;
    JpegCoefficients& operator=(const JpegCoefficients&) = delete;

    // Bytes of coefficients in a row of MCUs, with the padding to whole MCUs.
    static std::uint64_t rowBytes(const jpeg_decompress_struct& state);

    // Called between two rows of a photo of one scan, with the number of rows that are whole, and
    // between two steps otherwise, with -1. Reading ends early, without an error, when it returns
    // false; what it throws ends it, too.
    using RowHook = std::function<bool(int rows)>;

    // Reads coefficients until all are there or the hook ends it; true when all are. Throws Error
    // with the bare reason when the photo is damaged.
    bool read(const RowHook& hook);

    // The first block of a row of a component. Rows count through the whole photo; one is there
    // until the row of the ring that it shares is read again.
    JBLOCKROW blocks(int component, int row) const;

  private:
    struct Plane {
        JBLOCKROW first = nullptr;
        std::size_t width = 0; // blocks in a row
        int rows = 0;          // that the ring holds
        std::array<JBLOCKROW, MAX_SAMP_FACTOR> accessed{};
    };

    static jvirt_barray_ptr requestArray(j_common_ptr library, int pool, boolean zeroed,
                                         JDIMENSION width, JDIMENSION height, JDIMENSION most);
    static JBLOCKARRAY accessArray(j_common_ptr library, jvirt_barray_ptr array, JDIMENSION first,
                                   JDIMENSION count, boolean writable);
    static void hearProgress(j_common_ptr library);
    bool mayGoOn() noexcept;

    JpegFile& photo_;
    bool ring_ = true;
    PixelMemory memory_;
    std::vector<Plane> planes_;
    std::size_t requested_ = 0;
    jpeg_progress_mgr progress_{};
    const RowHook* hook_ = nullptr;
    bool ended_ = false; // by the hook
    std::exception_ptr thrown_;
};

} // namespace veldara
