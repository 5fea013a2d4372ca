// The real platform of the running process: owns this system's adaptors. One class for every
// system; src/platform/linux and src/platform/windows each say what it is made of, and a program
// links the one of the system that it is built for.
#pragma once

#include "platform/platform.h"

#include <memory>
#include <string>

namespace veldara {

class SystemPlatform {
  public:
    // Reads the environment once: where this user's files are, where the program itself lies, the
    // decimal separator. Touches no stored value and creates no file or folder.
    SystemPlatform();
    ~SystemPlatform();
    SystemPlatform(const SystemPlatform&) = delete;
    SystemPlatform& operator=(const SystemPlatform&) = delete;

    Registry& registry();
    FileSystem& fileSystem();
    SpecialFolders& specialFolders();
    Drives& drives();
    Launcher& launcher();
    Clock& clock();

    NumberStyle numberStyle() const;
    std::string profileFolder() const; // see Platform; need not exist before the first write
    std::string helpFolder() const;
    std::string helpFileName() const;

    // The bundle that the windows take, with the three adaptors that belong to the window toolkit.
    // Everything must outlive the bundle.
    Platform with(Dialogs& dialogs, EventPump& eventPump, PrintSystem& printing);

  private:
    struct Adaptors;
    static std::unique_ptr<Adaptors> adaptorsOfThisSystem(); // defined by each system

    std::unique_ptr<Adaptors> adaptors_;
};

} // namespace veldara
