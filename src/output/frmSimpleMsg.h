// The result window, with a link to the folder that the tiles were written to.
#pragma once

#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "platform/platform.h"

#include <string>

namespace veldara {

class frmSimpleMsg : public Window {
  public:
    Label lblTitle{"lblTitle"};
    Picture imgCheck{"imgCheck"};
    Label lblMsg{"lblMsg"};
    LinkLabel lnkFol{"lnkFol"}; // its caption is wrapped with line breaks, its target is the folder
    Button cmdOk{"cmdOk"};

    frmSimpleMsg(Platform& platform, Screen& screen);

    void ShowSaveOkMsg(const std::string& sFolderName);
    // A document was written; the link opens it. notice: what the person should know of it.
    void ShowDocumentOkMsg(const std::string& file, const std::string& notice);

    void lnkFol_Click();
    void cmdOk_Click();

  private:
    void showResult(const std::string& title, const std::string& text, const std::string& target);

    Platform& platform_;
};

} // namespace veldara
