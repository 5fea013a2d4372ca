// Sheets for printing: each sheet as it will come out of the printer, and the
// whole poster beside it; what is printed on the sheets is chosen here, and the
// document is saved from here.
#pragma once

#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "output/frmMsg.h"
#include "output/frmSimpleMsg.h"
#include "platform/image/turn.h"
#include "platform/platform.h"
#include "sheets/sheet_layout.h"
#include "sheets/stored_choices.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace veldara {

// What the window needs of the main window.
class SheetsOwner : public StoredChoices {
  public:
    // The poster as it is laid out now, without the choices of this window;
    // nothing while it cannot be made. Throws Error.
    virtual std::optional<SheetJob> posterSheets() const = 0;
    virtual std::filesystem::path photoPath() const = 0;
    virtual Turn photoTurn() const = 0; // the user's, on top of the camera's tag
    // A small picture of the whole photo as it is turned now.
    virtual std::shared_ptr<const Image> smallPhoto() const = 0;
    // Prints the sheets, with the system's dialog and messages of its own. True: there is no
    // printer, and the person wants the document instead.
    virtual bool printSheets(const SheetJob& job) = 0;
};

class frmSheets : public Window {
  public:
    Label lblShown{"lblShown"};
    Button cmdPrevious{"cmdPrevious"};
    ComboBox cmbShown{"cmbShown"};
    Button cmdNext{"cmdNext"};
    Picture picSheet{"picSheet"};
    Label lblPoster{"lblPoster"};
    Picture picPoster{"picPoster"};
    Frame fraChoices{"fraChoices"};
    Label lblOverlap{"lblOverlap"};
    ComboBox cmbOverlap{"cmbOverlap", true};
    Label lblMarks{"lblMarks"};
    ComboBox cmbMarks{"cmbMarks"};
    CheckBox chkLabels{"chkLabels"};
    CheckBox chkGuide{"chkGuide"};
    Label lblSheets{"lblSheets"};
    TextBox txtSheets{"txtSheets"};
    Label lblNote{"lblNote"}; // what does not fit, or cannot be read
    Button cmdPrint{"cmdPrint"};
    Button cmdSavePdf{"cmdSavePdf"};
    Button cmdClose{"cmdClose"};

    frmSheets(Platform& platform, Screen& screen, SheetsOwner& owner, frmMsg& progress,
              frmSimpleMsg& result);

    // Shows the window modally for the poster as it is now; false when it cannot
    // be made.
    bool Open();

    // The poster as it is now with the choices that are stored; nothing when it cannot be made.
    std::optional<SheetJob> storedJob() const;

    // Asks for a file and writes the document of the poster; the window need not be shown.
    void SaveDocument(const SheetJob& job);

    // The poster with this window's choices; nothing when they cannot be read.
    std::optional<SheetJob> chosenJob() const;

  protected:
    void loadHandler() override;
    void unloadHandler() override;
    // While a document is written its window stays: the progress window is the
    // way to end it.
    void closeBox() override;

  private:
    void fillTexts();
    void restoreChoices();
    void storeChoices();
    void fillOverlaps();
    void fillShown();
    void choicesChanged();
    void readChoices();
    void showPage();
    void stepShown(int by);
    int shownSheet() const; // 0: the guide
    void setControlsEnabled(bool enabled);
    double storedOverlap() const; // millimetres
    int storedMarks() const;
    std::string askForDocument() const;
    void work(Button& pressed, const std::function<void()>& act);
    void cmdPrint_Click();
    void cmdSavePdf_Click();
    // Returns what tells the person how it ended, to be called when the window is in order again.
    std::function<void()> writeDocument(const SheetJob& job, const std::filesystem::path& file);
    std::function<void()> endRun(const Message& message);

    Platform& platform_;
    SheetsOwner& owner_;
    frmMsg& progress_;
    frmSimpleMsg& result_;
    std::optional<SheetJob> job_;    // as the main window has it
    std::optional<SheetJob> chosen_; // with the choices
    bool filling_ = false;
    bool writing_ = false;
};

} // namespace veldara
