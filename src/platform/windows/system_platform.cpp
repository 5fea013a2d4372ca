#include "platform/system_platform.h"

#include "platform/windows/drive_letters.h"
#include "platform/windows/local_clock.h"
#include "platform/windows/machine_registry.h"
#include "platform/windows/scripting_file_system.h"
#include "platform/windows/shell_folders.h"
#include "platform/windows/shell_launcher.h"
#include "platform/windows/wide_text.h"

#include <windows.h>

namespace veldara {

namespace {

constexpr const char* helpFile = "omra.chm";

// Without a separator at the end.
std::string programFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2); // it was cut
    }
    const std::size_t end = path.find_last_of(L'\\');
    return narrowText(end == std::wstring::npos ? path : path.substr(0, end));
}

} // namespace

struct SystemPlatform::Adaptors {
    std::string folder = programFolder();
    NumberStyle numberStyle = NumberStyle::ofUser();
    MachineRegistry registry;
    ScriptingFileSystem fileSystem;
    ShellFolders specialFolders;
    DriveLetters drives;
    ShellLauncher launcher;
    LocalClock clock;
};

SystemPlatform::SystemPlatform() : adaptors_(std::make_unique<Adaptors>()) {
    // A drive without a disk is this program's own message, not a question of the system.
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS);
}
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
    return adaptors_->folder;
}
std::string SystemPlatform::helpFolder() const {
    return adaptors_->folder;
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
