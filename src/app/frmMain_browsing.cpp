// The file browser: drive, folder, filter, file list, and the two shortcut buttons.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "app/photo_file.h"
#include "app/preference_text.h"
#include "controls/loading_mark.h"
#include "platform/error.h"

#include <algorithm>

namespace veldara {

void frmMain::FillFileList(bool skipLastFolder) {
    ++listGeneration_; // a photo that is being loaded is no longer the chosen one
    stopLoadingAnimation();
    std::vector<std::string> names;
    try {
        names = platform_.fileSystem.create()->files(Dir1.path());
    } catch (const Error&) {
        names.clear(); // a folder that cannot be read offers nothing
    }
    std::erase_if(names, [this](const std::string& name) {
        return !isListedFile(name, cmbFileType.listIndex());
    });
    lstFiles.setItems(names);
    showStatusPicture(names.empty() ? storage_.picPickFolder : storage_.picPickImage);
    if (!skipLastFolder) {
        preferences_.write(prefLastFolder, Dir1.path());
    }
}

void frmMain::showStatusPicture(const Picture& status) {
    picCur.setDrawing(status.drawing());
}

void frmMain::Drive1_Change() {
    if (bInitializing || restoringDrive_) {
        return;
    }
    try {
        Dir1.setPath(platform_.drives.rootOf(Drive1.drive()));
        sCurDrive = Drive1.drive();
    } catch (const Error&) {
        platform_.dialogs.showMessage(driveNotAccessibleMessage());
        const LoadingMark mark(restoringDrive_); // the folder list never left its folder
        try {
            Drive1.setDrive(sCurDrive);
        } catch (const Error&) {
            Drive1.refresh(); // it has gone as well
        }
    }
    FillFileList();
}

void frmMain::Dir1_Change() {
    if (bInitializing) {
        return;
    }
    forgetPhoto();
    FillFileList();
    UpdatePlacementLabels();
    UpdateOutputSize();
    UpdateActionButtons();
}

void frmMain::cmbFileType_Click() {
    FillFileList(true);
}

void frmMain::cmdDesktop_Click() {
    goToSpecialFolder(desktopFolder_, "Desktop");
}

void frmMain::cmdMyDoc_Click() {
    goToSpecialFolder(documentsFolder_, "My Documents");
}

void frmMain::goToSpecialFolder(const std::string& folder, const std::string& folderName) {
    try {
        const std::string drive = foldersKnown_ ? platform_.drives.driveOf(folder) : "";
        if (!drive.empty()) {
            Drive1.setDrive(drive);
            if (Drive1.drive() == drive) { // otherwise its own message was shown
                Dir1.setPath(folder);
            }
            return;
        }
    } catch (const Error&) {
        // the folder has gone since the start; that is told as if it had never been found
    }
    platform_.dialogs.showMessage(folderNotKnownMessage(folderName));
}

} // namespace veldara
