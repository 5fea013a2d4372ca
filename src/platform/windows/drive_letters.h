// Drives of Windows, by their letters, and the folders on them.
#pragma once

#include "platform/drives.h"

namespace veldara {

class DriveLetters : public Drives {
  public:
    std::vector<std::string> list() override;
    std::string driveOf(const std::string& path) override;
    std::string rootOf(const std::string& drive) override;
    // Without the hidden ones and those of the system, which a folder list does not show.
    std::vector<std::string> subfolders(const std::string& folder) override;
    std::vector<std::string> foldersDownTo(const std::string& folder) override;
    bool isOnFixedDrive(const std::string& folder) override;
    bool answersSoon(const std::string& folder) override;
    char separator() const override { return '\\'; }
};

} // namespace veldara
