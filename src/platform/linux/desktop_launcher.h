// Starts other programs, without a shell: nothing in a path or address is ever read as a command.
#pragma once

#include "platform/launcher.h"
#include "platform/linux/user_folders.h"

#include <string>

namespace veldara {

class DesktopLauncher : public Launcher {
  public:
    // The environment tells where programs are looked for (PATH).
    explicit DesktopLauncher(Environment environment);

    // Both give their target to the desktop's opener. A target is an http, https or mailto address,
    // or a folder that exists.
    void openHelp(const std::string& file) override;
    void openTarget(const std::string& target) override;
    std::optional<std::string> systemInformationProgram() override;
    void startProgram(const std::string& path) override;

  private:
    void open(const std::string& target) const;

    Environment environment_;
};

} // namespace veldara
