// The desktop program put together: this system's adaptors, the toolkit's, and the main window.
#pragma once

#include "app/frmMain.h"
#include "gui/native_print_system.h"
#include "gui/wx_dialogs.h"
#include "gui/wx_event_pump.h"
#include "gui/wx_screen.h"
#include "platform/stoppable_work.h"
#include "platform/system_platform.h"

#include <functional>
#include <memory>

namespace veldara {

class DesktopProgram {
  public:
    // onEnd: called once, when the main window has been closed or the system ended the program.
    explicit DesktopProgram(std::function<void()> onEnd);
    DesktopProgram(const DesktopProgram&) = delete;
    DesktopProgram& operator=(const DesktopProgram&) = delete;

    ~DesktopProgram();

    // Starts the program: its main window is up afterwards. Needs a running event loop.
    void start() { main_.show(); }

    frmMain& mainWindow() { return main_; }
    WxScreen& screen() { return screen_; }

  private:
    SystemPlatform system_;
    WxEventPump pump_;
    WxScreen screen_;
    WxDialogs dialogs_;
    std::unique_ptr<PrintSystem> printing_;
    Platform platform_;
    StoppableWork decoding_; // what was left ends before the program does
    frmMain main_;
};

} // namespace veldara
