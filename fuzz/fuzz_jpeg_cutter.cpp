// Any bytes may be cut: what comes out decodes to what went in, or is refused as loading refuses
// it.
#include "sheets/jpeg_agreement.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldara::test;
    // The last byte, which no decoder reads, chooses the rectangles.
    const std::uint32_t choice = size == 0 ? 0 : data[size - 1] + static_cast<std::uint32_t>(size);
    const CutResult result = cutAnything({data, size}, choice);
    if (result.outcome == CutOutcome::wrong) {
        std::fprintf(stderr, "%s\n", result.reason.c_str());
        std::abort();
    }
    return 0;
}
