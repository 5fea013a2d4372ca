// Where the system keeps the user's own folders.
#pragma once

#include <string>

namespace veldara {

// The kinds that are asked for.
constexpr int desktopKind = 0;
constexpr int documentsKind = 2;

// The system's folder identifiers (CSIDL) of the folders that the program asks for by kind.
constexpr int specialFolderIdentifier(int kind) {
    switch (kind) {
    case 0:
        return 0; // desktop
    case 1:
        return 1;
    case 2:
        return 5; // personal documents
    case 3:
        return 2; // programs
    case 4:
        return 33;
    default:
        return 16; // desktop directory
    }
}

constexpr int picturesIdentifier = 39;
constexpr int homeIdentifier = 40;

class SpecialFolders {
  public:
    virtual ~SpecialFolders() = default;
    // The folder with that identifier, or the empty text when it is not known.
    virtual std::string path(int identifier) = 0;
};

} // namespace veldara
