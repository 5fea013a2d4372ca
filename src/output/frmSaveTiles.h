// The save dialog: where the tiles go, what they are called and of which type they are; and the run
// that writes them.
#pragma once

#include "controls/browsing.h"
#include "controls/controls.h"
#include "controls/window.h"
#include "output/frmMsg.h"
#include "output/frmSimpleMsg.h"
#include "platform/platform.h"

#include <array>
#include <string>
#include <vector>

namespace veldara {

class Image;
struct TileRect;

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
    // The loaded photo as it is turned now.
    virtual const Image& currentPhoto() const = 0;
    virtual bool rotateTilesChecked() const = 0;  // chkRotateTiles
    virtual bool tileRotated() const = 0;         // bTileRotated
    virtual bool printerClipsChecked() const = 0; // chkPrinterClips
    // The active profile's trims in inches: top, right, bottom, left.
    virtual void FillCurEdgeTrimInches(std::array<double, 4>& trims) const = 0;
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
                 frmSimpleMsg& result);

    // The main window's hand-over, after it has checked the tile sizes and the tile rectangles:
    // fills the dialog for the photo's file name and shows it modally, or says why not.
    void OpenForPhoto(const std::string& drive, const std::string& folder,
                      const std::string& photoFileName);

    void UpdateSaveFolderLabel();

    void drvTile_Change();
    void dirTile_Change();
    void txtNewFolderName_Change();
    void cmdSaveNow_Click();
    void cmdClose_Click();

    // Writes all tiles; tells the user about every outcome itself.
    void processSaveNow();

  protected:
    void closeBox() override;

  private:
    Platform& platform_;
    SaveOwner& owner_;
    frmMsg& progress_;
    frmSimpleMsg& result_;
    bool saving_ = false;
};

} // namespace veldara
