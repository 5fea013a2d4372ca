// Drives, and the folders that a folder list shows.
#pragma once

#include <string>
#include <vector>

namespace veldara {

class Drives {
  public:
    virtual ~Drives() = default;

    // Drives in the order a drive list shows them: "c", "d" ... on Windows (lower case, one
    // letter);
    // "/" and the mounted volumes' folders elsewhere.
    virtual std::vector<std::string> list() = 0;
    // The drive of that list that a path lies on; the empty text when there is none.
    virtual std::string driveOf(const std::string& path) = 0;
    // The folder that a folder list goes to when the drive is chosen: "c:\" or the volume's folder.
    virtual std::string rootOf(const std::string& drive) = 0;
    // Names of the folders in a folder, sorted for a person. Throws Error when it cannot be read.
    virtual std::vector<std::string> subfolders(const std::string& folder) = 0;
    // The folders from the drive's root down to the folder itself, as full paths.
    virtual std::vector<std::string> foldersDownTo(const std::string& folder) = 0;
    // Whether the folder lies on a drive of this machine that is always there: not on the network
    // and on no medium that can be removed. Asks no other machine.
    virtual bool isOnFixedDrive(const std::string&) { return true; }
    // False for a folder of another machine that does not answer within about a second.
    virtual bool answersSoon(const std::string&) { return true; }
    // The platform's separator between names: '\\' or '/'.
    virtual char separator() const = 0;
};

} // namespace veldara
