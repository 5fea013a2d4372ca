// Names that a system takes for files.
#pragma once

#include "platform/text/path_text.h"

#include <string>
#include <string_view>

namespace veldara {

// Why a file cannot have the name, as a sentence without a full stop; empty when it can. The
// separator says whose rules hold: with '\' those of Windows, which reserves names of devices (CON,
// NUL, COM1 ... with any ending), takes what stands behind a colon for a part of the file before
// it, and drops blanks and dots at the end.
std::string fileNameProblem(std::string_view name, char separator = platformSeparator);

// The same for a folder.
std::string folderNameProblem(std::string_view name, char separator = platformSeparator);

// Whether a file of that name is a PDF document, as desktops tell by its ending.
bool isPdfName(std::string_view name);

} // namespace veldara
