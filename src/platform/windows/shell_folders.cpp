#include "platform/windows/shell_folders.h"

#include <array>

#include <shlobj.h>
#include <windows.h>

namespace veldara {

std::string ShellFolders::path(int identifier) {
    std::array<char, 512> buffer{};
    if (!SHGetSpecialFolderPathA(nullptr, buffer.data(), identifier, FALSE)) {
        return {};
    }
    buffer.back() = '\0';
    return buffer.data();
}

} // namespace veldara
