// Watches one folder and reports when files or folders in it appear, disappear or are renamed.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include <wx/defs.h>
#ifndef __WXMSW__
#include <wx/fswatcher.h>
#endif
#include <wx/timer.h>

namespace veldara {

class FolderWatch {
  public:
    FolderWatch();

    // Called a moment after the last of several changes, and once for each new folder, which may
    // have changed since it was listed.
    std::function<void()> onChanged;

    // Watches this folder instead of the one before. A folder that the system cannot watch is never
    // reported.
    void watch(const std::string& folder);

  private:
    void startWatching();

    std::string folder_;
#ifdef __WXMSW__
    void look();

    // The toolkit's watcher lets the system write into memory that it has freed, and the folder's
    // time of change tells too little: the standard library rounds it to seconds, and memory cards
    // do not keep it. So the names themselves are compared.
    std::size_t names_ = 0;
    wxTimer look_;
#else
    std::unique_ptr<wxFileSystemWatcher> watcher_;
#endif
    wxTimer start_; // the watcher can be made only while the event loop runs
    wxTimer settled_;
};

} // namespace veldara
