// Text files in the process's code page, which is UTF-8, read whole and written whole.
//
// The scripting component's own text streams are not used: they ask the system to report characters
// that do not fit the code page, a question that it refuses when the code page is UTF-8.
#pragma once

#include "platform/file_system.h"

#include <memory>
#include <string>

namespace veldara {

// Throws Error when the file cannot be read, or is larger than any text file of the program.
std::unique_ptr<TextReader> openTextFileToRead(const std::string& path);

// close() puts the file in place at once under its name, by way of a temporary one. Where the user
// may write the file but may make no other beside it (the folder of an installed program), the file
// itself is rewritten. Throws Error when the path can be written in neither way.
std::unique_ptr<TextWriter> createTextFileToWrite(const std::string& path);

// Writes into an existing file; close() leaves nothing of what was in it.
std::unique_ptr<TextWriter> rewriteTextFile(const std::string& path);

} // namespace veldara
