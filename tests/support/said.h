// What a program of the building machine prints.
#pragma once

#ifndef _WIN32

#include <array>
#include <cstdio>
#include <string>

namespace veldara::test {

// Its messages are in the text, too; `ok` is false when it fails.
struct Said {
    bool ok = false;
    std::string text;
};

// command: of the shell.
inline Said said(const std::string& command) {
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return {};
    }
    Said result;
    std::array<char, 4096> block{};
    for (std::size_t got = 0; (got = fread(block.data(), 1, block.size(), pipe)) > 0;) {
        result.text.append(block.data(), got);
    }
    result.ok = pclose(pipe) == 0;
    return result;
}

} // namespace veldara::test

#endif
