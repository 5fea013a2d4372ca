// The file browser: drive, folder, filter, file list, the two shortcut buttons, and what is opened
// from outside the lists.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "app/photo_file.h"
#include "app/preference_text.h"
#include "controls/scoped_flag.h"
#include "platform/error.h"

#include <algorithm>

namespace veldara {

// The names in the folder of Dir1 that pass the filter; none when the folder cannot be read.
std::vector<std::string> frmMain::listedFiles() const {
    std::vector<std::string> names;
    try {
        names = platform_.fileSystem.createOrSubstitute()->files(Dir1.path());
    } catch (const Error&) {
        return {};
    }
    std::erase_if(names, [this](const std::string& name) {
        return !isListedFile(name, cmbFileType.listIndex());
    });
    return names;
}

void frmMain::FillFileList(bool skipLastFolder) {
    fillFileList(listedFiles(), skipLastFolder);
}

void frmMain::fillFileList(const std::vector<std::string>& names, bool skipLastFolder) {
    work_.listFilled();
    stopLoadingAnimation();
    lstFiles.setItems(names);
    showStatusPicture(names.empty() ? storage_.picPickFolder : storage_.picPickImage);
    if (!skipLastFolder) {
        preferences_.write(prefLastFolder, Dir1.path());
    }
    if (onFilesListed) {
        onFilesListed();
    }
}

void frmMain::showStatusPicture(const Picture& status) {
    picCur.setDrawing(status.drawing());
}

void frmMain::Drive1_Change() {
    if (bInitializing || settingDrive_) {
        return;
    }
    try {
        Dir1.setPath(platform_.drives.rootOf(Drive1.drive()));
        sCurDrive = Drive1.drive();
    } catch (const Error&) {
        platform_.dialogs.showMessage(driveNotAccessibleMessage());
        showDrive(sCurDrive); // the folder list never left its folder
    }
    FillFileList();
}

// Selects a drive in the list without going to its root. One that has gone is not selected.
void frmMain::showDrive(const std::string& drive) {
    const ScopedFlag flag(settingDrive_);
    try {
        Drive1.setDrive(drive);
    } catch (const Error&) {
        Drive1.refresh();
    }
}

// Another drive can begin below the current one: a volume mounted in a folder.
void frmMain::followDrive() {
    const std::string drive = platform_.drives.driveOf(Dir1.path());
    if (!drive.empty() && drive != sCurDrive) {
        sCurDrive = drive;
        showDrive(drive);
    }
}

void frmMain::Dir1_Change() {
    if (bInitializing) {
        return;
    }
    followDrive();
    forgetPhoto();
    FillFileList();
    refreshWithoutPhoto();
}

void frmMain::refreshWithoutPhoto() {
    UpdatePlacementLabels();
    UpdateOutputSize();
    UpdateActionButtons(); // also with an invalid tile size, which leaves the figures as they are
}

void frmMain::cmbFileType_Click() {
    updateFileList();
}

// Fills the list again. The selected file stays selected, and its photo and crop as they are, while
// it is still listed; otherwise the photo goes as it does when the folder changes.
void frmMain::updateFileList() {
    std::vector<std::string> names = listedFiles();
    const std::string selected = lstFiles.selectedText();
    if (!selected.empty() && std::find(names.begin(), names.end(), selected) != names.end()) {
        lstFiles.replaceItems(std::move(names));
        return;
    }
    if (!selected.empty()) {
        forgetPhoto();
    }
    fillFileList(names, /*skipLastFolder=*/true);
    refreshWithoutPhoto();
}

void frmMain::RefreshFolder() {
    Dir1.refresh();
    if (listedFiles() != lstFiles.items()) {
        updateFileList();
    }
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
        // a folder that has gone since the start is reported like one that was never found
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
        if (platform_.fileSystem.createOrSubstitute()->folderExists(path)) {
            static_cast<void>(goToFolder(platform_.drives.foldersDownTo(path).back()));
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
    if (!fileExists(path)) {
        throw Error("Could not read \"" + path + "\": the file does not exist.");
    }
    if (!isListedFile(name, filterImages)) {
        offerCopy(path, name);
        return;
    }
    const int generation = work_.listGeneration();
    if (!goToFolder(platform_.drives.foldersDownTo(path.substr(0, lastSeparator + 1)).back())) {
        return;
    }
    if (!isListedFile(name, cmbFileType.listIndex())) {
        cmbFileType.setListIndex(filterImages);
    }
    if (generation == work_.listGeneration()) { // the file may be younger than the list
        FillFileList(/*skipLastFolder=*/true);
    }
    const std::vector<std::string>& names = lstFiles.items();
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) { // it has just gone, or its folder cannot be listed
        throw Error("Could not read \"" + path + "\": it is not in the list of its folder.");
    }
    lstFiles.userClick(static_cast<int>(found - names.begin()));
}

void frmMain::mnuOpenPhoto_Click() {
    const std::string path = platform_.dialogs.askOpenFile(
        {"Open Photo", {openPhotoFilter(), {"All Files (*.*)", "*.*"}}, Dir1.path()});
    if (!path.empty()) {
        openPath(path);
    }
}

void frmMain::mnuOpenRecent_Click(int index) {
    openPath(std::string(mnuOpenRecent.items()[static_cast<std::size_t>(index)]));
}

void frmMain::rememberPhoto(const std::string& path) {
    if (recent_.add(path)) {
        preferences_.writeRecentPhotos(recent_.paths());
        showRecentPhotos();
    }
}

void frmMain::showRecentPhotos() {
    mnuOpenRecent.setItems(recent_.paths());
    mnuOpenRecent.setEnabled(!recent_.paths().empty());
}

// Asked only when the menu opens: a photo on a slow or absent drive must not delay anything else.
void frmMain::mnuOpenRecent_Open() {
    std::vector<std::string> present = recent_.paths();
    std::erase_if(present, [this](const std::string& path) { return !fileExists(path); });
    mnuOpenRecent.setItems(present);
}

} // namespace veldara
