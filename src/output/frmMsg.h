// The progress and message window: a message for some seconds, or a message with a progress bar and
// a Cancel button. It stands beside the window whose work it shows; that work asks it for the
// cancel flag between its steps.
#pragma once

#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "platform/platform.h"

#include <string>

namespace veldara {

class frmMsg : public Window {
  public:
    Label lblMsg;
    Picture picProgressBar;
    Button cmdCancel;
    Timer tmrProgBar;

    // Whether the Cancel button is offered in progress mode: set before the window is shown.
    bool bAllowCancel = false;
    // The user pressed Cancel.
    bool bCancel = false;
    double dProgress = 0.0;     // fraction 0 to 1
    double dStart = 0.0;        // seconds: when the timed message was shown
    double dSecToShowMsg = 0.0; // how long a timed message stays
    // 0: progress display running, 1: close at the next timer tick, 2: timed message showing.
    int curStatus = 1;

    frmMsg(Platform& platform, Screen& screen);

    // 1: the message alone. 2: the message, the bar below it and, where it is allowed, the Cancel
    // button below the bar. The view fits the window's height to what is visible.
    void SetMode(int mType);
    void ShowMsgForSecs(const std::string& sMsg, double dSec);
    void ShowProgressBar(const std::string& sMsg);
    // A fraction of 1 or more fills the bar and takes the window down.
    void SetProgressVal(double dProg);
    double GetProgressVal() const { return dProgress; }
    void UpdateProgess();

    void cmdCancel_Click();
    void tmrProgBar_Timer();

  protected:
    void loadHandler() override;
    void unloadHandler() override;
    // While work runs its window goes away with the work: the close box asks for the cancel.
    void closeBox() override;

  private:
    Platform& platform_;
};

} // namespace veldara
