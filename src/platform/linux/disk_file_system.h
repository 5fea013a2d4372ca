// The file-system object over the real folders and files. Names are bytes here and pass unchanged.
#pragma once

#include "platform/file_system.h"

#include <memory>
#include <string>

namespace veldara {

class DiskFileSystem : public FileSystem {
  public:
    // The program's own folder is made when the first text file is created in it.
    explicit DiskFileSystem(std::string ownFolder);

    std::unique_ptr<FileSystemObject> create() override;

  private:
    std::string ownFolder_;
};

} // namespace veldara
