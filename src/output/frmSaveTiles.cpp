#include "output/frmSaveTiles.h"

#include "controls/scoped_flag.h"
#include "output/save_messages.h"
#include "output/split_path_label.h"
#include "platform/error.h"
#include "platform/image/tile_format.h"
#include "platform/text/path_text.h"

namespace veldara {

frmSaveTiles::frmSaveTiles(Platform& platform, Screen& screen, SaveOwner& owner, frmMsg& progress,
                           frmSimpleMsg& result, SaveHooks hooks)
    : Window("frmSaveTiles", screen), drvTile("drvTile", platform.drives),
      dirTile("dirTile", platform.drives), platform_(platform), owner_(owner), progress_(progress),
      result_(result), hooks_(std::move(hooks)) {
    fillTexts();
    const char separator = platform.drives.separator();
    for (TextBox* name : {&txtNewFolderName, &txtBaseFileName}) {
        name->forbid(forbiddenInNames(separator), refusedCharacterText(separator));
    }
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
    drvTile.setCaption("Drive");
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
    const std::optional<TileFormat> type = tileFormatByName(photoFileName);
    if (!type) {
        platform_.dialogs.showMessage(invalidPhotoTypeMessage());
        return;
    }
    opbBmp.setSelected(*type == TileFormat::bmp);
    opbTif.setSelected(*type == TileFormat::tiff);
    opbJpg.setSelected(*type == TileFormat::jpeg);
    UpdateSaveFolderLabel();
    showModal();
}

// Both lists are read again: folders may have been made since they were last filled, for example by
// the last save.
bool frmSaveTiles::goTo(const std::string& drive, const std::string& folder) {
    const ScopedFlag flag(filling_);
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
    // Where drives are volumes in one tree of folders, choosing a folder can change the drive.
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
        const ScopedFlag flag(saving_);
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

// Events run during a save, so the user must not change what it reads.
void frmSaveTiles::setControlsEnabled(bool enabled) {
    Control* const controls[] = {&drvTile, &dirTile, &txtNewFolderName, &txtBaseFileName, &opbBmp,
                                 &opbTif,  &opbJpg,  &cmdSaveNow,       &cmdClose};
    for (Control* control : controls) {
        control->setEnabled(enabled);
    }
}

std::optional<TileFormat> frmSaveTiles::chosenType() const {
    if (opbBmp.selected()) {
        return TileFormat::bmp;
    }
    if (opbTif.selected()) {
        return TileFormat::tiff;
    }
    if (opbJpg.selected()) {
        return TileFormat::jpeg;
    }
    return std::nullopt;
}

} // namespace veldara
