// The progress and message window: a message for some seconds, or a message with a progress bar and
// a Cancel button. It is modeless; the code whose progress it shows
// checks the cancel flag between its steps.
#pragma once

#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "platform/platform.h"

#include <string>

namespace veldara {

// frmMsg::curStatus
enum ProgressStatus { progressRunning = 0, closeAtNextTick = 1, timedMessage = 2 };
// frmMsg::SetMode
enum ProgressMode { messageMode = 1, progressMode = 2 };

class frmMsg : public Window {
  public:
    Label lblMsg{"lblMsg"};
    Picture picProgressBar{"picProgressBar"};
    Button cmdCancel{"cmdCancel"};
    Timer tmrProgBar{"tmrProgBar"};

    // Whether the Cancel button is offered in progress mode: set before the window is shown.
    bool bAllowCancel = false;
    // The user pressed Cancel.
    bool bCancel = false;
    Handler onCancel;       // raised at once, for work that goes on between two looks at bCancel
    double dProgress = 0.0; // fraction 0 to 1
    double dStart = 0.0;    // seconds: when the timed message was shown
    double dSecToShowMsg = 0.0; // how long a timed message stays
    // A window that is loaded and not shown closes itself at the first tick.
    ProgressStatus curStatus = closeAtNextTick;

    frmMsg(Platform& platform, Screen& screen);

    // The message alone; or the message, the bar below it and, where it is allowed, the Cancel
    // button below the bar. The view fits the window's height to what is visible.
    void SetMode(ProgressMode mType);
    void ShowMsgForSecs(const std::string& sMsg, double dSec);
    void ShowProgressBar(const std::string& sMsg);
    // A fraction of 1 or more fills the bar and closes the window.
    void SetProgressVal(double dProg);
    double GetProgressVal() const { return dProgress; }
    void UpdateProgess();

    void cmdCancel_Click();
    void tmrProgBar_Timer();

  protected:
    void loadHandler() override;
    void unloadHandler() override;
    // While work runs, the close box cancels it; the window closes with the work.
    void closeBox() override;

  private:
    Platform& platform_;
};

} // namespace veldara
