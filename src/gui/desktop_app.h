// The toolkit's application object: starts the desktop program when the event loop runs, opens the
// photo or folder that it was started with, and shows an error that no window has caught.
#pragma once

#include "gui/desktop_program.h"

#include <memory>
#include <string>

#include <wx/app.h>

namespace veldara {

class DesktopApp : public wxApp {
  public:
    bool OnInit() override;
    int OnExit() override;
    bool OnExceptionInMainLoop() override;

  private:
    void openWhenPainted(const std::string& path);

    std::unique_ptr<DesktopProgram> program_;
};

} // namespace veldara
