#include "gui/folder_watch.h"

#include "gui/native_text.h"
#include "platform/text/path_text.h"

#ifdef __WXMSW__
#include "platform/files/windows_paths.h"

#include <algorithm>
#include <chrono>
#include <string_view>

#include <wx/msw/wrapwin.h>
#endif

#include <wx/filename.h>
#include <wx/log.h>

namespace veldara {

namespace {

constexpr int settleTime = 200; // milliseconds
#ifdef __WXMSW__
constexpr int pauseBetweenLooks = 500; // milliseconds, at least
constexpr int pausePerLook = 50; // times the length of a check, so that a full folder costs little

// A hash of all names in the folder, in the order in which the system lists them; 0 where it cannot
// be read.
std::size_t namesIn(const std::string& folder) {
    std::wstring pattern = extendedPath(textPath(folder));
    pattern += pattern.back() == L'\\' ? L"*" : L"\\*";
    WIN32_FIND_DATAW entry{};
    const HANDLE search =
        FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr,
                         FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE) {
        return 0;
    }
    constexpr std::size_t prime = 1099511628211; // of the FNV hash
    std::size_t hash = 1;
    do {
        hash = hash * prime ^ std::hash<std::wstring_view>()(entry.cFileName);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return hash;
}
#else
constexpr int changesOfNames = wxFSW_EVENT_CREATE | wxFSW_EVENT_DELETE | wxFSW_EVENT_RENAME;
#endif

} // namespace

FolderWatch::FolderWatch() {
    start_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { startWatching(); });
#ifdef __WXMSW__
    look_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { look(); });
#endif
    settled_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        if (onChanged) {
            onChanged();
        }
    });
}

void FolderWatch::watch(const std::string& folder) {
    if (folder != folder_) {
        folder_ = folder;
        settled_.Stop();
        start_.StartOnce(1);
    }
}

#ifdef __WXMSW__

void FolderWatch::startWatching() {
    // A server that has gone would block the window at every check.
    const std::wstring root = textPath(folder_).root_path().native();
    if (GetDriveTypeW(root.c_str()) == DRIVE_REMOTE) {
        look_.Stop();
    } else {
        names_ = 0; // so that the first look reports what changed after the folder was listed
        look();
    }
}

void FolderWatch::look() {
    const auto start = std::chrono::steady_clock::now();
    const std::size_t names = namesIn(folder_);
    if (names != 0 && names != names_) {
        names_ = names;
        settled_.StartOnce(settleTime);
    }
    const auto taken = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start);
    look_.StartOnce(std::max(pauseBetweenLooks, static_cast<int>(taken.count()) * pausePerLook));
}

#else

void FolderWatch::startWatching() {
    const wxLogNull quiet; // a folder that cannot be watched is no error of the user's
    watcher_ = std::make_unique<wxFileSystemWatcher>();
    watcher_->Bind(wxEVT_FSWATCHER, [this](wxFileSystemWatcherEvent& event) {
        if ((event.GetChangeType() & changesOfNames) != 0) {
            settled_.StartOnce(settleTime);
        }
    });
    watcher_->Add(wxFileName::DirName(nativeText(folder_)), changesOfNames);
    settled_.StartOnce(settleTime); // reports what changed after the folder was listed
}

#endif

} // namespace veldara
