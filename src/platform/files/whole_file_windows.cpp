#include "platform/files/file_error.h"
#include "platform/files/whole_file.h"
#include "platform/files/windows_paths.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <aclapi.h>
#include <windows.h>

namespace veldara {

namespace {

namespace fs = std::filesystem;

// Where a symbolic link to a file leads. Other reparse points, such as the placeholders of a
// synchronising service, are files themselves.
std::wstring behindLinks(const std::wstring& path) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return path;
    }
    FindClose(search);
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 ||
        found.dwReserved0 != IO_REPARSE_TAG_SYMLINK) {
        return path;
    }
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(path.c_str(), 0, shared, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return path;
    }
    std::wstring target(32768, L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(file, target.data(), static_cast<DWORD>(target.size()), 0);
    CloseHandle(file);
    target.resize(length < target.size() ? length : 0);
    return target.empty() ? path : target;
}

// 0, or the code of what forbids to replace the file. Renaming over a file does not ask whether it
// may be written; a file that another program holds for the moment is not refused yet.
DWORD refusalToReplace(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return ERROR_SUCCESS;
    }
    if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
        return ERROR_ACCESS_DENIED;
    }
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        CreateFileW(path.c_str(), FILE_WRITE_DATA, shared, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return GetLastError() == ERROR_ACCESS_DENIED ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
    }
    CloseHandle(file);
    return ERROR_SUCCESS;
}

// Who may use the old file may use the new one. Without success where the file system keeps no
// rights.
void copyRights(const std::wstring& from, HANDLE to) {
    PACL rights = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(from.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, &rights, nullptr, &descriptor) != ERROR_SUCCESS) {
        return;
    }
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(descriptor, &control, &revision);
    const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0
                                                 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                 : UNPROTECTED_DACL_SECURITY_INFORMATION;
    SetSecurityInfo(to, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr,
                    rights, nullptr);
    LocalFree(descriptor);
}

// The compiler's headers name it for later systems only; those before answer that they do not know
// it.
constexpr FILE_INFO_BY_HANDLE_CLASS renameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);

DWORD renameOpenFile(HANDLE file, const std::wstring& target, bool posixSemantics) {
    const std::size_t bytes = target.size() * sizeof(wchar_t);
    std::vector<std::uint8_t> buffer(sizeof(FILE_RENAME_INFO) + bytes);
    FILE_RENAME_INFO& request = *reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    request.FileNameLength = static_cast<DWORD>(bytes);
    std::copy(target.begin(), target.end(), request.FileName);
    if (posixSemantics) {
        request.Flags = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    } else {
        request.ReplaceIfExists = TRUE;
    }
    return SetFileInformationByHandle(file, posixSemantics ? renameInfoEx : FileRenameInfo,
                                      &request, static_cast<DWORD>(buffer.size()))
               ? ERROR_SUCCESS
               : GetLastError();
}

bool meansUnknownToFileSystem(DWORD code) {
    return code == ERROR_INVALID_PARAMETER || code == ERROR_NOT_SUPPORTED ||
           code == ERROR_INVALID_FUNCTION || code == ERROR_CALL_NOT_IMPLEMENTED;
}

// Replaces a file that others have open for reading, where the file system can (Windows 10 on
// NTFS).
DWORD renameOpenFile(HANDLE file, const std::wstring& target) {
    const DWORD code = renameOpenFile(file, target, true);
    return meansUnknownToFileSystem(code) ? renameOpenFile(file, target, false) : code;
}

} // namespace

struct WholeFile::State {
    fs::path named;      // as the caller named it, for messages
    std::wstring target; // behind links, in the form without a length limit
    std::wstring temporary;
    HANDLE file = INVALID_HANDLE_VALUE;

    [[noreturn]] void fail(DWORD code) const {
        throw FileError("write", named, static_cast<long>(code), heldReason(code));
    }

    // Shared with nobody, so that no scanner opens it before it has its final name; opened with the
    // right to rename, so that it need not be closed before.
    void create() {
        constexpr int attempts = 16; // a taken name is next to impossible
        constexpr DWORD wanted = GENERIC_WRITE | DELETE | READ_CONTROL | WRITE_DAC;
        for (int i = 0; i < attempts; ++i) {
            const std::wstring name = temporaryNameBeside(target).native();
            file = CreateFileW(name.c_str(), wanted, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                               nullptr);
            if (file != INVALID_HANDLE_VALUE) {
                temporary = name;
                return;
            }
            if (GetLastError() != ERROR_FILE_EXISTS) {
                break;
            }
        }
        fail(GetLastError());
    }

    void close() { CloseHandle(std::exchange(file, INVALID_HANDLE_VALUE)); }

    DWORD putInPlace() {
        const DWORD code = retryWhileHeld([&] { return renameOpenFile(file, target); });
        if (code == ERROR_SUCCESS || meansUnknownToFileSystem(code)) {
            close();
        }
        if (!meansUnknownToFileSystem(code)) {
            return code;
        }
        return retryWhileHeld([&]() -> unsigned long {
            return MoveFileExW(temporary.c_str(), target.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
                       ? ERROR_SUCCESS
                       : GetLastError();
        });
    }
};

// Rights::ownerOnly has no meaning here: a new file has those of its folder.
WholeFile::WholeFile(const fs::path& target, Rights) : state_(std::make_unique<State>()) {
    state_->named = target;
    state_->target = behindLinks(extendedPath(target));
    if (const DWORD code = refusalToReplace(state_->target); code != ERROR_SUCCESS) {
        throw FileError("write", target, static_cast<long>(code));
    }
    state_->create();
    copyRights(state_->target, state_->file);
}

WholeFile::WholeFile(WholeFile&& other) noexcept = default;

WholeFile& WholeFile::operator=(WholeFile&& other) noexcept {
    state_.swap(other.state_);
    return *this;
}

WholeFile::~WholeFile() {
    giveUp();
}

void WholeFile::write(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t largestCall = std::size_t{1} << 26U;
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(state_->file, bytes.data(),
                       static_cast<DWORD>(std::min(bytes.size(), largestCall)), &written,
                       nullptr)) {
            state_->fail(GetLastError());
        }
        if (written == 0) {
            state_->fail(ERROR_DISK_FULL);
        }
        bytes = bytes.subspan(written);
    }
}

void WholeFile::write(std::string_view text) {
    write(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

void WholeFile::commit() {
    const DWORD code = FlushFileBuffers(state_->file) ? state_->putInPlace() : GetLastError();
    if (code != ERROR_SUCCESS) {
        giveUp();
        state_->fail(code);
    }
    state_->temporary.clear();
}

void WholeFile::giveUp() noexcept {
    if (!state_ || state_->temporary.empty()) {
        return;
    }
    if (state_->file != INVALID_HANDLE_VALUE) {
        FILE_DISPOSITION_INFO remove{TRUE};
        const bool marked = SetFileInformationByHandle(state_->file, FileDispositionInfo, &remove,
                                                       sizeof remove) != FALSE;
        state_->close();
        if (marked) {
            state_->temporary.clear();
            return;
        }
    }
    retryWhileHeld([&]() -> unsigned long {
        return DeleteFileW(state_->temporary.c_str()) ? ERROR_SUCCESS : GetLastError();
    });
    state_->temporary.clear();
}

} // namespace veldara
