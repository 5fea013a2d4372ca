// Whether a PDF is sound, by the checker of another program. Nothing is checked on Windows, which
// has none; what is written there is made by the same code.
#pragma once

#include "support/said.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace veldara::test {

inline void expectSoundPdf(const std::filesystem::path& document) {
#ifdef _WIN32
    EXPECT_TRUE(std::filesystem::exists(document)) << document;
#else
    const Said check = said("qpdf --check '" + document.string() + "'"); // fails for warnings, too
    EXPECT_TRUE(check.ok) << check.text;
    EXPECT_NE(check.text.find("No syntax or stream encoding errors found"), std::string::npos)
        << check.text;
#endif
}

} // namespace veldara::test
