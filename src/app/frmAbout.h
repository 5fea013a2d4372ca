// The About box: title, version, copyright, the maker's web address, and a
// button for the operating system's System Information.
#pragma once

#include "controls/controls.h"
#include "controls/window.h"
#include "platform/platform.h"

#include <string>

namespace veldara {

class frmAbout : public Window {
  public:
    // webAddress: what the link opens; the link and the words beside it are hidden without one.
    frmAbout(Platform& platform, Screen& screen, const std::string& webAddress);

    Label lblTitle{"lblTitle"};
    Label lblVersion{"lblVersion"};
    Label lblCopyright{"lblCopyright"};
    Label lblDisclaimer{"lblDisclaimer"};
    LinkLabel lnkWeb{"lnkWeb"};
    Button cmdOk{"cmdOk"};
    Button cmdSysInfo{"cmdSysInfo"};

    // Starts System Information, or says that it is not available.
    void StartSysInfo();

    // Reads a value with full access rights; false, and no text, when that fails.
    bool GetKeyValue(RegistryRoot root, const std::string& key, const std::string& name,
                     std::string& text);

  protected:
    void loadHandler() override;

  private:
    void lnkWeb_Click();
    std::string systemInformationProgram();

    Platform& platform_;
};

} // namespace veldara
