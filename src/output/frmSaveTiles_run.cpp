// The run of the save dialog that writes the tiles.
#include "output/frmSaveTiles.h"
#include "output/save_messages.h"
#include "output/tile_files.h"
#include "output/tile_run.h"
#include "platform/error.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <chrono>
#include <exception>

namespace veldara {

namespace {

// The drive as the file-system object is asked for it: a letter, or the volume's folder.
std::string driveToMeasure(const std::string& drive, char separator) {
    return separator == '\\' ? drive.substr(0, 1) : drive;
}

std::optional<std::uint64_t> freeSpaceOf(FileSystemObject& files, const std::string& drive) {
    try {
        return files.freeSpace(drive);
    } catch (const Error&) {
        return std::nullopt;
    }
}

// False: the folder is there already. Another program may make it between the look and the making.
bool isMade(FileSystemObject& files, const std::string& folder) {
    if (files.folderExists(folder)) {
        return false;
    }
    try {
        files.createFolder(folder);
    } catch (const Error&) {
        if (files.folderExists(folder)) {
            return false;
        }
        throw;
    }
    return true;
}

std::unique_ptr<FileSystemObject> makeFileSystemObject(FileSystem& fileSystem) {
    try {
        return fileSystem.create();
    } catch (const Error&) {
        return nullptr;
    }
}

void waitForTile(TileRun& run) {
    while (!run.waitReady(std::chrono::seconds(1))) {
    }
}

} // namespace

void frmSaveTiles::processSaveNow() {
    std::vector<TileRect> tiles;
    if (fillTileTable(tiles) < 1) {
        endRun(tileTableFailedMessage(), Progress::notShown, Dialog::unloaded);
        return;
    }
    const std::unique_ptr<FileSystemObject> files = makeFileSystemObject(platform_.fileSystem);
    if (!files) {
        endRun(fileSystemObjectFailedMessage(), Progress::notShown, Dialog::unloaded);
        return;
    }
    const std::string folder =
        tileFolderPath(dirTile.path(), txtNewFolderName.text(), platform_.drives.separator());
    if (!makeFolder(*files, folder)) {
        return;
    }
    progress_.bAllowCancel = true;
    progress_.SetMode(2);
    progress_.ShowProgressBar(savingText);
    if (!hasMemoryFor(tiles)) {
        endRun(imageObjectFailedMessage(), Progress::closesAtNextTick, Dialog::unloaded);
        return;
    }
    const std::optional<TileTreatment> treatment = readTreatment(tiles);
    if (!treatment) {
        endRun(invalidTileSizesMessage(), Progress::closesAtNextTick, Dialog::unloaded);
        return;
    }
    try {
        if (writeTiles(*files, tiles, *treatment)) {
            progress_.unload();
            result_.ShowSaveOkMsg(folder);
        }
    } catch (const std::exception&) {
        // The run's own objects want memory and threads, and either can be used up.
        endRun(imageObjectFailedMessage(), Progress::closesAtNextTick, Dialog::unloaded);
    }
}

int frmSaveTiles::fillTileTable(std::vector<TileRect>& tiles) const {
    try {
        return owner_.CalcTileCoord(tiles);
    } catch (const Error&) {
        return -1;
    }
}

bool frmSaveTiles::makeFolder(FileSystemObject& files, const std::string& folder) {
    try {
        return isMade(files, folder) ||
               platform_.dialogs.showMessage(folderExistsQuestion(folder)) == Answer::yes;
    } catch (const Error&) {
        endRun(folderNotCreatedMessage(folder), Progress::notShown, Dialog::unloaded);
        return false;
    }
}

bool frmSaveTiles::hasMemoryFor(const std::vector<TileRect>& tiles) const {
    int width = 1;
    int height = 1;
    for (const TileRect& tile : tiles) {
        width = std::max(width, tile.width());
        height = std::max(height, tile.height());
    }
    try {
        doors_.createTileImage(width, height);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

std::optional<TileTreatment> frmSaveTiles::readTreatment(const std::vector<TileRect>& tiles) const {
    double width = 0;
    double height = 0;
    if (!owner_.CheckTileSizesNoTrim(width, height)) {
        return std::nullopt;
    }
    try {
        std::optional<EdgeTrims> trims;
        if (owner_.printerClipsChecked()) {
            trims.emplace();
            owner_.FillCurEdgeTrimInches(*trims);
        }
        if (!owner_.CheckTileSizes(width, height)) {
            return std::nullopt;
        }
        TileTreatment treatment = tileTreatment(tiles, owner_.rotateTilesChecked(), width, trims);
        treatment.turned = owner_.tileRotated();
        return treatment;
    } catch (const Error&) {
        return std::nullopt;
    }
}

bool frmSaveTiles::nameFiles(std::size_t count, std::vector<std::filesystem::path>& names) {
    const TileFileParts parts{dirTile.path(), txtNewFolderName.text(), txtBaseFileName.text(),
                              chosenType()};
    for (std::size_t i = 0; i < count; ++i) {
        TileFileName name =
            getTileFileName(parts, static_cast<int>(i) + 1, platform_.drives.separator());
        // Who lets tiles of an earlier run be overwritten does not mean what they are cut from.
        if (name.ok() && isSameFile(textPath(name.path), photo_)) {
            name.problem = "The tile \"" + name.path + "\" would take the photo's place";
        }
        if (!name.ok()) {
            return endRun(tileNameProblemMessage(name.problem), Progress::closesAtNextTick,
                          Dialog::leftToCaller);
        }
        names.push_back(textPath(name.path));
    }
    return true;
}

bool frmSaveTiles::writeTiles(FileSystemObject& files, const std::vector<TileRect>& tiles,
                              const TileTreatment& treatment) {
    TileJob job;
    if (!nameFiles(tiles.size(), job.files)) {
        return false;
    }
    job.treatment = treatment;
    job.type = chosenType().value_or(FileType::jpeg);

    // The drive is measured on this thread, whose object it is, just before the write on another.
    std::optional<std::uint64_t> space;
    const TileDisk disk{[&space] { return space; }, doors_.write};
    const std::string drive = driveToMeasure(drvTile.drive(), platform_.drives.separator());

    const std::shared_ptr<const Image> photo =
        owner_.currentPhoto(); // for as long as the run lasts
    WholePhotoSource source(*photo, tiles);
    auto run = std::make_unique<TileRun>(source, std::move(job), disk);
    TileStep step;
    bool canceled = false;
    while (!run->done() && !canceled && step.outcome == TileOutcome::written) {
        platform_.eventPump.runWhileServing([&run] { waitForTile(*run); });
        space = freeSpaceOf(files, drive);
        platform_.eventPump.runWhileServing([&] { step = run->next(); });
        canceled = progress_.bCancel; // read once a tile, when it is written
        if (step.outcome == TileOutcome::written && !canceled) {
            progress_.SetProgressVal(static_cast<double>(run->written()) /
                                     static_cast<double>(run->count()));
        }
    }
    // Tiles that were encoded ahead are waited for, which may take a moment.
    platform_.eventPump.runWhileServing([&run] { run.reset(); });
    if (step.outcome != TileOutcome::written) {
        return endFailedRun(step.outcome);
    }
    return !canceled || endRun(canceledMessage(), Progress::closesAtNextTick, Dialog::unloaded);
}

bool frmSaveTiles::endFailedRun(TileOutcome outcome) {
    switch (outcome) {
    case TileOutcome::compensationFailed:
        return endRun(compensationFailedMessage(), Progress::closesAtNextTick,
                      Dialog::leftToCaller);
    case TileOutcome::outOfSpace:
        return endRun(outOfDiskSpaceMessage(), Progress::unloaded, Dialog::unloaded);
    default:
        return endRun(tileNotSavedMessage(), Progress::unloaded, Dialog::unloaded);
    }
}

// Always false: nothing is to follow.
bool frmSaveTiles::endRun(const Message& message, Progress progress, Dialog dialog) {
    if (progress == Progress::closesAtNextTick) {
        progress_.curStatus = 1;
    }
    platform_.dialogs.showMessage(message);
    if (progress == Progress::unloaded) {
        progress_.unload();
    }
    if (dialog == Dialog::unloaded) {
        unload();
    }
    return false;
}

} // namespace veldara
