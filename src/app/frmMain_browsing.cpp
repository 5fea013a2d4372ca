// The file browser: drive, folder, filter, file list, the two shortcut buttons, and what is opened
// from outside.
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
        if (foldersKnown_) {
            static_cast<void>(goToFolder(folder));
            return;
        }
    } catch (const Error&) {
        // the folder has gone since the start; that is told as if it had never been found
    }
    platform_.dialogs.showMessage(folderNotKnownMessage(folderName));
}

bool frmMain::goToFolder(const std::string& folder) {
    const std::string drive = platform_.drives.driveOf(folder);
    if (drive.empty()) {
        throw Error("The folder \"" + folder + "\" lies on none of the drives in the list.");
    }
    Drive1.setDrive(drive);
    if (Drive1.drive() != drive) {
        return false;
    }
    Dir1.setPath(folder);
    return true;
}

void frmMain::openPath(const std::string& path) {
    try {
        if (platform_.fileSystem.create()->folderExists(path)) {
            static_cast<void>(goToFolder(platform_.drives.wayTo(path).back()));
        } else {
            openPhoto(path);
        }
    } catch (const Error& error) {
        platform_.dialogs.showMessage(photoUnreadableMessage(error.what()));
    }
}

// What cannot be a photo is refused before the lists leave the photo that is being worked on.
void frmMain::openPhoto(const std::string& path) {
    const std::size_t lastSeparator = path.find_last_of(platform_.drives.separator());
    const std::string name = path.substr(lastSeparator + 1);
    if (!isListedFile(name, filterImages)) {
        platform_.dialogs.showMessage(photoNameMessage(name));
        return;
    }
    if (!fileExists(path)) {
        throw Error("Could not read \"" + path + "\": the file does not exist.");
    }
    const int generation = listGeneration_;
    if (!goToFolder(platform_.drives.wayTo(path.substr(0, lastSeparator + 1)).back())) {
        return;
    }
    if (!isListedFile(name, cmbFileType.listIndex())) {
        cmbFileType.setListIndex(filterImages);
    }
    if (generation == listGeneration_) { // the file may be younger than the list
        FillFileList(/*skipLastFolder=*/true);
    }
    const std::vector<std::string>& names = lstFiles.items();
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) { // it has just gone, or its folder cannot be listed
        throw Error("Could not read \"" + path + "\": it is not in the list of its folder.");
    }
    lstFiles.userClick(static_cast<int>(found - names.begin()));
}

} // namespace veldara
