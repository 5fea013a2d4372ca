// The result window: all tiles were written, and this is the folder they are in.
#pragma once

#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "platform/platform.h"

#include <string>

namespace veldara {

class frmSimpleMsg : public Window {
  public:
    Label lblTitle;
    Picture imgCheck;
    Label lblMsg;
    LinkLabel lnkFol; // its caption is wrapped with line breaks, its target is the folder
    Button cmdOk;

    frmSimpleMsg(Platform& platform, Screen& screen);

    void ShowSaveOkMsg(const std::string& sFolderName);

    void lnkFol_Click();
    void cmdOk_Click();

  private:
    Platform& platform_;
};

} // namespace veldara
