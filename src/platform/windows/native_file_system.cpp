#include "platform/windows/native_file_system.h"

#include "platform/error.h"
#include "platform/files/windows_paths.h"
#include "platform/text/path_text.h"
#include "platform/text/wide_text.h"
#include "platform/windows/file_search.h"
#include "platform/windows/text_files.h"

#include <array>
#include <memory>

#include <shlobj.h>
#include <windows.h>

namespace veldara {

namespace {

std::wstring systemPath(const std::string& path) {
    return extendedPath(textPath(path));
}

[[noreturn]] void fail(const std::string& what, const std::string& path, const std::string& how,
                       DWORD code) {
    throw Error(what + " \"" + path + "\" " + how + ": " + systemMessage(code) + ".");
}

DWORD attributesOf(const std::string& path) {
    return path.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(systemPath(path).c_str());
}

// PATH.unread, or with a number where that name is taken. The system's code.
DWORD copyBeside(const std::wstring& from, const std::wstring& to) {
    constexpr int mostCopies = 100;
    DWORD code = ERROR_FILE_EXISTS;
    for (int i = 1; i <= mostCopies && code == ERROR_FILE_EXISTS; ++i) {
        const std::wstring number = i == 1 ? L"" : std::to_wstring(i);
        code = retryWhileHeld([&]() -> unsigned long {
            return CopyFileW(from.c_str(), (to + L".unread" + number).c_str(), TRUE)
                       ? ERROR_SUCCESS
                       : GetLastError();
        });
    }
    return code;
}

// With the folder, which is made; empty where the system names none.
std::wstring placeInUsersFolder(const std::string& path) {
    std::array<wchar_t, MAX_PATH> buffer{};
    if (!SHGetSpecialFolderPathW(nullptr, buffer.data(), CSIDL_LOCAL_APPDATA, TRUE)) {
        return {};
    }
    const std::wstring folder = std::wstring(buffer.data()) + L"\\Veldara";
    CreateDirectoryW(folder.c_str(), nullptr); // copying then says what is wrong
    return folder + L"\\" + textPath(path).filename().native();
}

} // namespace

std::vector<std::string> NativeFileSystemObject::files(const std::string& folder) {
    WIN32_FIND_DATAW entry{};
    if (folder.empty()) {
        fail("The folder", folder, "cannot be read", ERROR_PATH_NOT_FOUND);
    }
    std::wstring pattern = systemPath(folder);
    pattern += pattern.back() == L'\\' ? L"*" : L"\\*";
    const HANDLE first = FindFirstFileW(pattern.c_str(), &entry);
    if (first == INVALID_HANDLE_VALUE) {
        if (GetLastError() == ERROR_FILE_NOT_FOUND) {
            return {}; // an empty drive has not even the entries "." and ".."
        }
        fail("The folder", folder, "cannot be read", GetLastError());
    }
    const FileSearch search(first);
    std::vector<std::string> names;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            names.push_back(narrowText(entry.cFileName));
        }
    } while (FindNextFileW(search.get(), &entry));
    if (const DWORD code = GetLastError(); code != ERROR_NO_MORE_FILES) {
        fail("The folder", folder, "cannot be read", code);
    }
    return names;
}

bool NativeFileSystemObject::fileExists(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool NativeFileSystemObject::folderExists(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void NativeFileSystemObject::createFolder(const std::string& path) {
    if (!CreateDirectoryW(systemPath(path).c_str(), nullptr)) {
        fail("The folder", path, "cannot be created", GetLastError());
    }
}

std::uint64_t NativeFileSystemObject::freeSpace(const std::string& drive) {
    const std::string root = drive.size() == 1 ? drive + ":\\" : drive;
    ULARGE_INTEGER available{};
    if (root.empty() ||
        !GetDiskFreeSpaceExW(systemPath(root).c_str(), &available, nullptr, nullptr)) {
        fail("The free space of the drive", drive, "is not known", GetLastError());
    }
    return available.QuadPart;
}

std::unique_ptr<TextReader> NativeFileSystemObject::openTextFile(const std::string& path) {
    return openTextFileToRead(path);
}

std::unique_ptr<TextWriter> NativeFileSystemObject::createTextFile(const std::string& path) {
    return createTextFileToWrite(path);
}

void NativeFileSystemObject::keepCopy(const std::string& path) {
    const std::wstring from = systemPath(path);
    DWORD code = copyBeside(from, from);
    if (code == ERROR_ACCESS_DENIED) {
        const std::wstring own = placeInUsersFolder(path);
        code = own.empty() ? code : copyBeside(from, own);
    }
    if (code != ERROR_SUCCESS) {
        throw Error("The file \"" + path + "\" cannot be copied: " + heldReason(code) + ".");
    }
}

} // namespace veldara
