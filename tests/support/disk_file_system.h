// File system and drives over the real disk for tests that save real files, with the same failure
// switches as the ones in memory. Runs on every system.
#pragma once

#include "platform/drives.h"
#include "platform/error.h"
#include "platform/file_system.h"
#include "support/file_system_faults.h"
#include "support/memory_file_system.h"
#include "support/temp_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace veldara::test {

class DiskFileSystem : public FileSystem {
  public:
    FileSystemFaults faults;
    std::vector<std::string> spaceAskedOf;

    std::unique_ptr<FileSystemObject> create() override {
        refuse(faults.creationFails, "The file-system object");
        return std::make_unique<Object>(*this);
    }

  private:
    static void refuse(bool fails, const std::string& what) {
        if (fails) {
            throw Error(what + " is out of order.");
        }
    }

    class Writer : public TextWriter {
      public:
        Writer(DiskFileSystem& owner, std::string path) : owner_(owner), path_(std::move(path)) {}
        void writeLine(const std::string& line) override {
            refuse(owner_.faults.writeLineFails, path_);
            text_ += line + "\r\n";
        }
        void close() override {
            refuse(owner_.faults.closeFails, path_);
            std::ofstream file(pathOf(path_), std::ios::binary);
            file << text_;
            refuse(!file.flush(), path_);
        }

      private:
        DiskFileSystem& owner_;
        std::string path_;
        std::string text_;
    };

    class Object : public FileSystemObject {
      public:
        explicit Object(DiskFileSystem& owner) : owner_(owner) {}

        std::vector<std::string> files(const std::string& folder) override {
            std::error_code code;
            std::vector<std::string> names;
            for (const auto& entry : std::filesystem::directory_iterator(pathOf(folder), code)) {
                if (entry.is_regular_file()) {
                    names.push_back(textOf(entry.path().filename()));
                }
            }
            refuse(owner_.faults.listingFails || code, folder);
            std::sort(names.begin(), names.end());
            return names;
        }
        bool fileExists(const std::string& path) override {
            refuse(owner_.faults.fileExistsFails, path);
            std::error_code ignored;
            return std::filesystem::is_regular_file(pathOf(path), ignored);
        }
        bool folderExists(const std::string& path) override {
            refuse(owner_.faults.folderExistsFails, path);
            std::error_code ignored;
            return std::filesystem::is_directory(pathOf(path), ignored);
        }
        void createFolder(const std::string& path) override {
            std::error_code code;
            refuse(owner_.faults.createFolderFails ||
                       !std::filesystem::create_directory(pathOf(path), code),
                   path);
        }
        std::uint64_t freeSpace(const std::string& drive) override {
            owner_.spaceAskedOf.push_back(drive);
            refuse(owner_.faults.freeSpaceFails, drive);
            return owner_.faults.space.value_or(1'000'000'000'000);
        }
        std::unique_ptr<TextReader> openTextFile(const std::string& path) override {
            refuse(owner_.faults.openTextFileFails || !fileExists(path), path);
            std::ifstream file(pathOf(path), std::ios::binary);
            return std::make_unique<MemoryTextReader>(
                std::string(std::istreambuf_iterator<char>(file), {}), owner_.faults.readLineFails);
        }
        std::unique_ptr<TextWriter> createTextFile(const std::string& path) override {
            refuse(owner_.faults.createTextFileFails, path);
            return std::make_unique<Writer>(owner_, path);
        }
        void keepCopy(const std::string& path) override {
            refuse(owner_.faults.keepCopyFails, path);
            std::filesystem::copy_file(pathOf(path), pathOf(path + ".unread"));
        }

      private:
        DiskFileSystem& owner_;
    };
};

// The one drive that a test folder lies on.
class DiskDrives : public Drives {
  public:
    explicit DiskDrives(const std::filesystem::path& folder)
        : root_(textOf(folder.root_path().make_preferred())) {}

    std::vector<std::string> list() override { return {name()}; }
    std::string driveOf(const std::string& path) override {
        return pathOf(path).is_absolute() ? name() : std::string();
    }
    std::string rootOf(const std::string&) override { return root_; }
    std::vector<std::string> subfolders(const std::string& folder) override {
        std::error_code code;
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(pathOf(folder), code)) {
            if (entry.is_directory()) {
                names.push_back(textOf(entry.path().filename()));
            }
        }
        if (code) {
            throw Error("The folder \"" + folder + "\" cannot be read.");
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    std::vector<std::string> foldersDownTo(const std::string& folder) override {
        std::vector<std::string> way;
        for (std::filesystem::path at = pathOf(folder);; at = at.parent_path()) {
            way.push_back(textOf(at));
            if (at == at.parent_path()) {
                break;
            }
        }
        std::reverse(way.begin(), way.end());
        return way;
    }
    char separator() const override {
        return static_cast<char>(std::filesystem::path::preferred_separator);
    }

  private:
    // "c" of "C:\", and "/" elsewhere.
    std::string name() const {
        if (root_.size() < 2) {
            return root_;
        }
        const char drive = root_[0];
        return {drive >= 'A' && drive <= 'Z' ? static_cast<char>(drive - 'A' + 'a') : drive};
    }

    std::string root_;
};

} // namespace veldara::test
