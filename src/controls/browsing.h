// The drive list and the folder list of a file browser.
#pragma once

#include "controls/control.h"
#include "platform/drives.h"

#include <string>
#include <utility>
#include <vector>

namespace veldara {

class DriveList : public Control {
  public:
    Handler onChange;

    DriveList(std::string name, Drives& drives) : Control(std::move(name)), drives_(drives) {
        refresh();
    }

    const std::vector<std::string>& items() const { return items_; }
    const std::string& drive() const { return drive_; } // empty: none chosen yet

    // Throws Error when there is no such drive. Raises onChange for a new one.
    void setDrive(const std::string& drive);

    // Reads the list of drives again; the chosen one stays.
    void refresh();

    void userSelect(int index);

  private:
    Drives& drives_;
    std::vector<std::string> items_;
    std::string drive_;
};

// Shows the folders from the drive's root down to the current one and, below it, its subfolders.
class FolderList : public Control {
  public:
    Handler onChange;

    struct Entry {
        std::string name;
        std::string path;
        int depth = 0;       // levels below the drive's root, for indenting
        bool isOpen = false; // the current folder or one above it
        bool operator==(const Entry&) const = default;
    };

    FolderList(std::string name, Drives& drives) : Control(std::move(name)), drives_(drives) {}

    const std::string& path() const { return path_; } // empty: none chosen yet
    const std::vector<Entry>& entries() const { return entries_; }
    int currentEntry() const; // the current folder's index in entries(), -1: none

    // Throws Error, and changes nothing, when the folder cannot be read. Raises onChange for a new
    // folder.
    void setPath(const std::string& path);

    // Reads the current folder's subfolders again (an unreadable one shows none).
    void refresh();

    // Opening an entry, as a double click does. A folder that cannot be read is entered and shows
    // nothing; one that has gone is not entered.
    void userOpen(int index);

  private:
    void enter(const std::string& path, const std::vector<std::string>& subfolders);
    std::vector<Entry> entriesOf(const std::string& path,
                                 const std::vector<std::string>& subfolders) const;

    Drives& drives_;
    std::string path_;
    std::vector<Entry> entries_;
};

} // namespace veldara
