#include "platform/windows/scripting_file_system.h"

#include "platform/error.h"
#include "platform/windows/late_bound_object.h"
#include "platform/windows/text_files.h"

#include <utility>

namespace veldara {

namespace {

class ScriptingFileSystemObject : public FileSystemObject {
  public:
    explicit ScriptingFileSystemObject(const std::string& component)
        : object_(LateBoundObject::create(component)) {}

    std::vector<std::string> files(const std::string& folder) override {
        const LateBoundObject found(object_.call("GetFolder", {folder}));
        const LateBoundObject collection(found.get("Files"));
        std::vector<std::string> names;
        for (const Variant& file : collection.members()) {
            names.push_back(LateBoundObject(file).get("Name").text());
        }
        return names;
    }

    bool fileExists(const std::string& path) override {
        return object_.call("FileExists", {path}).truth();
    }

    bool folderExists(const std::string& path) override {
        return object_.call("FolderExists", {path}).truth();
    }

    void createFolder(const std::string& path) override { object_.call("CreateFolder", {path}); }

    std::uint64_t freeSpace(const std::string& drive) override {
        const LateBoundObject found(object_.call("GetDrive", {drive}));
        const double bytes = found.get("FreeSpace").number();
        return bytes > 0 ? static_cast<std::uint64_t>(bytes) : 0;
    }

    std::unique_ptr<TextReader> openTextFile(const std::string& path) override {
        return openTextFileToRead(path);
    }

    std::unique_ptr<TextWriter> createTextFile(const std::string& path) override {
        return createTextFileToWrite(path);
    }

  private:
    ComponentModel model_; // first in, last out
    LateBoundObject object_;
};

} // namespace

ScriptingFileSystem::ScriptingFileSystem(std::string component)
    : component_(std::move(component)) {}

std::unique_ptr<FileSystemObject> ScriptingFileSystem::create() {
    return std::make_unique<ScriptingFileSystemObject>(component_);
}

} // namespace veldara
