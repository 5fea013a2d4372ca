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
    void OnInitCmdLine(wxCmdLineParser& parser) override;
    bool OnCmdLineHelp(wxCmdLineParser& parser) override;
    bool OnCmdLineParsed(wxCmdLineParser& parser) override;
    int OnRun() override;
    int OnExit() override;
    bool OnExceptionInMainLoop() override;

  private:
    void openWhenPainted();

    std::unique_ptr<DesktopProgram> program_;
    bool answered_ = false; // the command line asked for a few words and no window
    std::string toOpen_;    // full path; empty: nothing was named
};

} // namespace veldara
