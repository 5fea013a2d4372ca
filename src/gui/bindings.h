// Makes the native widget for a control model and keeps the two in step: the model's changes are
// shown, the user's acts go in through the model's user doors. Nothing is decided here.
#pragma once

#include "controls/browsing.h"
#include "controls/controls.h"
#include "controls/lists.h"
#include "controls/picture.h"
#include "controls/window.h"
#include "gui/folder_list_box.h"
#include "gui/link_text.h"
#include "gui/picture_box.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <wx/timer.h>
#include <wx/wx.h>

namespace veldara {

// A native widget carries the name of its model's member ("cmbTilesWide"), so that it can be found
// in the running program. The letter that some functions take is the key that reaches the widget
// together with Alt; it should stand in the model's caption.
class Bindings {
  public:
    explicit Bindings(wxTopLevelWindow& window);
    ~Bindings() { release(); }
    Bindings(const Bindings&) = delete;
    Bindings& operator=(const Bindings&) = delete;

    // Takes all observers and timers away; the widgets stay as they are.
    void release();

    void window(Window& model);
    // key: what the entry can be reached by from anywhere in the window ("F1"), if anything.
    void menuItem(wxMenu& menu, MenuItem& model, const std::string& name,
                  const std::string& key = {});
    void menu(wxMenuBar& bar, wxMenu* menu, MenuItem& model);
    void timer(Timer& model);

    wxStaticText* label(wxWindow* parent, Label& model, const std::string& name);
    // A label whose text changes: it keeps at least the width of the sample text, so that nothing
    // moves when it does.
    wxStaticText* valueLabel(wxWindow* parent, Label& model, const std::string& name,
                             const wxString& sample);
    // A label whose text may be long: it is wrapped at a width in units at 100%, and has room for
    // so many lines; for more of them its window grows.
    wxStaticText* paragraph(wxWindow* parent, Label& model, const std::string& name, int width,
                            int lines);
    // The label of another widget, which Alt and the letter give the keyboard.
    wxStaticText* labelFor(wxWindow& target, wxWindow* parent, Label& model,
                           const std::string& name, char mnemonic);
    // A key for a widget that has no label of its own.
    void mnemonic(char letter, wxWindow& target);

    wxStaticBox* frame(wxWindow* parent, Frame& model, const std::string& name);
    wxButton* button(wxWindow* parent, Button& model, const std::string& name, char mnemonic);
    wxCheckBox* checkBox(wxWindow* parent, CheckBox& model, const std::string& name, char mnemonic);
    wxRadioButton* option(wxWindow* parent, OptionButton& model, const std::string& name,
                          char mnemonic, bool firstOfGroup);
    wxChoice* choice(wxWindow* parent, ComboBox& model, const std::string& name);
    wxComboBox* freeCombo(wxWindow* parent, ComboBox& model, const std::string& name);
    wxListBox* listBox(wxWindow* parent, ListBox& model, const std::string& name,
                       const wxSize& size);
    wxTextCtrl* textBox(wxWindow* parent, TextBox& model, const std::string& name);
    wxSlider* slider(wxWindow* parent, ScrollBar& model, const std::string& name);
    wxChoice* driveList(wxWindow* parent, DriveList& model, const std::string& name);
    FolderListBox* folderList(wxWindow* parent, FolderList& model, const std::string& name,
                              const wxSize& size);
    LinkText* link(wxWindow* parent, LinkLabel& model, const std::string& name, int width);
    PictureBox* picture(wxWindow* parent, Picture& model, const std::string& name,
                        const wxSize& smallest, PictureBox::Keyboard keyboard,
                        PictureBox::Ground ground);

    // Pictures that lie over each other: the first one takes the mouse and the keyboard, and what
    // is shown is the visible one that stands where the first one stands now.
    PictureBox* pictureStack(wxWindow* parent, const std::vector<Picture*>& models,
                             const std::string& name, const wxSize& smallest,
                             PictureBox::Keyboard keyboard);

    // A picture box whose place and size its window model says; the view puts it there.
    PictureBox* placedPicture(wxWindow* parent, Picture& model, const std::string& name);

    // Raised after a link's words have changed.
    std::function<void()> onLinkChanged;
    // Raised after a control has come or gone, for windows that fit themselves to what is visible.
    std::function<void()> onVisibilityChanged;

  private:
    using Sync = std::function<void(Property)>;

    void follow(Control& model, Sync sync);
    void followWidget(Control& model, wxWindow& widget, Sync more);
    void syncCommon(const Control& model, wxWindow& widget, Property property);
    PictureBox* pictureBox(wxWindow* parent, Picture& model, const std::string& name,
                           const wxSize& smallest, PictureBox::Keyboard keyboard,
                           PictureBox::Ground ground);
    void reclaimSelectedEntry(ListBox& model, wxListBox& list);
    void later(std::function<void()> act);
    void applyPointer(Pointer pointer);
    bool focusByLetter(const wxKeyEvent& event);

    wxTopLevelWindow& window_;
    std::vector<Control*> followed_;
    std::vector<std::unique_ptr<wxTimer>> timers_;
    std::vector<PictureBox*> pictureBoxes_;
    std::map<int, wxWindow*> letters_;
    // Acts that were put off look at this: it is false when the widgets are gone.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace veldara
