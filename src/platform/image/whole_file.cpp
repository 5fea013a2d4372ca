// Whole files only: what has the final name was written to its last byte.
#include "platform/error.h"
#include "platform/image/codec.h"
#include "platform/text/path_text.h"

#include <array>
#include <random>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace veldara {

namespace {

[[noreturn]] void failToWrite(const std::filesystem::path& file, const std::string& reason) {
    throw Error("Could not write \"" + pathText(file) + "\": " + reason + ".");
}

// Not to be guessed, so that nobody can lay something under the name beforehand.
std::filesystem::path temporaryNameBeside(const std::filesystem::path& file) {
    constexpr std::string_view digits = "0123456789abcdefghijklmnopqrstuv";
    std::random_device chance;
    std::string name = ".veldara-";
    for (int i = 0; i < 16; ++i) {
        name += digits[chance() % digits.size()];
    }
    return file.parent_path() / (name + ".tmp");
}

#ifdef _WIN32

std::string lastReason() {
    return std::system_category().message(static_cast<int>(GetLastError()));
}

// A new file that is removed again unless it is moved to its final name.
class NewFile {
  public:
    explicit NewFile(const std::filesystem::path& path)
        : path_(path), handle_(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                           FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        close();
        if (created_) {
            DeleteFileW(path_.c_str());
        }
    }

    bool opened() {
        created_ = handle_ != INVALID_HANDLE_VALUE;
        return created_;
    }
    static bool nameTaken() { return GetLastError() == ERROR_FILE_EXISTS; }

    bool write(const std::uint8_t* bytes, std::size_t count) {
        while (count > 0) {
            const DWORD part = static_cast<DWORD>(std::min<std::size_t>(count, 1 << 26));
            DWORD written = 0;
            if (!WriteFile(handle_, bytes, part, &written, nullptr) || written == 0) {
                return false;
            }
            bytes += written;
            count -= written;
        }
        return true;
    }
    bool flush() { return FlushFileBuffers(handle_) != 0; }
    bool close() {
        const bool closed = handle_ == INVALID_HANDLE_VALUE || CloseHandle(handle_) != 0;
        handle_ = INVALID_HANDLE_VALUE;
        return closed;
    }
    bool moveTo(const std::filesystem::path& file) {
        if (MoveFileExW(path_.c_str(), file.c_str(),
                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
            return false;
        }
        created_ = false;
        return true;
    }

  private:
    std::filesystem::path path_;
    HANDLE handle_;
    bool created_ = false;
};

#else

std::string lastReason() {
    return std::generic_category().message(errno);
}

// A new file that is removed again unless it is moved to its final name.
class NewFile {
  public:
    explicit NewFile(const std::filesystem::path& path)
        : path_(path),
          descriptor_(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                             S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH)) {}
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        close();
        if (created_) {
            ::unlink(path_.c_str());
        }
    }

    bool opened() {
        created_ = descriptor_ >= 0;
        return created_;
    }
    static bool nameTaken() { return errno == EEXIST; }

    bool write(const std::uint8_t* bytes, std::size_t count) {
        while (count > 0) {
            const ssize_t written = ::write(descriptor_, bytes, count);
            if (written < 0 && errno == EINTR) {
                continue;
            }
            if (written <= 0) {
                return false;
            }
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
        return true;
    }
    // Some file systems have nothing to bring to a disk, and say so.
    bool flush() {
        return ::fsync(descriptor_) == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
    }
    bool close() {
        const bool closed = descriptor_ < 0 || ::close(descriptor_) == 0;
        descriptor_ = -1;
        return closed;
    }
    // Moving over a file asks nobody whether it may be written, so it is asked here.
    bool moveTo(const std::filesystem::path& file) {
        if (::access(file.c_str(), W_OK) != 0 && errno != ENOENT) {
            return false;
        }
        if (::rename(path_.c_str(), file.c_str()) != 0) {
            return false;
        }
        created_ = false;
        return true;
    }

  private:
    std::filesystem::path path_;
    int descriptor_;
    bool created_ = false;
};

#endif

} // namespace

void writeWholeFile(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
    // A name that is taken is as good as impossible, but costs only another try.
    for (int attempt = 0;; ++attempt) {
        NewFile temporary(temporaryNameBeside(file));
        if (!temporary.opened()) {
            if (temporary.nameTaken() && attempt < 10) {
                continue;
            }
            failToWrite(file, lastReason());
        }
        if (!temporary.write(bytes.data(), bytes.size()) || !temporary.flush() ||
            !temporary.close() || !temporary.moveTo(file)) {
            failToWrite(file, lastReason());
        }
        return;
    }
}

} // namespace veldara
