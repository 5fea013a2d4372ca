// The printers of this system, through its own print dialog.
#pragma once

#include "gui/wx_event_pump.h"
#include "platform/print_system.h"

#include <functional>
#include <memory>

#include <wx/window.h>

namespace veldara {

// parent: the window that the dialog stands before; may be null.
std::unique_ptr<PrintSystem> makePrintSystem(std::function<wxWindow*()> parent, WxEventPump& pump);

} // namespace veldara
