#include "platform/linux/disk_file_system.h"

#include "platform/error.h"
#include "platform/files/file_error.h"
#include "platform/linux/text_files.h"
#include "platform/text/natural_order.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <sys/statvfs.h>

namespace veldara {

namespace {

namespace fs = std::filesystem;

class DiskObject : public FileSystemObject {
  public:
    explicit DiskObject(std::string ownFolder) : ownFolder_(std::move(ownFolder)) {}

    // A folder has no order of its own here, so the one a person expects is the system's.
    std::vector<std::string> files(const std::string& folder) override {
        std::error_code code;
        std::vector<std::string> names;
        fs::directory_iterator entry(folder, code);
        while (!code && entry != fs::directory_iterator()) {
            std::error_code broken; // a link into nothing, or one that went meanwhile, is no file
            if (entry->is_regular_file(broken)) {
                names.push_back(entry->path().filename().string());
            }
            entry.increment(code);
        }
        if (code) {
            throw Error("The folder \"" + folder + "\" cannot be read: " + code.message() + ".");
        }
        std::sort(names.begin(), names.end(), naturalLess);
        return names;
    }

    bool fileExists(const std::string& path) override {
        std::error_code code;
        const fs::file_status status = fs::status(path, code);
        return fs::exists(status) && !fs::is_directory(status);
    }

    bool folderExists(const std::string& path) override {
        std::error_code code;
        return fs::is_directory(path, code);
    }

    void createFolder(const std::string& path) override {
        if (::mkdir(path.c_str(), 0777) != 0) {
            throw Error("The folder \"" + path + "\" cannot be created: " + reasonOf(errno) + ".");
        }
    }

    std::uint64_t freeSpace(const std::string& drive) override {
        struct statvfs space = {};
        if (::statvfs(drive.c_str(), &space) != 0) {
            throw Error("The free space of \"" + drive + "\" is not known: " + reasonOf(errno) +
                        ".");
        }
        return std::uint64_t{space.f_bavail} * space.f_frsize;
    }

    std::unique_ptr<TextReader> openTextFile(const std::string& path) override {
        return std::make_unique<LineReader>(path);
    }

    std::unique_ptr<TextWriter> createTextFile(const std::string& path) override {
        if (fs::path(path).lexically_normal().parent_path() ==
            fs::path(ownFolder_).lexically_normal()) {
            std::error_code ignored; // creating the file then says what is wrong
            fs::create_directories(ownFolder_, ignored);
        }
        return std::make_unique<LineWriter>(path);
    }

    void keepCopy(const std::string& path) override {
        constexpr int mostCopies = 100;
        std::error_code code = std::make_error_code(std::errc::file_exists);
        for (int i = 1; i <= mostCopies && code == std::errc::file_exists; ++i) {
            fs::copy_file(path, path + ".unread" + (i == 1 ? "" : std::to_string(i)), code);
        }
        if (code) {
            throw Error("The file \"" + path + "\" cannot be copied: " + code.message() + ".");
        }
    }

  private:
    std::string ownFolder_;
};

} // namespace

DiskFileSystem::DiskFileSystem(std::string ownFolder) : ownFolder_(std::move(ownFolder)) {}

std::unique_ptr<FileSystemObject> DiskFileSystem::create() {
    return std::make_unique<DiskObject>(ownFolder_);
}

} // namespace veldara
