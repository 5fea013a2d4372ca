#include "controls/browsing.h"

#include "platform/error.h"

#include <algorithm>
#include <utility>

namespace veldara {

namespace {

std::string nameOf(const std::string& path, char separator) {
    const std::size_t last = path.find_last_of(separator);
    if (last == std::string::npos || last + 1 == path.size()) {
        return path; // a drive's root is shown whole
    }
    return path.substr(last + 1);
}

std::string joined(const std::string& folder, const std::string& name, char separator) {
    return !folder.empty() && folder.back() == separator ? folder + name
                                                         : folder + separator + name;
}

} // namespace

void DriveList::setDrive(const std::string& drive) {
    if (std::find(items_.begin(), items_.end(), drive) == items_.end()) {
        refresh(); // it may have been plugged in since
        if (std::find(items_.begin(), items_.end(), drive) == items_.end()) {
            throw Error("There is no drive \"" + drive + "\".");
        }
    }
    if (assign(drive_, drive, Property::value)) {
        raise(onChange);
    }
}

void DriveList::refresh() {
    assign(items_, drives_.list(), Property::items);
}

void DriveList::userSelect(int index) {
    if (reachable() && index >= 0 && index < static_cast<int>(items_.size())) {
        if (assign(drive_, items_[static_cast<std::size_t>(index)], Property::value)) {
            raise(onChange);
        }
    }
}

int FolderList::currentEntry() const {
    const auto below = std::find_if(entries_.begin(), entries_.end(),
                                    [](const Entry& entry) { return !entry.isOpen; });
    return static_cast<int>(below - entries_.begin()) - 1;
}

void FolderList::setPath(const std::string& path) {
    if (path == path_) {
        return;
    }
    enter(path, drives_.subfolders(path));
}

void FolderList::enter(const std::string& path, const std::vector<std::string>& subfolders) {
    std::vector<Entry> entries = entriesOf(path, subfolders);
    path_ = path;
    entries_ = std::move(entries);
    changed(Property::items);
    changed(Property::value);
    raise(onChange);
}

void FolderList::refresh() {
    if (path_.empty()) {
        return;
    }
    std::vector<std::string> subfolders;
    try {
        subfolders = drives_.subfolders(path_);
    } catch (const Error&) {
        subfolders.clear(); // a folder that has gone has nothing below it
    }
    assign(entries_, entriesOf(path_, subfolders), Property::items);
}

void FolderList::userOpen(int index) {
    if (!reachable() || index < 0 || index >= static_cast<int>(entries_.size())) {
        return;
    }
    const std::string path = entries_[static_cast<std::size_t>(index)].path;
    try {
        setPath(path);
    } catch (const Error&) {
        refresh();
        const bool present = std::any_of(entries_.begin(), entries_.end(),
                                         [&](const Entry& entry) { return entry.path == path; });
        if (present) { // it is there, and not ours to read: it is entered and shows nothing
            enter(path, {});
        }
    }
}

std::vector<FolderList::Entry>
FolderList::entriesOf(const std::string& path, const std::vector<std::string>& subfolders) const {
    std::vector<Entry> entries;
    for (const std::string& folder : drives_.foldersDownTo(path)) {
        const int depth = static_cast<int>(entries.size());
        entries.push_back({nameOf(folder, drives_.separator()), folder, depth, true});
    }
    const int depth = static_cast<int>(entries.size());
    for (const std::string& name : subfolders) {
        entries.push_back({name, joined(path, name, drives_.separator()), depth, false});
    }
    return entries;
}

} // namespace veldara
