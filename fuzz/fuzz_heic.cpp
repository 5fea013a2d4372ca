#include "picture_fuzzing.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    veldara::fuzz::readEveryWay({data, size}, "HEIC");
    return 0;
}
