// Drives where there are no letters: "/" and the volumes that are mounted for the user.
#pragma once

#include "platform/drives.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldara {

// The folders at which real volumes (disks, sticks, cards, network shares) are mounted for the
// user, taken from a table in the form of /proc/self/mounts: below /media, /run/media and /mnt.
// Sorted for a person, each once. File systems that no medium carries are left out.
std::vector<std::string> userVolumes(std::string_view mountTable);

class MountedDrives : public Drives {
  public:
    explicit MountedDrives(std::string mountTableFile = "/proc/self/mounts");

    std::vector<std::string> list() override;
    std::string driveOf(const std::string& path) override;
    std::string rootOf(const std::string& drive) override;
    std::vector<std::string> subfolders(const std::string& folder) override; // none hidden
    std::vector<std::string> foldersDownTo(const std::string& folder) override;
    char separator() const override { return '/'; }

  private:
    std::string mountTableFile_;
};

} // namespace veldara
