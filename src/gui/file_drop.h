// Files and folders that the user drags here from the desktop or a file manager.
#pragma once

#include <functional>
#include <string>

#include <wx/window.h>

namespace veldara {

// Takes what is dropped on the window or anything in it; of several files the first one. Nothing is
// taken while a dialog is open. `open` gets the full path, when the drop is over and the program
// comes back to its events: the file manager does not wait for it.
void takeDroppedFiles(wxWindow& window, std::function<void(const std::string& path)> open);

} // namespace veldara
