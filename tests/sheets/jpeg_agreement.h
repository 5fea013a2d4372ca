// Cutting any bytes at all, and what must hold whatever they are: a refusal with a reason, or
// pieces that decode to what the whole photo decodes to. For tests with damaged files, and for
// fuzzing.
#pragma once

#include "sheets/jpeg_geometry.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace veldara::test {

enum class CutOutcome { refused, cut, wrong };

struct CutResult {
    CutOutcome outcome = CutOutcome::refused;
    std::string reason; // of the refusal, or what is wrong
};

// Cuts a photo of that size (as the bytes say) into rectangles that cover it, chosen by the number.
// Photos of more pixels than a few millions count as refused.
CutResult cutAnything(std::span<const std::uint8_t> bytes, std::uint32_t choice);

} // namespace veldara::test
