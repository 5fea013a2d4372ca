#include "platform/files/windows_paths.h"

#include "platform/text/wide_text.h"

#include <string_view>

#include <windows.h>

namespace veldara {

namespace {

bool startsWith(std::wstring_view text, std::wstring_view start) {
    return text.substr(0, start.size()) == start;
}

bool meansHeld(unsigned long code) {
    return code == ERROR_ACCESS_DENIED || code == ERROR_SHARING_VIOLATION ||
           code == ERROR_LOCK_VIOLATION;
}

// Blanks and dots at the end of a name are dropped by the system when it creates a folder, but in
// this form of a path they would be looked for.
std::wstring withoutDroppedEnds(std::wstring_view path) {
    std::wstring result;
    for (const wchar_t unit : path) {
        if (unit == L'\\') {
            result.erase(result.find_last_not_of(L" .") + 1);
        }
        result += unit;
    }
    return result;
}

} // namespace

std::wstring extendedPath(const std::filesystem::path& path) {
    const std::wstring& given = path.native();
    const DWORD needed = GetFullPathNameW(given.c_str(), 0, nullptr, nullptr);
    std::wstring full(needed, L'\0');
    const DWORD length = GetFullPathNameW(given.c_str(), needed, full.data(), nullptr);
    if (length == 0 || length >= needed) {
        return given;
    }
    full.resize(length);
    if (startsWith(full, LR"(\\?\)") || startsWith(full, LR"(\\.\)")) {
        return full;
    }
    full = withoutDroppedEnds(full);
    if (startsWith(full, LR"(\\)")) {
        return LR"(\\?\UNC\)" + full.substr(2);
    }
    return LR"(\\?\)" + full;
}

unsigned long retryWhileHeld(const std::function<unsigned long()>& call) {
    const auto end = std::chrono::steady_clock::now() + heldFilePatience;
    unsigned long code = call();
    for (DWORD pause = 5; meansHeld(code) && std::chrono::steady_clock::now() < end;
         pause = pause < 100 ? pause * 2 : pause) {
        Sleep(pause);
        code = call();
    }
    return code;
}

std::string heldReason(unsigned long code) {
    if (code == ERROR_ACCESS_DENIED) {
        return systemMessage(code) +
               ", or another program, such as a virus scanner, holds the file";
    }
    if (meansHeld(code)) {
        return "another program, such as a virus scanner, holds the file";
    }
    return systemMessage(code);
}

} // namespace veldara
