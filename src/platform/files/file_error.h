// What a failed file operation throws: a sentence for the user and the system's code for callers
// that decide by it.
#pragma once

#include "platform/error.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace veldara {

class FileError : public Error {
  public:
    // what(): `Could not write "PATH": REASON.` for the verb "write"; the code is errno's on Linux
    // and GetLastError's on Windows, and its reason is the system's unless one is given.
    FileError(std::string_view verb, const std::filesystem::path& file, long code);
    FileError(std::string_view verb, const std::filesystem::path& file, long code,
              const std::string& reason);

    long code() const { return code_; }

  private:
    long code_;
};

// The system's words for a code, as the end of a sentence: "Permission denied".
std::string reasonOf(long code);

} // namespace veldara
