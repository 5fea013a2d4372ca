#include "output/frmSaveTiles.h"

#include "controls/loading_mark.h"
#include "output/save_messages.h"
#include "output/split_path_label.h"
#include "platform/error.h"
#include "platform/image/file_ending.h"

namespace veldara {

frmSaveTiles::frmSaveTiles(Platform& platform, Screen& screen, SaveOwner& owner, frmMsg& progress,
                           frmSimpleMsg& result, SaveDoors doors)
    : Window("frmSaveTiles", screen), drvTile(platform.drives), dirTile(platform.drives),
      platform_(platform), owner_(owner), progress_(progress), result_(result),
      doors_(std::move(doors)) {
    fillTexts();
    OptionButton::join({&opbBmp, &opbTif, &opbJpg});
    drvTile.onChange = [this] { drvTile_Change(); };
    dirTile.onChange = [this] { dirTile_Change(); };
    txtNewFolderName.onChange = [this] { UpdateSaveFolderLabel(); };
    cmdSaveNow.onClick = [this] { cmdSaveNow_Click(); };
    cmdClose.onClick = [this] { cmdClose_Click(); };
}

void frmSaveTiles::fillTexts() {
    setCaption("Save Image Tiles");
    lblStep1.setCaption("Step (1) Select where save files, file names and format");
    lblStep2.setCaption("Step (2) Click to Save Files Now");
    fraSaveInfo.setCaption("File Save Info");
    lblLocation.setCaption("New Folder  Location");
    lblNewFolderName.setCaption("New Folder Name:");
    lblBaseFileName.setCaption("Base Filename:");
    fraFileFormat.setCaption("File Type");
    opbBmp.setCaption("Bitmap (.bmp)");
    opbTif.setCaption("Tiff (.tif)");
    opbJpg.setCaption("JPEG (.jpg)");
    lblPathCaption.setCaption("Files currently set to be saved in:");
    cmdSaveNow.setCaption("Save Images Now");
    cmdClose.setCaption("Close");
}

void frmSaveTiles::OpenForPhoto(const std::string& drive, const std::string& folder,
                                const std::string& photoFileName) {
    load();
    setControlsEnabled(true);
    if (!goTo(drive, folder)) {
        platform_.dialogs.showMessage(invalidDriveMessage());
        return;
    }
    const std::optional<std::string> base = defaultBaseName(photoFileName);
    if (!base) {
        platform_.dialogs.showMessage(invalidPhotoNameMessage());
        return;
    }
    photo_ = textPath(withSeparator(folder, platform_.drives.separator()) + photoFileName);
    txtBaseFileName.setText(*base);
    txtNewFolderName.setText(defaultFolderName(*base));
    const std::optional<FileType> type = fileTypeByName(photoFileName);
    if (!type) {
        platform_.dialogs.showMessage(invalidPhotoTypeMessage());
        return;
    }
    opbBmp.setSelected(*type == FileType::bmp);
    opbTif.setSelected(*type == FileType::tiff);
    opbJpg.setSelected(*type == FileType::jpeg);
    UpdateSaveFolderLabel();
    showModal();
}

// Both lists are read again: folders have been made since they were last filled, not least by the
// last save.
bool frmSaveTiles::goTo(const std::string& drive, const std::string& folder) {
    const LoadingMark mark(filling_);
    try {
        drvTile.refresh();
        drvTile.setDrive(drive);
        dirTile.setPath(folder);
        dirTile.refresh();
        return true;
    } catch (const Error&) {
        return false;
    }
}

void frmSaveTiles::UpdateSaveFolderLabel() {
    const char separator = platform_.drives.separator();
    const std::string folder = tileFolderPrefix(dirTile.path(), txtNewFolderName.text(), separator);
    lblPath.setCaption(SplitPathLabel(folder, saveLabelStart, pathLabelEnd, separator));
}

void frmSaveTiles::drvTile_Change() {
    if (filling_) {
        return;
    }
    try {
        dirTile.setPath(platform_.drives.rootOf(drvTile.drive()));
    } catch (const Error&) {
        platform_.dialogs.showMessage(invalidDriveMessage());
        goTo(platform_.drives.driveOf(dirTile.path()), dirTile.path());
    }
}

void frmSaveTiles::dirTile_Change() {
    UpdateSaveFolderLabel();
    if (filling_) {
        return;
    }
    // Where drives are volumes in one tree of folders, walking that tree can lead to another one.
    const std::string drive = platform_.drives.driveOf(dirTile.path());
    if (drive != drvTile.drive()) {
        goTo(drive, dirTile.path());
    }
}

void frmSaveTiles::cmdSaveNow_Click() {
    if (saving_) {
        return;
    }
    {
        const LoadingMark mark(saving_);
        setControlsEnabled(false);
        platform_.eventPump.doEvents();
        processSaveNow();
    }
    unload();
}

void frmSaveTiles::cmdClose_Click() {
    unload();
}

void frmSaveTiles::closeBox() {
    if (!saving_) {
        unload();
    }
}

// Events run during a save, and nothing that it reads may change under it.
void frmSaveTiles::setControlsEnabled(bool enabled) {
    Control* const controls[] = {&drvTile, &dirTile, &txtNewFolderName, &txtBaseFileName, &opbBmp,
                                 &opbTif,  &opbJpg,  &cmdSaveNow,       &cmdClose};
    for (Control* control : controls) {
        control->setEnabled(enabled);
    }
}

std::optional<FileType> frmSaveTiles::chosenType() const {
    if (opbBmp.selected()) {
        return FileType::bmp;
    }
    if (opbTif.selected()) {
        return FileType::tiff;
    }
    if (opbJpg.selected()) {
        return FileType::jpeg;
    }
    return std::nullopt;
}

} // namespace veldara
