// Whether a PDF is sound, by the checker of another program. Nothing is checked on Windows, which
// has none; what is written there is made by the same code.
#pragma once

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace veldara::test {

inline void expectSoundPdf(const std::filesystem::path& document) {
#ifdef _WIN32
    EXPECT_TRUE(std::filesystem::exists(document)) << document;
#else
    FILE* pipe = popen(("qpdf --check '" + document.string() + "' 2>&1").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string said;
    std::array<char, 4096> block{};
    for (std::size_t got = 0; (got = fread(block.data(), 1, block.size(), pipe)) > 0;) {
        said.append(block.data(), got);
    }
    EXPECT_EQ(pclose(pipe), 0) << said; // 3: there are warnings
    EXPECT_NE(said.find("No syntax or stream encoding errors found"), std::string::npos) << said;
#endif
}

} // namespace veldara::test
