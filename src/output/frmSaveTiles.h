// The save dialog: where the tiles go, what they are called and of which type they are; and the run
// that writes them.
#pragma once

#include "controls/browsing.h"
#include "controls/controls.h"
#include "controls/window.h"
#include "layout/tile_grid.h"
#include "output/frmMsg.h"
#include "output/frmSimpleMsg.h"
#include "output/tile_files.h"
#include "output/tile_image.h"
#include "output/tile_run.h"
#include "platform/image/codec.h"
#include "platform/measures.h"
#include "platform/platform.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

// What the save dialog needs of the main window.
class SaveOwner {
  public:
    virtual ~SaveOwner() = default;

    // The tiles in pixels of the photo as it is turned now, row by row; returns their number, below
    // 1 when there is none.
    virtual int CalcTileCoord(std::vector<TileRect>& tiles) const = 0;
    // The effective print size of a tile in inches; false when the entered one is out of range.
    virtual bool CheckTileSizes(double& widthInches, double& heightInches) const = 0;
    // The entered print size, without the printer's edge trims.
    virtual bool CheckTileSizesNoTrim(double& widthInches, double& heightInches) const = 0;
    // The loaded photo as it is turned now; it stays for whoever holds it.
    virtual std::shared_ptr<const Image> currentPhoto() const = 0;
    virtual bool rotateTilesChecked() const = 0;  // chkRotateTiles
    virtual bool tileRotated() const = 0;         // bTileRotated
    virtual bool printerClipsChecked() const = 0; // chkPrinterClips
    // The active profile's trims in inches: top, right, bottom, left. Throws Error when no profile
    // is active.
    virtual void FillCurEdgeTrimInches(EdgeTrims& trims) const = 0;
};

// What a run does to memory and disk, as doors that a test can shut.
struct SaveDoors {
    // A picture of the largest tile's size, taken before anything is written, so that a run without
    // the memory for its tiles ends before its first file. Throws Error.
    std::function<Image(int, int)> createTileImage = [](int width, int height) {
        return Image(width, height);
    };
    std::function<void(const std::filesystem::path&, const std::vector<std::uint8_t>&)> write =
        writeWholeFile;
};

class frmSaveTiles : public Window {
  public:
    Label lblStep1;
    Label lblStep2;
    Frame fraSaveInfo;
    Label lblLocation;
    DriveList drvTile;
    FolderList dirTile;
    Label lblNewFolderName;
    TextBox txtNewFolderName;
    Label lblBaseFileName;
    TextBox txtBaseFileName;
    Frame fraFileFormat;
    OptionButton opbBmp;
    OptionButton opbTif;
    OptionButton opbJpg;
    Label lblPathCaption;
    Label lblPath; // wrapped with line breaks
    Button cmdSaveNow;
    Button cmdClose;

    frmSaveTiles(Platform& platform, Screen& screen, SaveOwner& owner, frmMsg& progress,
                 frmSimpleMsg& result, SaveDoors doors = {});

    // The main window's hand-over, after it has checked the tile sizes and the tile rectangles:
    // fills the dialog for the photo's file name and shows it modally, or says why not.
    void OpenForPhoto(const std::string& drive, const std::string& folder,
                      const std::string& photoFileName);

    void UpdateSaveFolderLabel();

    void drvTile_Change();
    void dirTile_Change();
    void cmdSaveNow_Click();
    void cmdClose_Click();

    // Writes all tiles; tells the user about every outcome itself.
    void processSaveNow();

  protected:
    // While a run goes on its dialog stays: the progress window is the way to end it.
    void closeBox() override;

  private:
    // What becomes of the progress window and of this dialog when a run ends early.
    enum class Progress { notShown, closesAtNextTick, unloaded };
    enum class Dialog { leftToCaller, unloaded };

    void fillTexts();
    void setControlsEnabled(bool enabled);
    bool goTo(const std::string& drive, const std::string& folder);
    std::optional<FileType> chosenType() const;

    int fillTileTable(std::vector<TileRect>& tiles) const;
    bool makeFolder(FileSystemObject& files, const std::string& folder);
    bool hasMemoryFor(const std::vector<TileRect>& tiles) const;
    std::optional<TileTreatment> readTreatment(const std::vector<TileRect>& tiles) const;
    bool nameFiles(std::size_t count, std::vector<std::filesystem::path>& names);
    bool writeTiles(FileSystemObject& files, const std::vector<TileRect>& tiles,
                    const TileTreatment& treatment);
    bool endFailedRun(TileOutcome outcome);
    bool endRun(const Message& message, Progress progress, Dialog dialog);

    Platform& platform_;
    SaveOwner& owner_;
    frmMsg& progress_;
    frmSimpleMsg& result_;
    SaveDoors doors_;
    std::filesystem::path photo_; // whose tiles are saved
    bool filling_ = false;
    bool saving_ = false;
};

} // namespace veldara
