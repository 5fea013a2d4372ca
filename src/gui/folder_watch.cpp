#include "gui/folder_watch.h"

#include "gui/native_text.h"
#include "platform/text/path_text.h"

#ifdef __WXMSW__
#include <wx/msw/wrapwin.h>
#endif

#include <wx/filename.h>
#include <wx/log.h>

namespace veldara {

namespace {

constexpr int settleTime = 200; // milliseconds
#ifdef __WXMSW__
constexpr int pollTime = 500; // milliseconds
#else
constexpr int changesOfNames = wxFSW_EVENT_CREATE | wxFSW_EVENT_DELETE | wxFSW_EVENT_RENAME;
#endif

} // namespace

FolderWatch::FolderWatch() {
    start_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { startWatching(); });
#ifdef __WXMSW__
    poll_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { look(); });
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
    const std::filesystem::path folder = textPath(folder_);
    std::error_code error;
    changed_ = std::filesystem::last_write_time(folder, error);
    // A server that has gone would stop the window at every look.
    if (error || GetDriveTypeW(folder.root_path().c_str()) == DRIVE_REMOTE) {
        poll_.Stop();
    } else {
        poll_.Start(pollTime);
    }
}

void FolderWatch::look() {
    std::error_code error;
    const auto now = std::filesystem::last_write_time(textPath(folder_), error);
    if (!error && now != changed_) {
        changed_ = now;
        settled_.StartOnce(settleTime);
    }
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
}

#endif

} // namespace veldara
