#include "platform/windows/drive_letters.h"

#include "platform/error.h"
#include "platform/files/windows_paths.h"
#include "platform/text/natural_order.h"
#include "platform/text/path_text.h"
#include "platform/text/wide_text.h"
#include "platform/windows/file_search.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

#include <windows.h>

namespace veldara {

namespace {

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool isShownFolder(const WIN32_FIND_DATAW& entry) {
    constexpr DWORD unshown = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const std::wstring_view name = entry.cFileName;
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           (entry.dwFileAttributes & unshown) == 0 && name != L"." && name != L"..";
}

[[noreturn]] void failReading(const std::string& folder, DWORD code) {
    throw Error("The folder \"" + folder + "\" cannot be read: " + systemMessage(code) + ".");
}

// DRIVE_FIXED, DRIVE_REMOTE ...; DRIVE_UNKNOWN for a path without a letter, such as \\server\share.
UINT driveTypeOf(const std::string& path) {
    if (path.size() < 3 || path[1] != ':' || !isSeparator(path[2])) {
        return DRIVE_UNKNOWN;
    }
    return GetDriveTypeW(wideText(path.substr(0, 2) + "\\").c_str());
}

} // namespace

std::vector<std::string> DriveLetters::list() {
    std::vector<std::string> drives;
    const DWORD present = GetLogicalDrives();
    for (unsigned letter = 0; letter < 26; ++letter) {
        if ((present >> letter & 1U) != 0) {
            drives.emplace_back(1, static_cast<char>('a' + letter));
        }
    }
    return drives;
}

std::string DriveLetters::driveOf(const std::string& path) {
    if (path.size() < 2 || path[1] != ':') {
        return {};
    }
    char letter = path[0];
    if (letter >= 'A' && letter <= 'Z') {
        letter = static_cast<char>(letter - 'A' + 'a');
    }
    const std::string drive(1, letter);
    const std::vector<std::string> drives = list();
    return std::find(drives.begin(), drives.end(), drive) == drives.end() ? std::string() : drive;
}

std::string DriveLetters::rootOf(const std::string& drive) {
    return drive.empty() ? std::string() : drive.substr(0, 1) + ":\\";
}

std::vector<std::string> DriveLetters::subfolders(const std::string& folder) {
    if (folder.empty()) {
        failReading(folder, ERROR_PATH_NOT_FOUND);
    }
    std::wstring pattern = extendedPath(textPath(folder));
    if (pattern.back() != L'\\') {
        pattern += L'\\';
    }
    pattern += L'*';
    WIN32_FIND_DATAW entry{};
    const HANDLE first = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry,
                                          FindExSearchLimitToDirectories, nullptr, 0);
    if (first == INVALID_HANDLE_VALUE) {
        const DWORD code = GetLastError();
        // An empty drive has not even the entries "." and "..".
        if (code == ERROR_FILE_NOT_FOUND) {
            return {};
        }
        failReading(folder, code);
    }
    const FileSearch search(first);
    std::vector<std::string> names;
    do {
        if (isShownFolder(entry)) {
            names.push_back(narrowText(entry.cFileName));
        }
    } while (FindNextFileW(search.get(), &entry));
    const DWORD code = GetLastError();
    if (code != ERROR_NO_MORE_FILES) {
        failReading(folder, code);
    }
    std::sort(names.begin(), names.end(), naturalLess);
    return names;
}

std::vector<std::string> DriveLetters::foldersDownTo(const std::string& folder) {
    const std::string drive = driveOf(folder);
    if (drive.empty()) {
        return {folder};
    }
    std::vector<std::string> way = {rootOf(drive)};
    std::size_t place = 2;
    while (place < folder.size()) {
        while (place < folder.size() && isSeparator(folder[place])) {
            ++place;
        }
        const std::size_t start = place;
        while (place < folder.size() && !isSeparator(folder[place])) {
            ++place;
        }
        if (place > start) {
            const std::string& parent = way.back();
            const std::string joint = isSeparator(parent.back()) ? "" : "\\";
            way.push_back(parent + joint + folder.substr(start, place - start));
        }
    }
    return way;
}

bool DriveLetters::isOnFixedDrive(const std::string& folder) {
    const UINT type = driveTypeOf(folder);
    return type == DRIVE_FIXED || type == DRIVE_RAMDISK;
}

// The question goes to a thread of its own: the system may take half a minute to give up on a
// server that is gone, and cannot be interrupted.
bool DriveLetters::answersSoon(const std::string& folder) {
    const UINT type = driveTypeOf(folder);
    if (type != DRIVE_REMOTE && type != DRIVE_UNKNOWN) {
        return true;
    }
    constexpr std::chrono::seconds patience(1);
    auto answer = std::make_shared<std::promise<void>>();
    std::future<void> answered = answer->get_future();
    std::thread([answer, path = extendedPath(textPath(folder))] {
        GetFileAttributesW(path.c_str());
        answer->set_value();
    }).detach();
    return answered.wait_for(patience) == std::future_status::ready;
}

} // namespace veldara
