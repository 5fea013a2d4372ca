#include "cli/profile_place.h"

#include "calibration/profile_file.h"
#include "platform/preference_keys.h"
#include "platform/system_platform.h"

namespace veldara {
namespace {

std::string applicationFolder(SystemPlatform& system) {
    RegistryValue value;
    const long code = system.registry().queryValue(RegistryRoot::localMachine, preferencesKey,
                                                   applicationFolderName, value);
    const bool usable = code == 0 && value.type == RegistryType::string &&
                        system.drives().isOnFixedDrive(value.text);
    return usable ? value.text : std::string();
}

} // namespace

std::vector<EdgeProfile> savedProfiles() {
    SystemPlatform system;
    return loadProfiles(system.fileSystem(),
                        profileFilePath(applicationFolder(system), system.profileFolder()));
}

} // namespace veldara
