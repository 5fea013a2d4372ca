#include "platform/system_adaptors.h"
#include "platform/text/wide_text.h"
#include "platform/windows/drive_letters.h"
#include "platform/windows/local_clock.h"
#include "platform/windows/machine_registry.h"
#include "platform/windows/scripting_file_system.h"
#include "platform/windows/shell_folders.h"
#include "platform/windows/shell_launcher.h"

#include <windows.h>

namespace veldara {

namespace {

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

std::unique_ptr<SystemPlatform::Adaptors> SystemPlatform::adaptorsOfThisSystem() {
    // A drive without a disk is this program's own message, not a question of the system.
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS);
    auto own = std::make_unique<Adaptors>();
    own->registry = std::make_unique<MachineRegistry>();
    own->fileSystem = std::make_unique<ScriptingFileSystem>();
    own->specialFolders = std::make_unique<ShellFolders>();
    own->drives = std::make_unique<DriveLetters>();
    own->launcher = std::make_unique<ShellLauncher>();
    own->clock = std::make_unique<LocalClock>();
    own->numberStyle = NumberStyle::ofUser();
    own->profileFolder = programFolder();
    own->helpFolder = own->profileFolder;
    own->helpFileName = "omra.chm";
    return own;
}

} // namespace veldara
