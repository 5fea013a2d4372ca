#include "output/frmMsg.h"

#include "output/progress_picture.h"

#include <memory>
#include <string>

namespace veldara {

frmMsg::frmMsg(Platform& platform, Screen& screen) : Window("frmMsg", screen), platform_(platform) {
    setCaption("Veldara");
    cmdCancel.setCaption("Cancel");
    picProgressBar.setSize(300, 20);
    tmrProgBar.setInterval(100);
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
    tmrProgBar.onTick = [this] { tmrProgBar_Timer(); };
    picProgressBar.onResize = [this] { UpdateProgess(); };
    SetMode(messageMode);
}

void frmMsg::SetMode(ProgressMode mType) {
    lblMsg.setVisible(true);
    picProgressBar.setVisible(mType == progressMode);
    cmdCancel.setVisible(mType == progressMode && bAllowCancel);
}

void frmMsg::ShowMsgForSecs(const std::string& sMsg, double dSec) {
    load();
    lblMsg.setCaption(sMsg);
    SetMode(messageMode);
    curStatus = timedMessage;
    dStart = platform_.clock.seconds();
    dSecToShowMsg = dSec;
    tmrProgBar.setEnabled(true);
    show();
    bAllowCancel = false;
    bCancel = false;
}

void frmMsg::ShowProgressBar(const std::string& sMsg) {
    load(); // first, because a freshly loaded window is one that closes itself
    curStatus = progressRunning;
    bCancel = false; // the Cancel of an earlier run is none of this one
    lblMsg.setCaption(sMsg);
    SetMode(progressMode);
    dProgress = 0.0;
    UpdateProgess();
    show();
    platform_.eventPump.doEvents();
    tmrProgBar.setEnabled(true);
}

void frmMsg::SetProgressVal(double dProg) {
    dProgress = dProg <= 1.0 ? dProg : 1.0;
    UpdateProgess();
    if (dProgress >= 1.0) {
        unload();
    }
    platform_.eventPump.doEvents();
}

void frmMsg::UpdateProgess() {
    // Screen readers say every tenth.
    picProgressBar.setCaption(std::to_string(static_cast<int>(dProgress * 10) * 10) + "%");
    const int width = picProgressBar.width();
    const int height = picProgressBar.height();
    if (width < 1 || height < 1) {
        picProgressBar.setPixels(nullptr);
        return;
    }
    picProgressBar.setPixels(std::make_shared<Image>(progressPicture(width, height, dProgress)));
}

void frmMsg::cmdCancel_Click() {
    bCancel = true;
    lblMsg.setCaption("canceling...");
    if (onCancel) {
        onCancel();
    }
}

void frmMsg::tmrProgBar_Timer() {
    if (curStatus == closeAtNextTick) {
        unload();
    } else if (curStatus == timedMessage) {
        if (platform_.clock.seconds() - dStart >= dSecToShowMsg) {
            curStatus = closeAtNextTick;
        }
    } else {
        if (loaded()) {
            UpdateProgess();
        }
        platform_.eventPump.doEvents();
    }
}

void frmMsg::loadHandler() {
    curStatus = closeAtNextTick;
    tmrProgBar.setEnabled(true);
}

void frmMsg::unloadHandler() {
    tmrProgBar.setEnabled(false);
}

void frmMsg::closeBox() {
    if (curStatus != progressRunning) {
        unload();
    } else if (bAllowCancel) {
        cmdCancel_Click();
    }
}

} // namespace veldara
