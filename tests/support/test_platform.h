// A whole platform of fakes, in either system's path style, and the screen that goes with it.
#pragma once

#include "platform/platform.h"
#include "support/fake_drives.h"
#include "support/fake_print_system.h"
#include "support/folder_tree.h"
#include "support/memory_file_system.h"
#include "support/memory_registry.h"
#include "support/scripted_dialogs.h"
#include "support/scripted_screen.h"
#include "support/small_fakes.h"
#include "support/test_clock.h"

#include <string>

namespace veldara::test {

struct TestPlatform {
    // '\\': drive "c" with paths such as c:\photos; '/': drive "/" with paths such as /photos.
    explicit TestPlatform(char separator = '/')
        : tree{separator, {}, {}, {}}, fileSystem(tree), drives(tree) {
        const bool letters = separator == '\\';
        profileFolder = letters ? "c:\\program" : "/data/veldara";
        helpFolder = letters ? "c:\\program" : "/share/veldara/help";
        helpFileName = letters ? "omra.chm" : "index.html";
        tree.addFolder(profileFolder);
        tree.addFolder(helpFolder);
        specialFolders.paths[0] = letters ? "c:\\users\\desktop" : "/home/desktop";
        specialFolders.paths[5] = letters ? "c:\\users\\documents" : "/home/documents";
        for (const auto& [identifier, folder] : specialFolders.paths) {
            tree.addFolder(folder);
        }
    }

    FolderTree tree;
    MemoryRegistry registry;
    MemoryFileSystem fileSystem;
    FakeDrives drives;
    FakeSpecialFolders specialFolders;
    ScriptedDialogs dialogs;
    FakeLauncher launcher;
    ImmediateEventPump eventPump;
    TestClock clock;
    FakePrintSystem printing;
    ScriptedScreen screen;

    NumberStyle numberStyle;
    std::string profileFolder;
    std::string helpFolder;
    std::string helpFileName;

    // The bundle as it is now: set the members above before taking it.
    Platform platform() { return withDisk(fileSystem, drives); }

    // The same over other folders, for tests that save real files (support/disk_file_system.h).
    Platform withDisk(FileSystem& files, Drives& volumes) {
        return {registry,      files,      specialFolders, volumes,  dialogs,
                launcher,      eventPump,  clock,          printing, numberStyle,
                profileFolder, helpFolder, helpFileName};
    }
};

} // namespace veldara::test
