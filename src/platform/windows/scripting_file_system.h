// The file-system object of Windows: its scripting component, made by name and asked by name.
#pragma once

#include "platform/file_system.h"

#include <string>

namespace veldara {

class ScriptingFileSystem : public FileSystem {
  public:
    // The name under which the system knows the component; another one only in tests.
    explicit ScriptingFileSystem(std::string component = "scripting.filesystemobject");

    // Each object belongs to the thread that made it. Throws Error when the component is missing.
    std::unique_ptr<FileSystemObject> create() override;
    std::unique_ptr<FileSystemObject> createOrSubstitute() override;

  private:
    std::string component_;
};

} // namespace veldara
