#include "controls/browsing.h"

#include "platform/error.h"

#include <algorithm>

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
    items_ = drives_.list();
    changed(Property::items);
}

void DriveList::userSelect(int index) {
    if (enabled() && index >= 0 && index < static_cast<int>(items_.size())) {
        if (assign(drive_, items_[static_cast<std::size_t>(index)], Property::value)) {
            raise(onChange);
        }
    }
}

int FolderList::currentEntry() const {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].path == path_) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void FolderList::setPath(const std::string& path) {
    if (path == path_) {
        return;
    }
    const std::vector<std::string> subfolders = drives_.subfolders(path);
    path_ = path;
    fillEntries(subfolders);
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
    fillEntries(subfolders);
}

void FolderList::userOpen(int index) {
    if (!enabled() || index < 0 || index >= static_cast<int>(entries_.size())) {
        return;
    }
    try {
        setPath(std::string(entries_[static_cast<std::size_t>(index)].path));
    } catch (const Error&) {
        refresh(); // it has gone or is not ours to read: the list stays where it was
    }
}

void FolderList::fillEntries(const std::vector<std::string>& subfolders) {
    entries_.clear();
    for (const std::string& folder : drives_.wayTo(path_)) {
        const int depth = static_cast<int>(entries_.size());
        entries_.push_back({nameOf(folder, drives_.separator()), folder, depth, true});
    }
    const int depth = static_cast<int>(entries_.size());
    for (const std::string& name : subfolders) {
        entries_.push_back({name, joined(path_, name, drives_.separator()), depth, false});
    }
    changed(Property::items);
}

} // namespace veldara
