#include "platform/windows/shell_launcher.h"

#include "platform/error.h"
#include "platform/text/version_text.h"
#include "platform/windows/wide_text.h"

#include <cstdint>
#include <cstring>

#include <objbase.h>
#include <shellapi.h>
#include <windows.h>

namespace veldara {

namespace {

using HtmlHelpA = HWND(WINAPI*)(HWND owner, LPCSTR file, UINT command, DWORD_PTR data);

constexpr UINT displayTopic = 0;

// Loaded once and kept: the viewer's window lives as long as the program and runs the library's
// code. The system's folder only, so that no file beside the program is taken for it.
HtmlHelpA helpViewer() {
    const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) {
        throw Error(
            "The help viewer of Windows cannot be loaded: " + systemMessage(GetLastError()) + ".");
    }
    const FARPROC address = GetProcAddress(library, "HtmlHelpA");
    if (address == nullptr) {
        throw Error("The help viewer of Windows cannot be used.");
    }
    HtmlHelpA function = nullptr;
    static_assert(sizeof function == sizeof address);
    std::memcpy(&function, &address, sizeof function);
    return function;
}

// Our window that is in front, which the viewer's window then stays above.
HWND ownerWindow() {
    const HWND active = GetActiveWindow();
    if (active != nullptr) {
        return active;
    }
    const std::string mainWindowCaption = "Veldara v" + programVersion();
    return FindWindowA(nullptr, mainWindowCaption.c_str());
}

bool isAddress(const std::string& target) {
    return target.rfind("http://", 0) == 0 || target.rfind("https://", 0) == 0 ||
           target.rfind("mailto:", 0) == 0;
}

void open(const std::string& target, const std::wstring& wide) {
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", wide.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    // Values up to 32 are codes of failures, told apart by GetLastError.
    if (reinterpret_cast<std::intptr_t>(result) <= 32) {
        throw Error("\"" + target + "\" cannot be opened: " + systemMessage(GetLastError()) + ".");
    }
}

std::wstring withVariables(const std::string& path) {
    const std::wstring plain = wideText(path);
    const DWORD length = ExpandEnvironmentStringsW(plain.c_str(), nullptr, 0);
    if (length == 0) {
        return plain;
    }
    std::wstring expanded(length, L'\0');
    ExpandEnvironmentStringsW(plain.c_str(), expanded.data(), length);
    expanded.resize(length - 1); // without the closing NUL
    return expanded;
}

} // namespace

void ShellLauncher::openHelp(const std::string& file) {
    if (helpViewer()(ownerWindow(), file.c_str(), displayTopic, 0) == nullptr) {
        throw Error("The help file \"" + file + "\" cannot be shown.");
    }
}

void ShellLauncher::openTarget(const std::string& target) {
    const std::wstring wide = wideText(target);
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    const bool isFolder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    // A file would be handed to whatever program claims its kind; the windows open folders only.
    if (!isAddress(target) && !isFolder) {
        throw Error("The folder \"" + target + "\" is not there.");
    }
    open(target, wide);
}

void ShellLauncher::startProgram(const std::string& path) {
    const std::wstring program = withVariables(path);
    const DWORD attributes = GetFileAttributesW(program.c_str());
    // The shell would show a folder instead.
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw Error("\"" + path + "\" is no program that can be started.");
    }
    open(path, program);
}

} // namespace veldara
