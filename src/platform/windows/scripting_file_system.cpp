#include "platform/windows/scripting_file_system.h"

#include "platform/error.h"
#include "platform/text/wide_text.h"
#include "platform/windows/late_bound_object.h"
#include "platform/windows/native_file_system.h"

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
bool fits(const std::string& path) {
    constexpr std::size_t longest = MAX_PATH - 8;
    return wideText(path).size() <= longest;
}

class ScriptingFileSystemObject : public FileSystemObject {
  public:
    explicit ScriptingFileSystemObject(const std::string& component)
        : object_(LateBoundObject::create(component)) {}

    std::vector<std::string> files(const std::string& folder) override {
        if (!fits(folder)) {
            return native_.files(folder);
        }
        return attempt("The folder \"" + folder + "\" cannot be read", [&] {
            const LateBoundObject found(object_.call("GetFolder", {folder}));
            const LateBoundObject collection(found.get("Files"));
            std::vector<std::string> names;
            for (const Variant& file : collection.members()) {
                names.push_back(LateBoundObject(file).get("Name").text());
            }
            return names;
        });
    }

    bool fileExists(const std::string& path) override {
        if (!fits(path)) {
            return native_.fileExists(path);
        }
        return attempt("The file \"" + path + "\" cannot be looked for",
                       [&] { return object_.call("FileExists", {path}).truth(); });
    }

    bool folderExists(const std::string& path) override {
        if (!fits(path)) {
            return native_.folderExists(path);
        }
        return attempt("The folder \"" + path + "\" cannot be looked for",
                       [&] { return object_.call("FolderExists", {path}).truth(); });
    }

    void createFolder(const std::string& path) override {
        if (!fits(path)) {
            native_.createFolder(path);
            return;
        }
        attempt("The folder \"" + path + "\" cannot be created",
                [&] { object_.call("CreateFolder", {path}); });
    }

    std::uint64_t freeSpace(const std::string& drive) override {
        return attempt("The free space of the drive \"" + drive + "\" cannot be told", [&] {
            const LateBoundObject found(object_.call("GetDrive", {drive}));
            const double bytes = found.get("FreeSpace").number();
            return bytes > 0 ? static_cast<std::uint64_t>(bytes) : std::uint64_t{0};
        });
    }

    std::unique_ptr<TextReader> openTextFile(const std::string& path) override {
        return native_.openTextFile(path);
    }

    std::unique_ptr<TextWriter> createTextFile(const std::string& path) override {
        return native_.createTextFile(path);
    }

    void keepCopy(const std::string& path) override { native_.keepCopy(path); }

  private:
    ComponentModel model_; // first in, last out
    LateBoundObject object_;
    NativeFileSystemObject native_;
};

} // namespace

ScriptingFileSystem::ScriptingFileSystem(std::string component)
    : component_(std::move(component)) {}

std::unique_ptr<FileSystemObject> ScriptingFileSystem::create() {
    return std::make_unique<ScriptingFileSystemObject>(component_);
}

std::unique_ptr<FileSystemObject> ScriptingFileSystem::createOrSubstitute() {
    try {
        return create();
    } catch (const Error&) {
        return std::make_unique<NativeFileSystemObject>();
    }
}

} // namespace veldara
