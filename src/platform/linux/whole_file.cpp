#include "platform/linux/whole_file.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldara {

namespace {

std::string behindLinks(const std::string& path) {
    std::error_code code;
    if (std::filesystem::is_symlink(path, code)) {
        const std::filesystem::path target = std::filesystem::weakly_canonical(path, code);
        if (!code) {
            return target.string();
        }
    }
    return path;
}

std::string folderOf(const std::string& path) {
    const std::size_t last = path.rfind('/');
    if (last == std::string::npos) {
        return "./";
    }
    return path.substr(0, last + 1);
}

// Sixteen hexadecimal digits from the system's random source.
int randomWord(std::string& word) {
    std::array<std::uint8_t, 8> bytes = {};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        return errno;
    }
    word.clear();
    for (const std::uint8_t byte : bytes) {
        constexpr std::string_view digits = "0123456789abcdef";
        word += digits[byte >> 4U];
        word += digits[byte & 15U];
    }
    return 0;
}

// Some file systems have nothing to bring to a disk and say so.
int synchronise(int descriptor) {
    if (::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS) {
        return 0;
    }
    return errno;
}

} // namespace

WholeFile::WholeFile(const std::string& path) : path_(behindLinks(path)) {}

WholeFile::~WholeFile() {
    discard();
}

int WholeFile::open(unsigned modeOfNew) {
    struct stat old = {};
    const bool exists = ::stat(path_.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) {
        return EISDIR;
    }
    // Renaming asks nobody whether the old file may be written, so it is asked here.
    if (exists && ::access(path_.c_str(), W_OK) != 0) {
        return errno;
    }
    constexpr int attempts = 16;
    for (int i = 0; i < attempts; ++i) {
        std::string word;
        if (const int code = randomWord(word); code != 0) {
            return code;
        }
        const std::string name = folderOf(path_) + ".veldara-" + word;
        file_ = Descriptor(
            ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, modeOfNew));
        if (file_) {
            temporary_ = name;
            if (exists && ::fchmod(file_.number(), old.st_mode & 0777U) != 0) {
                return errno;
            }
            return 0;
        }
        if (errno != EEXIST) {
            return errno;
        }
    }
    return EEXIST;
}

int WholeFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file_.number(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }
    return 0;
}

int WholeFile::finish() {
    if (const int code = synchronise(file_.number()); code != 0) {
        return code;
    }
    file_.close();
    if (::rename(temporary_.c_str(), path_.c_str()) != 0) {
        return errno;
    }
    temporary_.clear();
    // The new name is in the folder; that the folder has reached the disk is a courtesy that some
    // file systems refuse, and the file is whole either way.
    const Descriptor folder(::open(folderOf(path_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) {
        ::fsync(folder.number());
    }
    return 0;
}

void WholeFile::discard() {
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
        temporary_.clear();
    }
}

} // namespace veldara
