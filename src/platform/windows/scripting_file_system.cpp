#include "platform/windows/scripting_file_system.h"

#include "platform/error.h"
#include "platform/windows/late_bound_object.h"
#include "platform/windows/text_files.h"
#include "platform/windows/wide_text.h"

#include <cstddef>
#include <utility>

#include <windows.h>

namespace veldara {

namespace {

// Runs an operation; a failure becomes one sentence that says what failed.
template <typename Operation>
auto attempt(const std::string& failure, Operation operation) {
    try {
        return operation();
    } catch (const Error& error) {
        throw Error(failure + ": " + error.what() + ".");
    }
}

// The component keeps paths in room for MAX_PATH characters, with "\*" behind a folder that it
// lists. One that is longer ends well in some of its versions and with a crash in others.
const std::string& fitting(const std::string& path) {
    constexpr std::size_t longest = MAX_PATH - 8;
    if (wideText(path).size() > longest) {
        throw Error("The path is too long");
    }
    return path;
}

class ScriptingFileSystemObject : public FileSystemObject {
  public:
    explicit ScriptingFileSystemObject(const std::string& component)
        : object_(LateBoundObject::create(component)) {}

    std::vector<std::string> files(const std::string& folder) override {
        return attempt("The folder \"" + folder + "\" cannot be read", [&] {
            const LateBoundObject found(object_.call("GetFolder", {fitting(folder)}));
            const LateBoundObject collection(found.get("Files"));
            std::vector<std::string> names;
            for (const Variant& file : collection.members()) {
                names.push_back(LateBoundObject(file).get("Name").text());
            }
            return names;
        });
    }

    bool fileExists(const std::string& path) override {
        return attempt("The file \"" + path + "\" cannot be looked for",
                       [&] { return object_.call("FileExists", {fitting(path)}).truth(); });
    }

    bool folderExists(const std::string& path) override {
        return attempt("The folder \"" + path + "\" cannot be looked for",
                       [&] { return object_.call("FolderExists", {fitting(path)}).truth(); });
    }

    void createFolder(const std::string& path) override {
        attempt("The folder \"" + path + "\" cannot be created",
                [&] { object_.call("CreateFolder", {fitting(path)}); });
    }

    std::uint64_t freeSpace(const std::string& drive) override {
        return attempt("The free space of the drive \"" + drive + "\" cannot be told", [&] {
            const LateBoundObject found(object_.call("GetDrive", {drive}));
            const double bytes = found.get("FreeSpace").number();
            return bytes > 0 ? static_cast<std::uint64_t>(bytes) : std::uint64_t{0};
        });
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
