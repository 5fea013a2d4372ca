// The whole platform as the windows see it: one reference to each adaptor.
#pragma once

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/launcher.h"
#include "platform/print_system.h"
#include "platform/registry.h"
#include "platform/special_folders.h"
#include "platform/text/number_text.h"

#include <string>

namespace veldara {

struct Platform {
    Registry& registry;
    FileSystem& fileSystem;
    SpecialFolders& specialFolders;
    Drives& drives;
    Dialogs& dialogs;
    Launcher& launcher;
    EventPump& eventPump;
    Clock& clock;
    PrintSystem& printing;
    NumberStyle numberStyle;
    // Where files that belong to the program are looked for when the preferences name no folder:
    // the running program's folder on Windows; elsewhere the user's data folder for the profile
    // file and the installed help folder for the help.
    std::string profileFolder;
    std::string helpFolder;
    std::string helpFileName; // "omra.chm" on Windows, "index.html" where a browser shows the help
};

} // namespace veldara
