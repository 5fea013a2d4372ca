// Which manual may be opened, and under which path the help viewer finds it.
#pragma once

#include <string>

#include <windows.h>

namespace veldara {

// A manual can run programs when it is opened, with the rights of who opens it. True when its owner
// is the system, the installer of Windows, the administrators, or the user of this process.
bool ownerMayBeTrusted(const std::wstring& file);
bool ownerMayBeTrusted(PSID owner);

// The viewer takes "#" for the start of a topic's name and loses characters outside the system's
// code page. The path itself where it has neither, else its short form, else the path of a copy in
// the user's own folder for the program's data.
std::wstring pathForViewer(const std::wstring& file);

// Whether the viewer can open such a path.
bool viewerTakes(const std::wstring& path);

} // namespace veldara
