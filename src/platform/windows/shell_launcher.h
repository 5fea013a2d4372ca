// Starts what lies outside the program through the shell of Windows and its help viewer.
#pragma once

#include "platform/launcher.h"

namespace veldara {

class ShellLauncher : public Launcher {
  public:
    ShellLauncher() = default;
    ShellLauncher(const ShellLauncher&) = delete;
    ShellLauncher& operator=(const ShellLauncher&) = delete;
    ~ShellLauncher() override; // closes the help viewer's windows

    // The help viewer is loaded at the first call, so that a system without it runs the program
    // too. A manual that belongs to another ordinary user is not opened: it could run programs.
    void openHelp(const std::string& file) override;
    void openTarget(const std::string& target) override;
    // Names of environment variables between percent signs are replaced.
    void startProgram(const std::string& path) override;

  private:
    bool helpOpened_ = false;
};

} // namespace veldara
