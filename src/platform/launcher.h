// Starts what lies outside the program: the help viewer, a folder, document or web page, another
// program.
#pragma once

#include <optional>
#include <string>

namespace veldara {

class Launcher {
  public:
    virtual ~Launcher() = default;
    virtual void openHelp(const std::string& file) = 0; // its default topic; throws Error
    // A folder, an address, or a document that was written (a file whose name ends in ".pdf"): no
    // other file, which would be handed to whatever program claims its kind. Throws Error.
    virtual void openTarget(const std::string& target) = 0;
    // The desktop's own program that shows facts about the system: its path, empty where there is
    // none. Nothing where the registry names that program instead.
    virtual std::optional<std::string> systemInformationProgram() { return std::nullopt; }
    virtual void startProgram(const std::string& path) = 0; // normal, focused window; throws Error
};

} // namespace veldara
