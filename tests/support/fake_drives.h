// Drives over a FolderTree in memory: letters where its separator is '\', else "/" and volumes.
#pragma once

#include "platform/drives.h"
#include "platform/error.h"
#include "support/folder_tree.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace veldara::test {

class FakeDrives final : public Drives {
  public:
    // Has the one drive "c" or "/", with its root folder.
    explicit FakeDrives(FolderTree& tree) : tree_(tree) { plug(letters() ? "c" : "/"); }

    std::vector<std::string> names; // what list() gives

    // A new drive, with its root folder.
    void plug(const std::string& drive) {
        names.push_back(drive);
        tree_.addFolder(rootOf(drive));
    }
    // The drive stays in the list, and what is on it cannot be read.
    void takeMediumOut(const std::string& drive) {
        tree_.unreadable.insert(tree_.clean(rootOf(drive)));
    }
    void unplug(const std::string& drive) {
        std::erase(names, drive);
        tree_.remove(rootOf(drive));
    }

    std::vector<std::string> list() override { return names; }

    std::string driveOf(const std::string& path) override {
        std::string best;
        for (const std::string& drive : names) {
            const std::string root = rootOf(drive);
            const bool on = path == root || lower(path).rfind(tree_.withSeparator(root), 0) == 0;
            if (on && drive.size() > best.size()) {
                best = drive;
            }
        }
        return best;
    }

    std::string rootOf(const std::string& drive) override {
        return letters() ? drive + ":\\" : drive;
    }

    std::vector<std::string> subfolders(const std::string& folder) override {
        if (!tree_.hasFolder(folder) || tree_.locked(folder)) {
            throw Error("The folder \"" + folder + "\" cannot be read.");
        }
        return tree_.foldersIn(folder);
    }

    std::vector<std::string> foldersDownTo(const std::string& folder) override {
        std::vector<std::string> way;
        const std::string root = rootOf(driveOf(folder));
        for (std::string at = tree_.clean(folder); !at.empty(); at = tree_.parentOf(at)) {
            way.push_back(at);
            if (at == root) {
                break;
            }
        }
        std::reverse(way.begin(), way.end());
        return way;
    }

    bool isOnFixedDrive(const std::string& folder) override {
        return onNetwork.empty() || folder.rfind(onNetwork, 0) != 0;
    }
    bool answersSoon(const std::string& folder) override { return isOnFixedDrive(folder); }

    std::string onNetwork; // folders that begin so are on another machine, which does not answer

    char separator() const override { return tree_.separator; }

  private:
    bool letters() const { return tree_.separator == '\\'; }
    std::string lower(std::string path) const {
        if (letters() && !path.empty() && path[0] >= 'A' && path[0] <= 'Z') {
            path[0] = static_cast<char>(path[0] - 'A' + 'a');
        }
        return path;
    }

    FolderTree& tree_;
};

} // namespace veldara::test
