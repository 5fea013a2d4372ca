#include "platform/windows/shell_launcher.h"

#include "platform/error.h"
#include "platform/function_address.h"
#include "platform/text/file_name.h"
#include "platform/text/path_text.h"
#include "platform/text/version_text.h"
#include "platform/text/wide_text.h"
#include "platform/windows/help_file.h"

#include <cstdint>
#include <filesystem>
#include <memory>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <windows.h>

namespace veldara {

namespace {

using HtmlHelp = HWND(WINAPI*)(HWND owner, LPCWSTR file, UINT command, DWORD_PTR data);

constexpr UINT displayTopic = 0;
constexpr UINT closeAllWindows = 0x12;

// Loaded once and kept: the viewer's window lives as long as the program and runs the library's
// code. The system's folder only, so that no file beside the program is taken for it.
HtmlHelp helpViewer() {
    const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) {
        throw Error(
            "The help viewer of Windows cannot be loaded: " + systemMessage(GetLastError()) + ".");
    }
    const FARPROC address = GetProcAddress(library, "HtmlHelpW");
    if (address == nullptr) {
        throw Error("The help viewer of Windows cannot be used.");
    }
    return functionAt<HtmlHelp>(address);
}

// Our window that is in front, which the viewer's window then stays above.
HWND ownerWindow() {
    const HWND active = GetActiveWindow();
    if (active != nullptr) {
        return active;
    }
    const std::wstring mainWindowCaption = wideText("Veldara v" + programVersion());
    return FindWindowW(nullptr, mainWindowCaption.c_str());
}

bool isAddress(const std::string& target) {
    return target.rfind("http://", 0) == 0 || target.rfind("https://", 0) == 0 ||
           target.rfind("mailto:", 0) == 0;
}

// With the reason that the system gives for the call just made.
Error cannotBeOpened(const std::string& target) {
    return Error("\"" + target + "\" cannot be opened: " + systemMessage(GetLastError()) + ".");
}

void open(const std::string& target, const std::wstring& wide, const wchar_t* verb) {
    const HINSTANCE result =
        ShellExecuteW(nullptr, verb, wide.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    // Values up to 32 are codes of failures, told apart by GetLastError.
    if (reinterpret_cast<std::intptr_t>(result) <= 32) {
        throw cannotBeOpened(target);
    }
}

enum class Entry { none, file, folder };

Entry entryAt(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return Entry::none;
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Entry::folder : Entry::file;
}

struct FreeItem {
    void operator()(ITEMIDLIST* item) const { ILFree(item); }
};

// As the very item of its folder: by its name the shell might find a program (file.pdf.exe).
void openDocument(const std::string& target) {
    const std::wstring path = textPath(target).make_preferred().native();
    const std::unique_ptr<ITEMIDLIST, FreeItem> item(
        entryAt(path) == Entry::file ? ILCreateFromPathW(path.c_str()) : nullptr);
    if (!item) {
        throw Error("The file \"" + target + "\" is not there.");
    }
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_IDLIST | SEE_MASK_FLAG_NO_UI;
    request.lpVerb = L"open";
    request.lpIDList = item.get();
    request.nShow = SW_SHOWNORMAL;
    if (!ShellExecuteExW(&request)) {
        throw cannotBeOpened(target);
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

ShellLauncher::~ShellLauncher() {
    // The viewer's windows run on a thread of its own, which must end before the program does.
    // Wine's viewer shows no page without a browser component that tests do without, so only a real
    // Windows machine shows what happens (docs/windows-check.md).
    if (helpOpened_) {
        helpViewer()(nullptr, nullptr, closeAllWindows, 0);
    }
}

void ShellLauncher::openHelp(const std::string& file) {
    if (!ownerMayBeTrusted(wideText(file))) {
        throw Error("The help file \"" + file +
                    "\" belongs to another user, who could run programs by it; it is not opened.");
    }
    const std::wstring path = pathForViewer(wideText(file));
    helpOpened_ = true;
    if (helpViewer()(ownerWindow(), path.c_str(), displayTopic, 0) == nullptr) {
        throw Error("The help file \"" + file + "\" cannot be shown.");
    }
}

void ShellLauncher::openTarget(const std::string& target) {
    if (isAddress(target)) {
        open(target, wideText(target), L"open");
        return;
    }
    if (isPdfName(target)) {
        openDocument(target);
        return;
    }
    std::wstring folder = textPath(target).make_preferred().native();
    if (entryAt(folder) != Entry::folder) {
        throw Error("The folder \"" + target + "\" is not there.");
    }
    // Without the separator, and with "open", the shell would start a program of the same name that
    // lies beside the folder (folder.exe, folder.bat, folder.lnk).
    if (folder.back() != L'\\') {
        folder += L'\\';
    }
    open(target, folder, L"explore");
}

void ShellLauncher::startProgram(const std::string& path) {
    const std::wstring program = withVariables(path);
    // The shell would show a folder instead, and look for a relative name in many places.
    if (entryAt(program) != Entry::file || !std::filesystem::path(program).is_absolute()) {
        throw Error("\"" + path + "\" is not a program that can be started.");
    }
    open(path, program, L"open");
}

} // namespace veldara
