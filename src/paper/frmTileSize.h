// The paper and margins dialog: units, paper and margins of the sheets, and the print size of a
// tile that results. Its paper catalogues, with what was applied to every paper, are kept for
// the whole run; its controls are filled again whenever it is loaded.
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
    Frame fraUnits{"fraUnits"};
    OptionButton opbInches{"opbInches"};
    OptionButton opbMm{"opbMm"};

    Frame fraPaperSize{"fraPaperSize"};
    ListBox lstPaperSize{"lstPaperSize"};
    Label lblWidth{"lblWidth"};
    TextBox txtWidth{"txtWidth"};
    Label lblHeight{"lblHeight"};
    TextBox txtHeight{"txtHeight"};
    std::array<Label, 2> lblUnits{
        {Label("lblUnits0"), Label("lblUnits1")}}; // behind the width and the height

    Frame fraMargins{"fraMargins"};
    std::array<Label, 4> lblMargins{{Label("lblMargins0"), Label("lblMargins1"),
                                     Label("lblMargins2"),
                                     Label("lblMargins3")}}; // top, right, bottom, left
    std::array<ComboBox, 4> cmbMargins{
        {ComboBox("cmbMargins0", true), ComboBox("cmbMargins1", true),
         ComboBox("cmbMargins2", true), ComboBox("cmbMargins3", true)}};
    Label lblMarginUnits{"lblMarginUnits"};
    CheckBox chkLock{"chkLock"};
    Button cmdBorderless{"cmdBorderless"};
    Button cmdReset{"cmdReset"};
    CheckBox chkBorderless{"chkBorderless"};

    Frame fraResults{"fraResults"};
    Label lblSizeWithBordersCaption{"lblSizeWithBordersCaption"};
    Label lblSizeWithBorders{"lblSizeWithBorders"};
    Label lblSizeWithoutBordersCaption{"lblSizeWithoutBordersCaption"};
    Label lblSizeWithoutBorders{"lblSizeWithoutBorders"};

    Button cmdOk{"cmdOk"};
    Button cmdApply{"cmdApply"};
    Button cmdCancel{"cmdCancel"};

    frmTileSize(Platform& platform, Screen& screen, PaperOwner& owner);

    // Opens the dialog again, as the main window does for its button and its menu entry: unloads,
    // loads, takes the margin lock and the current paper preference line, and shows it modally.
    void OpenWith(const std::string& sRegLine, bool marginsLocked);

    // Chooses another paper of the line's units and accepts it, as a person does with the list and
    // OK, without the dialog being seen.
    void ApplyPaper(const std::string& sRegLine, bool marginsLocked, int paper);

    // What was accepted, of every paper.
    const PaperTables& papers() const { return applied_; }

    // Builds both catalogues again and selects the first photo paper in inches. For the start of
    // the program: what was applied to any paper is forgotten.
    void initPaperSizes();

    // Makes a paper preference line the current state; an invalid line gives the state of
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

    // What the boxes hold. A box that still shows a stored length means its unrounded value.
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
    PaperTables applied_;              // what was accepted for every paper
    PaperTables current_;              // what the dialog shows and works on
    std::optional<Units> listedUnits_; // of the margin lists
    bool loading_ = false;             // controls are being filled: handlers do nothing
};

} // namespace veldara
