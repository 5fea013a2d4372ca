#include "platform/windows/help_file.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include <aclapi.h>
#include <sddl.h>
#include <shlobj.h>

namespace veldara {

namespace {

struct CloseHandleOf {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

bool isUserOfThisProcess(PSID owner) {
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) {
        return false;
    }
    const std::unique_ptr<void, CloseHandleOf> token(opened);
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<BYTE> user(size);
    return size != 0 && GetTokenInformation(token.get(), TokenUser, user.data(), size, &size) &&
           EqualSid(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, owner);
}

// NT SERVICE\TrustedInstaller, which owns the files of Windows.
bool isTrustedInstaller(PSID owner) {
    PSID installer = nullptr;
    if (!ConvertStringSidToSidW(L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464",
                                &installer)) {
        return false;
    }
    const bool same = EqualSid(owner, installer) != FALSE;
    LocalFree(installer);
    return same;
}

std::wstring shortForm(const std::wstring& path) {
    const DWORD needed = GetShortPathNameW(path.c_str(), nullptr, 0);
    std::wstring result(needed, L'\0');
    const DWORD length = GetShortPathNameW(path.c_str(), result.data(), needed);
    result.resize(length < needed ? length : 0);
    return result;
}

// Empty where no copy can be made.
std::wstring copyInUsersFolder(const std::wstring& file) {
    std::array<wchar_t, MAX_PATH> buffer{};
    if (!SHGetSpecialFolderPathW(nullptr, buffer.data(), CSIDL_LOCAL_APPDATA, TRUE)) {
        return {};
    }
    const std::wstring folder = std::wstring(buffer.data()) + L"\\Veldara";
    CreateDirectoryW(folder.c_str(), nullptr);
    const std::wstring copy = folder + L"\\omra.chm";
    // A viewer that still shows the copy holds it; it is the same manual then.
    const bool made = CopyFileW(file.c_str(), copy.c_str(), FALSE) != FALSE ||
                      GetLastError() == ERROR_SHARING_VIOLATION;
    if (!made) {
        return {};
    }
    return viewerTakes(copy) ? copy : shortForm(copy);
}

} // namespace

bool ownerMayBeTrusted(PSID owner) {
    return IsWellKnownSid(owner, WinLocalSystemSid) ||
           IsWellKnownSid(owner, WinBuiltinAdministratorsSid) || isTrustedInstaller(owner) ||
           isUserOfThisProcess(owner);
}

bool ownerMayBeTrusted(const std::wstring& file) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(file.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                              nullptr, nullptr, nullptr, &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    const bool trusted = owner != nullptr && ownerMayBeTrusted(owner);
    LocalFree(descriptor);
    return trusted;
}

bool viewerTakes(const std::wstring& path) {
    return std::all_of(path.begin(), path.end(), [](wchar_t character) {
        return character >= L' ' && character < 0x7F && character != L'#' && character != L'%';
    });
}

std::wstring pathForViewer(const std::wstring& file) {
    if (viewerTakes(file)) {
        return file;
    }
    if (const std::wstring path = shortForm(file); !path.empty() && viewerTakes(path)) {
        return path;
    }
    const std::wstring copy = copyInUsersFolder(file);
    return copy.empty() ? file : copy;
}

} // namespace veldara
