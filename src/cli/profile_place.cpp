#include "cli/profile_place.h"

#include "calibration/profile_file.h"
#include "platform/error.h"
#include "platform/preference_keys.h"
#include "platform/system_platform.h"

#include <memory>

namespace veldara {
namespace {

std::string applicationFolder(SystemPlatform& system) {
    RegistryValue value;
    const long code = system.registry().queryValue(RegistryRoot::localMachine, preferencesKey,
                                                   applicationFolderName, value);
    return code == 0 && value.type == RegistryType::string ? value.text : std::string();
}

ProfileFileContent readProfileFile(SystemPlatform& system) {
    const std::string path = profileFilePath(applicationFolder(system), system.profileFolder());
    try {
        const std::unique_ptr<FileSystemObject> files = system.fileSystem().create();
        if (!files->fileExists(path)) {
            return {};
        }
        const std::unique_ptr<TextReader> text = files->openTextFile(path);
        return readProfiles([&]() -> std::optional<std::string> {
            return text->atEndOfStream() ? std::nullopt : std::optional(text->readLine());
        });
    } catch (const Error&) {
        return {}; // as if there were none, like in the desktop program
    }
}

} // namespace

std::vector<EdgeProfile> savedProfiles() {
    SystemPlatform system;
    ProfileFileContent content = readProfileFile(system);
    return content.status >= 1 ? std::move(content.profiles) : builtInProfiles();
}

} // namespace veldara
