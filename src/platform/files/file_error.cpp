#include "platform/files/file_error.h"

#include "platform/text/path_text.h"

#ifdef _WIN32
#include "platform/text/wide_text.h"
#else
#include <system_error>
#endif

namespace veldara {

FileError::FileError(std::string_view verb, const std::filesystem::path& file, long code)
    : FileError(verb, file, code, reasonOf(code)) {}

FileError::FileError(std::string_view verb, const std::filesystem::path& file, long code,
                     const std::string& reason)
    : Error("Could not " + std::string(verb) + " \"" + pathText(file) + "\": " + reason + "."),
      code_(code) {}

std::string reasonOf(long code) {
#ifdef _WIN32
    return systemMessage(static_cast<unsigned long>(code));
#else
    return std::generic_category().message(static_cast<int>(code));
#endif
}

} // namespace veldara
