#include "platform/system_platform.h"

#include "platform/linux/desktop_launcher.h"
#include "platform/linux/disk_file_system.h"
#include "platform/linux/mounted_drives.h"
#include "platform/linux/system_clock.h"
#include "platform/linux/user_folders.h"
#include "platform/linux/value_file_registry.h"

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

struct SystemPlatform::Adaptors {
    std::string profileFolder = dataFolder(processEnvironment) + "/veldara";
    std::string helpFolder = findHelpFolder();
    NumberStyle numberStyle = NumberStyle::ofUser();
    ValueFileRegistry registry{configFolder(processEnvironment) + "/veldara"};
    DiskFileSystem fileSystem{profileFolder};
    UserFolders specialFolders{processEnvironment};
    MountedDrives drives;
    DesktopLauncher launcher{processEnvironment};
    SystemClock clock;
};

SystemPlatform::SystemPlatform() : adaptors_(std::make_unique<Adaptors>()) {}
SystemPlatform::~SystemPlatform() = default;

Registry& SystemPlatform::registry() {
    return adaptors_->registry;
}
FileSystem& SystemPlatform::fileSystem() {
    return adaptors_->fileSystem;
}
SpecialFolders& SystemPlatform::specialFolders() {
    return adaptors_->specialFolders;
}
Drives& SystemPlatform::drives() {
    return adaptors_->drives;
}
Launcher& SystemPlatform::launcher() {
    return adaptors_->launcher;
}
Clock& SystemPlatform::clock() {
    return adaptors_->clock;
}
NumberStyle SystemPlatform::numberStyle() const {
    return adaptors_->numberStyle;
}
std::string SystemPlatform::profileFolder() const {
    return adaptors_->profileFolder;
}
std::string SystemPlatform::helpFolder() const {
    return adaptors_->helpFolder;
}
std::string SystemPlatform::helpFileName() const {
    return helpFile;
}

Platform SystemPlatform::with(Dialogs& dialogs, EventPump& eventPump) {
    return {registry(),    fileSystem(),    specialFolders(), drives(),
            dialogs,       launcher(),      eventPump,        clock(),
            numberStyle(), profileFolder(), helpFolder(),     helpFileName()};
}

} // namespace veldara
