// The save dialog: folder, name and file type of the tiles; and the run that
// writes them.
#pragma once

#include "controls/browsing.h"
#include "controls/controls.h"
#include "controls/window.h"
#include "output/frmMsg.h"
#include "output/frmSimpleMsg.h"
#include "output/poster_plan.h"
#include "output/tile_files.h"
#include "output/tile_folder.h"
#include "output/tile_run.h"
#include "platform/files/whole_file.h"
#include "platform/image/codec.h"
#include "platform/platform.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace veldara {

// What the save dialog needs of the main window.
class SaveOwner {
  public:
    virtual ~SaveOwner() = default;

    // The poster as it is set up now, as tiles in these files.
    virtual PosterPlan planTiles(const TileFileParts& files) const = 0;
    // The loaded photo as it is turned now; shared, so that it lives as long as the run.
    virtual std::shared_ptr<const Image> currentPhoto() const = 0;
};

// What a run does to memory and disk; tests replace it.
struct SaveHooks {
    // Allocates a picture of the largest tile's size before anything is written, so that a run
    // without enough memory fails before its first file. Throws Error.
    std::function<Image(int, int)> createTileImage = [](int width, int height) {
        return Image(width, height);
    };
    FileWriter write = writeWholeFile;
};

class frmSaveTiles : public Window {
  public:
    Label lblStep1{"lblStep1"};
    Label lblStep2{"lblStep2"};
    Frame fraSaveInfo{"fraSaveInfo"};
    Label lblLocation{"lblLocation"};
    DriveList drvTile;
    FolderList dirTile;
    Label lblNewFolderName{"lblNewFolderName"};
    TextBox txtNewFolderName{"txtNewFolderName"};
    Label lblBaseFileName{"lblBaseFileName"};
    TextBox txtBaseFileName{"txtBaseFileName"};
    Frame fraFileFormat{"fraFileFormat"};
    OptionButton opbBmp{"opbBmp"};
    OptionButton opbTif{"opbTif"};
    OptionButton opbJpg{"opbJpg"};
    Label lblPathCaption{"lblPathCaption"};
    Label lblPath{"lblPath"}; // wrapped with line breaks
    Button cmdSaveNow{"cmdSaveNow"};
    Button cmdClose{"cmdClose"};

    frmSaveTiles(Platform& platform, Screen& screen, SaveOwner& owner, frmMsg& progress,
                 frmSimpleMsg& result, SaveHooks hooks = {});

    // Called by the main window after it has checked the tile sizes and rectangles: fills the
    // dialog for the photo's file name and shows it modally, or shows why it cannot.
    void OpenForPhoto(const std::string& drive, const std::string& folder,
                      const std::string& photoFileName);

    void UpdateSaveFolderLabel();

    void drvTile_Change();
    void dirTile_Change();
    void cmdSaveNow_Click();
    void cmdClose_Click();

    // Writes all tiles, and shows the user every outcome.
    void processSaveNow();

  protected:
    // The dialog cannot be closed during a run, which is canceled in the progress window.
    void closeBox() override;

  private:
    // What happens to the progress window and to this dialog when a run ends early.
    enum class Progress { notShown, closesAtNextTick, unloaded };
    enum class Dialog { leftToCaller, unloaded };

    void fillTexts();
    void setControlsEnabled(bool enabled);
    bool goTo(const std::string& drive, const std::string& folder);
    std::optional<TileFormat> chosenType() const;

    std::string tileFolder() const;
    std::string newFolderProblem() const;
    TileFileParts tileFileParts() const;
    bool makeFolder(FileSystemObject& files, const std::string& folder);
    bool hasMemoryFor(const PosterPlan& plan) const;
    // Checks memory, names and sizes, and shows the first problem; true when there is none.
    bool isReady(const PosterPlan& plan);
    // True when all tiles are written; otherwise the user has seen the reason.
    bool writeTiles(FileSystemObject& files, const PosterPlan& plan);
    TileStep writeTile(TileRun& run, FileSystemObject& files);
    void showFailure(TileOutcome outcome);
    void endRun(const Message& message, Progress progress, Dialog dialog);

    Platform& platform_;
    SaveOwner& owner_;
    frmMsg& progress_;
    frmSimpleMsg& result_;
    SaveHooks hooks_;
    std::filesystem::path photo_; // whose tiles are saved
    bool filling_ = false;
    bool saving_ = false;
};

} // namespace veldara
