#include "platform/windows/shell_folders.h"

#include "platform/text/wide_text.h"

#include <array>

#include <shlobj.h>
#include <windows.h>

namespace veldara {

std::string ShellFolders::path(int identifier) {
    std::array<wchar_t, 512> buffer{};
    if (!SHGetSpecialFolderPathW(nullptr, buffer.data(), identifier, FALSE)) {
        return {};
    }
    buffer.back() = L'\0';
    return narrowText(buffer.data());
}

} // namespace veldara
