// The file-system object by the system's own calls: for paths that are too long for the scripting
// component, and for machines where that component is switched off.
#pragma once

#include "platform/file_system.h"

namespace veldara {

class NativeFileSystemObject : public FileSystemObject {
  public:
    std::vector<std::string> files(const std::string& folder) override;
    bool fileExists(const std::string& path) override;
    bool folderExists(const std::string& path) override;
    void createFolder(const std::string& path) override;
    std::uint64_t freeSpace(const std::string& drive) override;
    std::unique_ptr<TextReader> openTextFile(const std::string& path) override;
    std::unique_ptr<TextWriter> createTextFile(const std::string& path) override;
    // Where the user may create no file beside it, the copy goes into the user's own folder for
    // the program's data.
    void keepCopy(const std::string& path) override;
};

} // namespace veldara
