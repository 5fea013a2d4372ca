// Starts what lies outside the program through the shell of Windows and its help viewer.
#pragma once

#include "platform/launcher.h"

namespace veldara {

class ShellLauncher : public Launcher {
  public:
    // The help viewer is loaded at the first call: a system without it runs the program all the
    // same.
    void openHelp(const std::string& file) override;
    void openTarget(const std::string& target) override;
    // Names of environment variables between percent signs are replaced.
    void startProgram(const std::string& path) override;
};

} // namespace veldara
