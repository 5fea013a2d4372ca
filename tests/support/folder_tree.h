// Folders and files in memory, in either system's path style, seen by the fake file system and by
// the fake drives alike.
#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace veldara::test {

struct FolderTree {
    char separator = '/';
    std::set<std::string> folders;            // full paths without a separator at the end
    std::map<std::string, std::string> files; // full path -> content
    std::set<std::string> unreadable;         // folders and files that cannot be opened

    // With all the folders above it.
    void addFolder(const std::string& path) {
        for (std::string folder = clean(path); folders.insert(folder).second;) {
            const std::string above = parentOf(folder);
            if (above.empty()) {
                break;
            }
            folder = above;
        }
    }
    void addFile(const std::string& path, const std::string& content = {}) {
        addFolder(parentOf(path));
        files[clean(path)] = content;
    }
    void remove(const std::string& path) {
        const std::string gone = clean(path);
        const auto below = [&](const std::string& other) {
            return other == gone || other.rfind(withSeparator(gone), 0) == 0;
        };
        std::erase_if(folders, below);
        std::erase_if(files, [&](const auto& file) { return below(file.first); });
    }

    bool hasFolder(const std::string& path) const { return folders.count(clean(path)) != 0; }
    bool hasFile(const std::string& path) const { return files.count(clean(path)) != 0; }
    bool locked(const std::string& path) const { return unreadable.count(clean(path)) != 0; }

    std::vector<std::string> filesIn(const std::string& folder) const {
        std::vector<std::string> names;
        for (const auto& [path, content] : files) {
            if (parentOf(path) == clean(folder)) {
                names.push_back(nameOf(path));
            }
        }
        return names;
    }
    std::vector<std::string> foldersIn(const std::string& folder) const {
        std::vector<std::string> names;
        for (const std::string& path : folders) {
            if (path != clean(folder) && parentOf(path) == clean(folder)) {
                names.push_back(nameOf(path));
            }
        }
        return names;
    }

    // "/" and "c:\" are roots: they keep their separator and have no parent.
    bool isRoot(const std::string& path) const {
        return path == std::string(1, separator) ||
               (path.size() == 3 && path[1] == ':' && path[2] == separator);
    }
    std::string clean(std::string path) const {
        if (path.size() == 2 && path[1] == ':') {
            path += separator;
        }
        while (!isRoot(path) && path.size() > 1 && path.back() == separator) {
            path.pop_back();
        }
        return path;
    }
    std::string parentOf(const std::string& path) const {
        const std::string child = clean(path);
        if (isRoot(child)) {
            return {};
        }
        const std::size_t last = child.rfind(separator);
        if (last == std::string::npos) {
            return {};
        }
        const std::string root = child.substr(0, last + 1);
        return isRoot(root) ? root : child.substr(0, last);
    }
    std::string nameOf(const std::string& path) const {
        const std::string child = clean(path);
        return isRoot(child) ? child : child.substr(child.rfind(separator) + 1);
    }
    std::string withSeparator(const std::string& path) const {
        return !path.empty() && path.back() == separator ? path : path + separator;
    }
};

} // namespace veldara::test
