#include "platform/linux/desktop_launcher.h"
#include "platform/linux/disk_file_system.h"
#include "platform/linux/mounted_drives.h"
#include "platform/linux/system_clock.h"
#include "platform/linux/user_folders.h"
#include "platform/linux/value_file_registry.h"
#include "platform/system_adaptors.h"

#include <array>
#include <filesystem>
#include <system_error>

namespace veldara {

namespace {

namespace fs = std::filesystem;

constexpr const char* helpFile = "index.html";

// The help lies beside the installed program, or in the tree that the program was built in.
std::string findHelpFolder() {
    std::error_code code;
    const fs::path program = fs::read_symlink("/proc/self/exe", code);
    const fs::path folder = code ? fs::path("/usr/bin") : program.parent_path();
    const fs::path installed = (folder / "../share/veldara/help").lexically_normal();
    const std::array<fs::path, 4> candidates = {installed, folder / "help", folder / "../help",
                                                folder / "../../help"};
    for (const fs::path& candidate : candidates) {
        if (fs::is_regular_file(candidate / helpFile, code)) {
            return candidate.lexically_normal().string();
        }
    }
    return installed.string();
}

} // namespace

std::unique_ptr<SystemPlatform::Adaptors> SystemPlatform::adaptorsOfThisSystem() {
    auto own = std::make_unique<Adaptors>();
    own->registry =
        std::make_unique<ValueFileRegistry>(configFolder(processEnvironment) + "/veldara");
    own->profileFolder = dataFolder(processEnvironment) + "/veldara";
    own->fileSystem = std::make_unique<DiskFileSystem>(own->profileFolder);
    own->specialFolders = std::make_unique<UserFolders>(processEnvironment);
    own->drives = std::make_unique<MountedDrives>();
    own->launcher = std::make_unique<DesktopLauncher>(processEnvironment);
    own->clock = std::make_unique<SystemClock>();
    own->numberStyle = NumberStyle::ofUser();
    own->helpFolder = findHelpFolder();
    own->helpFileName = helpFile;
    return own;
}

} // namespace veldara
