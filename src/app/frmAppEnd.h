// A window that is never shown; its timer runs as long as the program and does nothing.
#pragma once

#include "controls/controls.h"
#include "controls/window.h"

namespace veldara {

class frmAppEnd : public Window {
  public:
    explicit frmAppEnd(Screen& screen) : Window("frmAppEnd", screen) {
        Timer1.setInterval(250);
        Timer1.setEnabled(true);
        Timer1.onTick = [] {};
    }

    Timer Timer1{"Timer1"};
};

} // namespace veldara
