// The run of the save dialog that writes the tiles.
#include "output/frmSaveTiles.h"
#include "output/save_messages.h"
#include "output/tile_files.h"
#include "output/tile_folder.h"
#include "output/tile_pool.h"
#include "output/tile_run.h"
#include "platform/error.h"
#include "platform/text/file_name.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <chrono>
#include <exception>

namespace veldara {

namespace {

// Where free space is measured: on the chosen drive if drives have letters, otherwise on the file
// system of the tiles' folder.
std::string placeToMeasure(const std::string& drive, const std::string& folder, char separator) {
    return separator == '\\' ? drive.substr(0, 1) : folder;
}

std::optional<std::uint64_t> freeSpaceOf(FileSystemObject& files, const std::string& place) {
    try {
        return files.freeSpace(place);
    } catch (const Error&) {
        return std::nullopt;
    }
}

// False if the folder exists. Another program may create it between the check and the creation.
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
    const PosterPlan plan = owner_.planTiles(tileFileParts());
    if (plan.tiles.empty()) {
        endRun(tileTableFailedMessage(), Progress::notShown, Dialog::unloaded);
        return;
    }
    const std::unique_ptr<FileSystemObject> files = makeFileSystemObject(platform_.fileSystem);
    if (!files) {
        endRun(fileSystemObjectFailedMessage(), Progress::notShown, Dialog::unloaded);
        return;
    }
    if (const std::string problem = newFolderProblem(); !problem.empty()) {
        endRun(tileNameProblemMessage(problem), Progress::notShown, Dialog::unloaded);
        return;
    }
    const std::string folder = tileFolder();
    if (!makeFolder(*files, folder)) {
        return;
    }
    progress_.bAllowCancel = true;
    progress_.SetMode(progressMode);
    progress_.ShowProgressBar(savingText);
    try {
        if (isReady(plan) && writeTiles(*files, plan)) {
            progress_.unload();
            result_.ShowSaveOkMsg(folder);
        }
    } catch (const std::exception&) {
        // The run itself needs memory and threads, and there may be none left.
        endRun(imageObjectFailedMessage(), Progress::closesAtNextTick, Dialog::unloaded);
    }
}

std::string frmSaveTiles::tileFolder() const {
    return tileFolderPath(dirTile.path(), txtNewFolderName.text(), platform_.drives.separator());
}

// An empty name stands for the parent folder.
std::string frmSaveTiles::newFolderProblem() const {
    const char separator = platform_.drives.separator();
    const std::string& text = txtNewFolderName.text();
    const std::string name = text.substr(text.rfind(separator) + 1);
    return name.empty() ? name : folderNameProblem(name, separator);
}

TileFileParts frmSaveTiles::tileFileParts() const {
    return {tileFolderPrefix(dirTile.path(), txtNewFolderName.text(), platform_.drives.separator()),
            txtBaseFileName.text(), chosenType()};
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

bool frmSaveTiles::hasMemoryFor(const PosterPlan& plan) const {
    int width = 1;
    int height = 1;
    for (const PlannedTile& tile : plan.tiles) {
        width = std::max(width, tile.rect.width());
        height = std::max(height, tile.rect.height());
    }
    try {
        hooks_.createTileImage(width, height);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool frmSaveTiles::isReady(const PosterPlan& plan) {
    if (!hasMemoryFor(plan)) {
        endRun(imageObjectFailedMessage(), Progress::closesAtNextTick, Dialog::unloaded);
        return false;
    }
    std::string nameProblem = plan.reason;
    switch (plan.problem) {
    case PlanProblem::compensation:
    case PlanProblem::none:
        // Answering "yes" to the folder question allows overwriting old tiles, never the photo.
        nameProblem = photoOverwriteProblem(plan.files(), photo_);
        break;
    case PlanProblem::fileName:
        break;
    default:
        endRun(invalidTileSizesMessage(), Progress::closesAtNextTick, Dialog::unloaded);
        return false;
    }
    if (!nameProblem.empty()) {
        endRun(tileNameProblemMessage(nameProblem), Progress::closesAtNextTick,
               Dialog::leftToCaller);
        return false;
    }
    if (!plan.ok()) {
        showFailure(TileOutcome::compensationFailed);
    }
    return plan.ok();
}

bool frmSaveTiles::writeTiles(FileSystemObject& files, const PosterPlan& plan) {
    // Held for as long as the run lasts.
    const std::shared_ptr<const Image> photo = owner_.currentPhoto();
    WholePhotoSource source(*photo, plan.rects());
    auto run = std::make_unique<TileRun>(
        std::make_unique<TilePool>(source, plan.tiles.size(), plan.treatment, plan.type, 0),
        plan.tiles.size(), std::make_unique<TileFolder>(plan.files(), hooks_.write));
    TileStep step;
    bool canceled = false;
    while (!run->done() && !canceled && step.outcome == TileOutcome::written) {
        step = writeTile(*run, files);
        canceled = progress_.bCancel; // read once for each tile, after it is written
        if (step.outcome == TileOutcome::written && !canceled) {
            progress_.SetProgressVal(static_cast<double>(run->written()) /
                                     static_cast<double>(run->count()));
        }
    }
    // Waits for the tiles being encoded ahead, which may take a moment.
    platform_.eventPump.runWhileServing([&run] { run.reset(); });
    if (step.outcome != TileOutcome::written) {
        showFailure(step.outcome);
        return false;
    }
    if (canceled) {
        endRun(canceledMessage(), Progress::closesAtNextTick, Dialog::unloaded);
    }
    return !canceled;
}

// The file-system object belongs to this thread, so the space is measured here, just before the
// tile is written on another.
TileStep frmSaveTiles::writeTile(TileRun& run, FileSystemObject& files) {
    platform_.eventPump.runWhileServing([&run] { waitForTile(run); });
    const std::optional<std::uint64_t> space = freeSpaceOf(
        files, placeToMeasure(drvTile.drive(), tileFolder(), platform_.drives.separator()));
    TileStep step;
    platform_.eventPump.runWhileServing([&] { step = run.next(space); });
    return step;
}

void frmSaveTiles::showFailure(TileOutcome outcome) {
    switch (outcome) {
    case TileOutcome::compensationFailed:
        endRun(compensationFailedMessage(), Progress::closesAtNextTick, Dialog::leftToCaller);
        break;
    case TileOutcome::turnFailed:
        endRun(imageObjectFailedMessage(), Progress::closesAtNextTick, Dialog::unloaded);
        break;
    case TileOutcome::outOfSpace:
        endRun(outOfDiskSpaceMessage(), Progress::unloaded, Dialog::unloaded);
        break;
    default:
        endRun(tileNotSavedMessage(), Progress::unloaded, Dialog::unloaded);
        break;
    }
}

void frmSaveTiles::endRun(const Message& message, Progress progress, Dialog dialog) {
    if (progress == Progress::closesAtNextTick) {
        progress_.curStatus = closeAtNextTick;
    }
    platform_.dialogs.showMessage(message);
    if (progress == Progress::unloaded) {
        progress_.unload();
    }
    if (dialog == Dialog::unloaded) {
        unload();
    }
}

} // namespace veldara
