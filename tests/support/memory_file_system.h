// The file-system object over a FolderTree in memory, with failure switches.
#pragma once

#include "platform/error.h"
#include "platform/file_system.h"
#include "support/file_system_faults.h"
#include "support/folder_tree.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veldara::test {

// Reads the lines of a text, ended by line feed with or without carriage return.
class MemoryTextReader : public TextReader {
  public:
    MemoryTextReader(std::string text, bool fails) : text_(std::move(text)), fails_(fails) {}
    bool atEndOfStream() override { return place_ >= text_.size(); }
    std::string readLine() override {
        if (fails_ || atEndOfStream()) {
            throw Error("The line cannot be read.");
        }
        const std::size_t end = text_.find('\n', place_);
        std::string line = text_.substr(place_, end == std::string::npos ? end : end - place_);
        place_ = end == std::string::npos ? text_.size() : end + 1;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        return line;
    }

  private:
    std::string text_;
    std::size_t place_ = 0;
    bool fails_;
};

class MemoryFileSystem : public FileSystem {
  public:
    explicit MemoryFileSystem(FolderTree& tree) : tree_(tree) {}

    FileSystemFaults faults;
    std::uint64_t space = 1'000'000'000'000; // free bytes on every drive
    int objectsMade = 0;
    std::vector<std::string> foldersMade;
    std::vector<std::string> spaceAskedOf; // the drives that freeSpace() was asked about

    std::unique_ptr<FileSystemObject> create() override {
        if (faults.creationFails) {
            throw Error("The file-system object cannot be created.");
        }
        ++objectsMade;
        return std::make_unique<Object>(*this, tree_);
    }
    std::unique_ptr<FileSystemObject> createOrSubstitute() override {
        return faults.substituteWorks ? std::make_unique<Object>(*this, tree_) : create();
    }

  private:
    class Writer : public TextWriter {
      public:
        Writer(MemoryFileSystem& owner, FolderTree& tree, std::string path)
            : owner_(owner), tree_(tree), path_(std::move(path)) {}
        void writeLine(const std::string& line) override {
            refuse(owner_.faults.writeLineFails, "written");
            text_ += line + "\r\n";
        }
        void close() override {
            refuse(owner_.faults.closeFails, "closed");
            tree_.files[tree_.clean(path_)] = text_;
        }

      private:
        MemoryFileSystem& owner_;
        FolderTree& tree_;
        std::string path_;
        std::string text_;
    };

    class Object : public FileSystemObject {
      public:
        Object(MemoryFileSystem& owner, FolderTree& tree) : owner_(owner), tree_(tree) {}

        std::vector<std::string> files(const std::string& folder) override {
            refuse(owner_.faults.listingFails || !tree_.hasFolder(folder) || tree_.locked(folder),
                   "listed");
            return tree_.filesIn(folder);
        }
        bool fileExists(const std::string& path) override {
            refuse(owner_.faults.fileExistsFails, "asked for");
            return tree_.hasFile(path);
        }
        bool folderExists(const std::string& path) override {
            refuse(owner_.faults.folderExistsFails, "asked for");
            return tree_.hasFolder(path);
        }
        void createFolder(const std::string& path) override {
            refuse(owner_.faults.createFolderFails || tree_.hasFolder(path) ||
                       tree_.hasFile(path) || !tree_.hasFolder(tree_.parentOf(path)),
                   "created");
            tree_.addFolder(path);
            owner_.foldersMade.push_back(path);
        }
        std::uint64_t freeSpace(const std::string& drive) override {
            owner_.spaceAskedOf.push_back(drive);
            refuse(owner_.faults.freeSpaceFails, "measured");
            return owner_.faults.space.value_or(owner_.space);
        }
        std::unique_ptr<TextReader> openTextFile(const std::string& path) override {
            refuse(owner_.faults.openTextFileFails || !tree_.hasFile(path) || tree_.locked(path),
                   "opened");
            return std::make_unique<MemoryTextReader>(tree_.files[tree_.clean(path)],
                                                      owner_.faults.readLineFails);
        }
        std::unique_ptr<TextWriter> createTextFile(const std::string& path) override {
            refuse(owner_.faults.createTextFileFails || !tree_.hasFolder(tree_.parentOf(path)) ||
                       tree_.hasFolder(path) || tree_.locked(path),
                   "created");
            return std::make_unique<Writer>(owner_, tree_, path);
        }
        void keepCopy(const std::string& path) override {
            refuse(owner_.faults.keepCopyFails || !fileExists(path), "copied");
            tree_.files[tree_.clean(path) + ".unread"] = tree_.files[tree_.clean(path)];
        }

      private:
        MemoryFileSystem& owner_;
        FolderTree& tree_;
    };

    static void refuse(bool fails, const std::string& verb) {
        if (fails) {
            throw Error("It cannot be " + verb + ".");
        }
    }

    FolderTree& tree_;
};

} // namespace veldara::test
