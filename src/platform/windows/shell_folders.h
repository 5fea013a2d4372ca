// The user's own folders, as the shell of Windows knows them.
#pragma once

#include "platform/special_folders.h"

namespace veldara {

class ShellFolders : public SpecialFolders {
  public:
    std::string path(int identifier) override;
};

} // namespace veldara
