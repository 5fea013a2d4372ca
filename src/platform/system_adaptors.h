// What a SystemPlatform consists of. Each system fills it in with its own adaptors
// (src/platform/linux, src/platform/windows); nobody else looks in here.
#pragma once

#include "platform/system_platform.h"

namespace veldara {

struct SystemPlatform::Adaptors {
    std::unique_ptr<Registry> registry;
    std::unique_ptr<FileSystem> fileSystem;
    std::unique_ptr<SpecialFolders> specialFolders;
    std::unique_ptr<Drives> drives;
    std::unique_ptr<Launcher> launcher;
    std::unique_ptr<Clock> clock;
    NumberStyle numberStyle;
    std::string profileFolder;
    std::string helpFolder;
    std::string helpFileName;
};

} // namespace veldara
