#include "platform/linux/mounted_drives.h"

#include "platform/error.h"
#include "platform/files/descriptor.h"
#include "platform/text/natural_order.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

namespace veldara {

namespace {

namespace fs = std::filesystem;

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

std::string_view takeField(std::string_view& line) {
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return field;
}

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

// The table writes blanks, tabs, line feeds and backslashes as \ooo.
std::string unescaped(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1]) &&
            isOctal(field[i + 2]) && isOctal(field[i + 3])) {
            const int code =
                (field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + (field[i + 3] - '0');
            text += static_cast<char>(code);
            i += 3;
        } else {
            text += field[i];
        }
    }
    return text;
}

// A volume comes from a device or over the network; the rest is made up by the kernel.
bool isReal(std::string_view source, std::string_view type) {
    constexpr std::array<std::string_view, 11> network = {
        "nfs",         "nfs4", "cifs",     "smb3",   "smbfs",           "fuse.sshfs",
        "fuse.rclone", "9p",   "virtiofs", "vboxsf", "fuse.vmhgfs-fuse"};
    return startsWith(source, "/dev/") ||
           std::find(network.begin(), network.end(), type) != network.end();
}

bool isForTheUser(std::string_view folder) {
    return startsWith(folder, "/media/") || startsWith(folder, "/run/media/") ||
           startsWith(folder, "/mnt/") || folder == "/mnt";
}

bool liesOn(std::string_view path, std::string_view drive) {
    if (drive == "/") {
        return startsWith(path, "/");
    }
    return startsWith(path, drive) && (path.size() == drive.size() || path[drive.size()] == '/');
}

// Without "." and "..", and without a separator at the end.
std::string cleaned(const std::string& path) {
    std::string clean = fs::path(path).lexically_normal().string();
    while (clean.size() > 1 && clean.back() == '/') {
        clean.pop_back();
    }
    return clean;
}

} // namespace

std::vector<std::string> userVolumes(std::string_view mountTable) {
    std::vector<std::string> folders;
    while (!mountTable.empty()) {
        const std::size_t end = std::min(mountTable.find('\n'), mountTable.size());
        std::string_view line = mountTable.substr(0, end);
        mountTable.remove_prefix(std::min(end + 1, mountTable.size()));
        const std::string_view source = takeField(line);
        const std::string folder = unescaped(takeField(line));
        if (isReal(source, takeField(line)) && isForTheUser(folder)) {
            folders.push_back(folder);
        }
    }
    std::sort(folders.begin(), folders.end(), naturalLess);
    folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
    return folders;
}

MountedDrives::MountedDrives(std::string mountTableFile)
    : mountTableFile_(std::move(mountTableFile)) {}

std::vector<std::string> MountedDrives::list() {
    constexpr std::size_t largestTable = std::size_t{4} << 20U;
    std::vector<std::string> drives = {"/"};
    std::string table;
    const Descriptor file = openRegularFile(mountTableFile_);
    if (file && readWhole(file, largestTable, table) == 0) {
        const std::vector<std::string> volumes = userVolumes(table);
        drives.insert(drives.end(), volumes.begin(), volumes.end());
    }
    return drives;
}

std::string MountedDrives::driveOf(const std::string& path) {
    const std::string folder = cleaned(path);
    std::string longest;
    for (const std::string& drive : list()) {
        if (liesOn(folder, drive) && drive.size() > longest.size()) {
            longest = drive;
        }
    }
    return longest;
}

std::string MountedDrives::rootOf(const std::string& drive) {
    return drive; // a drive is named by its folder
}

std::vector<std::string> MountedDrives::subfolders(const std::string& folder) {
    std::error_code code;
    std::vector<std::string> names;
    fs::directory_iterator entry(folder, code);
    while (!code && entry != fs::directory_iterator()) {
        std::error_code broken; // a link that leads nowhere, or in a circle, is no folder
        const std::string name = entry->path().filename().string();
        if (name.front() != '.' && entry->is_directory(broken)) {
            names.push_back(name);
        }
        entry.increment(code);
    }
    if (code) {
        throw Error("The folder \"" + folder + "\" cannot be read: " + code.message() + ".");
    }
    std::sort(names.begin(), names.end(), naturalLess);
    return names;
}

std::vector<std::string> MountedDrives::foldersDownTo(const std::string& folder) {
    const std::string end = cleaned(folder);
    const std::string drive = driveOf(end);
    if (drive.empty()) {
        return {end};
    }
    std::vector<std::string> way = {drive};
    std::size_t place = drive == "/" ? 1 : drive.size() + 1;
    while (place < end.size()) {
        place = std::min(end.find('/', place), end.size());
        way.push_back(end.substr(0, place));
        ++place;
    }
    return way;
}

} // namespace veldara
