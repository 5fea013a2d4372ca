// Where the stored preferences stand in the registry.
#pragma once

namespace veldara {

// The machine-wide root is deliberate: the poster settings are those of the machine and its
// printer.
constexpr const char* companyKey = "Software\\Korvane";
constexpr const char* preferencesKey = "Software\\Korvane\\omra";

// The value that holds the folder the program was installed in.
constexpr const char* applicationFolderName = "app_dir";

} // namespace veldara
