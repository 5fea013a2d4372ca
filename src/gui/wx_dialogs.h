// The system's small dialogs: message box, input box, save-file dialog.
#pragma once

#include "platform/dialogs.h"

#include <functional>

#include <wx/window.h>

namespace veldara {

class WxDialogs : public Dialogs {
  public:
    // parent: the window that a dialog appears before, asked for each time.
    explicit WxDialogs(std::function<wxWindow*()> parent);

    Answer showMessage(const Message& message) override;
    std::string askText(const std::string& prompt, const std::string& title,
                        const std::string& proposed) override;
    std::string askOpenFile(const OpenFileRequest& request) override;
    std::string askSaveFile(const SaveFileRequest& request) override;

  private:
    bool mayOverwrite(const std::string& path);

    std::function<wxWindow*()> parent_;
};

} // namespace veldara
