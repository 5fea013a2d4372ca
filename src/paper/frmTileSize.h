// The paper and margins dialog: units, paper and margins of the sheets, and the print size of a
// tile that results. Its paper catalogues, with what was applied to every paper, are its memory for
// the whole run; its controls are filled afresh whenever it is loaded.
#pragma once

#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/window.h"
#include "paper/paper_catalogue.h"
#include "paper/paper_check.h"
#include "platform/measures.h"
#include "platform/platform.h"

#include <array>
#include <optional>
#include <string>

namespace veldara {

// What the paper dialog needs of the main window.
class PaperOwner {
  public:
    virtual ~PaperOwner() = default;

    virtual double getConstMinTileSize() const = 0; // inches
    virtual double getConstMaxTileSize() const = 0; // inches
    // Takes over the accepted values: lengths in the units given (0 inches, 1 millimetres), and
    // sets iNewVal to 1.
    virtual void setNewTileVals(const std::string& sNewCurPaperName, int iNewCurUnits,
                                double dNewCurTileWidth, double dNewCurTileHeight,
                                double dNewCurPaperWidth, double dNewCurPaperHeight,
                                const std::string& sNewPaperRegLine, int& iNewVal) = 0;
    virtual void setWhMarginLockedVal(int iLocked) = 0;
};

class frmTileSize : public Window {
  public:
    Frame fraUnits;
    OptionButton opbInches;
    OptionButton opbMm;

    Frame fraPaperSize;
    ListBox lstPaperSize;
    Label lblWidth;
    TextBox txtWidth;
    Label lblHeight;
    TextBox txtHeight;
    std::array<Label, 2> lblUnits; // behind the width and the height

    Frame fraMargins;
    std::array<Label, 4> lblMargins; // top, right, bottom, left
    std::array<ComboBox, 4> cmbMargins{
        {ComboBox(true), ComboBox(true), ComboBox(true), ComboBox(true)}};
    Label lblMarginUnits;
    CheckBox chkLock;
    Button cmdBorderless;
    Button cmdReset;
    CheckBox chkBorderless;

    Frame fraResults;
    Label lblSizeWithBordersCaption;
    Label lblSizeWithBorders;
    Label lblSizeWithoutBordersCaption;
    Label lblSizeWithoutBorders;

    Button cmdOk;
    Button cmdApply;
    Button cmdCancel;

    frmTileSize(Platform& platform, Screen& screen, PaperOwner& owner);

    // Opens the dialog afresh, as the main window does for its button and its menu entry: unloads,
    // loads, takes the margin lock and the current paper preference line, and shows it modally.
    void OpenWith(const std::string& sRegLine, bool marginsLocked);

    // Builds both catalogues anew and rests on the first photo paper in inches. For the start of
    // the program: what was applied to any paper is forgotten.
    void initPaperSizes();

    // Makes a paper preference line the current state; a line that is not right gives the state of
    // initPaperSizes.
    void setPrefFromRegLine(const std::string& sRegLine);

    // The current paper: sizes in the current units (0 inches, 1 millimetres).
    void getWhuValues(double& dGetTileWidth, double& dGetTileHeight, double& dGetPaperWidth,
                      double& dGetPaperHeight, int& iGetUnits, std::string& sGetPaperName) const;

    void setMarginLock(bool locked);

    void opbInches_Click();
    void opbMm_Click();
    void lstPaperSize_Click();
    void txtWidth_Change();
    void txtHeight_Change();
    void cmbMargins_Change(int Index);
    void chkLock_Click();
    void chkBorderless_Click();
    void cmdBorderless_Click();
    void cmdReset_Click();
    void cmdOk_Click();
    void cmdApply_Click();
    void cmdCancel_Click();

  protected:
    void loadHandler() override;
    void closeBox() override;

  private:
    void fillTexts();
    void bindHandlers();

    void showAll();
    void showMarginLists();
    void showPapers();
    void showEntries();
    void setMarginTexts(const Margins& margins);
    void showResults();
    void showBorderless(const PaperEntries& entries);

    // What stands in the boxes. A box that still shows a stored length stands for it unrounded.
    PaperEntries readEntries() const;
    PaperCheck check(const PaperEntries& entries, Units units) const;
    // The same of a paper with its stored margins; shows what is wrong with it.
    bool isUsable(const PaperRecord& paper, Units units);
    void entriesChanged();
    void store(const PaperEntries& entries);
    void chooseUnits(Units units);
    bool apply();
    void close();

    Platform& platform_;
    PaperOwner& owner_;
    PaperTables applied_;              // what was accepted, of every paper
    PaperTables current_;              // what the dialog shows and works on
    std::optional<Units> listedUnits_; // of the margin lists
    bool loading_ = false;             // controls are being filled: handlers do nothing
};

} // namespace veldara
