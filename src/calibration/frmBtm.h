// The edge calibration dialog: makes the test image, and edits the profiles that say how much a
// printer cuts off each edge. The profile list is kept here for the whole run; the file is read
// once and rewritten after every change.
#pragma once

#include "calibration/edge_profile.h"
#include "calibration/test_target.h"
#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/window.h"
#include "platform/files/whole_file.h"
#include "platform/image/codec.h"
#include "platform/measures.h"
#include "platform/platform.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veldara {

// What the calibration dialog needs of the main window.
class CalibrationOwner {
  public:
    virtual ~CalibrationOwner() = default;

    virtual int getCurUnits() const = 0; // 0 inches, otherwise millimetres
    virtual void UpdateOutputSize() = 0;
    // The entered print size of a tile in inches; false when it is out of range.
    virtual bool CheckTileSizesNoTrim(double& widthInches, double& heightInches) const = 0;
    virtual double getConstMinTileSize() const = 0;   // inches
    virtual double getConstMaxTileSize() const = 0;   // inches
    virtual std::string tileSizeAreaName() const = 0; // caption of the main window's size area

    // Refills cmbCurBtm and selects an entry; saves the settings when that moves the selection.
    virtual void fillProfileList(const std::vector<std::string>& names, int selected) = 0;
    virtual int activeProfile() const = 0; // cmbCurBtm's selected position, -1: none
    // The folder recorded in the preferences under "app_dir"; empty: none.
    virtual std::string applicationFolder() const = 0;

    // Prints the test image on the paper of the tiles, with the system's dialog and messages of its
    // own. True: there is no printer, and the person wants a file instead.
    virtual bool printTestImage(std::shared_ptr<const Image> image) = 0;
};

// What making a test target does to memory and disk; tests replace it.
struct TestTargetHooks {
    std::function<Image(double, double)> create = createTestImage; // height, width in inches
    std::function<void(const std::filesystem::path&, const std::vector<std::uint8_t>&)> write =
        writeWholeFile;
};

class frmBtm : public Window {
  public:
    Label lblStep1{"lblStep1"};
    Label lblStep1Desc{"lblStep1Desc"};
    Button cmdGenerateTest{"cmdGenerateTest"};
    Button cmdPrintTest{"cmdPrintTest"};

    Label lblConfigurations{"lblConfigurations"};
    ListBox lstConfigurations{"lstConfigurations"};
    Button cmdNew{"cmdNew"};
    Button cmdRename{"cmdRename"};
    Button cmdDel{"cmdDel"};

    Label lblStep2{"lblStep2"};
    Label lblStep2Desc{"lblStep2Desc"};
    Label lblTopEdge{"lblTopEdge"};
    ComboBox cmbTopEdge{"cmbTopEdge"};
    Label lblTopEdgeDesc{"lblTopEdgeDesc"};
    Label lblRightEdge{"lblRightEdge"};
    ComboBox cmbRightEdge{"cmbRightEdge"};
    Label lblRightEdgeDesc{"lblRightEdgeDesc"};
    Label lblBottomEdge{"lblBottomEdge"};
    ComboBox cmbBottomEdge{"cmbBottomEdge"};
    Label lblBottomEdgeDesc{"lblBottomEdgeDesc"};
    Label lblLeftEdge{"lblLeftEdge"};
    ComboBox cmbLeftEdge{"cmbLeftEdge"};
    Label lblLeftEdgeDesc{"lblLeftEdgeDesc"};

    Button cmdOk{"cmdOk"};

    frmBtm(Platform& platform, Screen& screen, CalibrationOwner& owner, TestTargetHooks hooks = {});

    // Opens the dialog as the main window does for its button and its menu entry.
    void Open();

    // Fills the controls and the main window's list. The profiles are read the first time only:
    // from then on the list in memory is used.
    void initControls();
    // Puts the stripe's width into the step 1 text, in the current units.
    void SetStep1DescUnits();
    // Refills the main window's cmbCurBtm; the same profile stays selected.
    void fillMainDialog();
    // Sets the four edge lists from the selected profile.
    void UpdateComboboxes();
    // The edge lists and the descriptions for a newly selected profile.
    void UpdateForNewPref();
    // Takes the four edge lists into the selected profile and writes the file.
    void ProcessFormChange();

    // The number of profiles read; 0: no file or an error, -33: no line in it.
    int ReadBorderPrefs();
    // The active profile's trim in inches; iEdge 1 top, 2 right, 3 bottom, 4 left. Throws Error
    // when there is no such edge or no profile is active.
    void GetCurEdgeTrimInches(int iEdge, double& dEdgeInches) const;
    void FillCurEdgeTrimInches(EdgeTrims& adTrim) const;
    // Whether there are only built-in profiles and the active one clips nothing.
    void IsInitialProfile(bool& bResult) const;

    void lstConfigurations_Click();
    void cmdNew_Click();
    void cmdRename_Click();
    void cmdDel_Click();
    void cmdGenerateTest_Click();
    void cmdPrintTest_Click();
    void cmdOk_Click();

  protected:
    void loadHandler() override;
    void closeBox() override;

  private:
    void fillTexts();
    void bindHandlers();
    std::array<ComboBox*, 4> edgeLists(); // top, right, bottom, left
    std::array<Label*, 4> edgeDescriptions();

    void SetDefaultProfiles();
    std::string GetProfileFilePath() const;
    void WriteBorderPrefs();

    bool isSelected() const; // a profile is selected in lstConfigurations
    EdgeProfile& selected();
    const EdgeProfile& active() const;
    std::vector<std::string> profileNames() const;
    void fillConfigurations(int select);
    // After a change of the list: writes the file and refills both lists.
    void listChanged(int select, int activeNow);
    void UpdateDescriptions();

    enum class Announcement { none, shown };
    // Null: it was not wanted, or a message has said why it cannot be made.
    std::shared_ptr<const Image> testTarget(Announcement announcement);
    std::shared_ptr<const Image> makeTestTarget(double heightInches, double widthInches);
    void askAndSave(const Image& image);
    // The chosen path; empty: none.
    std::string getSaveTestFileName(const std::string& defaultName);
    void saveTestTarget(const Image& image, const std::string& name, TileFormat type);

    Platform& platform_;
    CalibrationOwner& owner_;
    TestTargetHooks hooks_;
    std::vector<EdgeProfile> profiles_;
    bool profileFileUnread_ = false; // the file was there and none of its profiles could be taken
    bool loading_ = false;           // controls are being filled: handlers do nothing
    bool working_ = false;           // a test target is being made
};

} // namespace veldara
