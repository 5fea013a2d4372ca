// Makes the native widget for a control model and synchronizes the two: changes of the model are
// shown, input of the user goes to the model's userXxx functions. Nothing is decided here.
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
#include <utility>
#include <vector>

#include <wx/timer.h>
#include <wx/wx.h>

namespace veldara {

// A native widget carries the name of its model ("cmbTilesWide"), so that it can be found
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
    void menuItem(wxMenu& menu, MenuItem& model, const std::string& key = {});
    // An entry with a check. changed: called with every new state.
    void checkItem(wxMenu& menu, CheckBox& model, std::function<void(bool)> changed);
    void menu(wxMenuBar& bar, wxMenu* menu, const MenuItem& model);
    // A submenu whose entries are filled from the model. opener: the menu of the bar that it is in.
    void listMenu(wxMenu& opener, ListMenu& model);
    // A key that works anywhere in the window: modifiers as in wxKeyEvent::GetModifiers().
    void shortcut(int modifiers, int key, std::function<void()> act);
    void timer(Timer& model);

    // The letter of a label is underlined; mnemonic() says what it reaches.
    wxStaticText* label(wxWindow* parent, Label& model, char letter = 0);
    // The label of the field that is created next, which Alt and the letter give the keyboard.
    // Screen readers read it as the field's name.
    wxStaticText* labelForNext(wxWindow* parent, Label& model, char letter);
    // A label whose text changes: it keeps at least the width of the sample text, so that nothing
    // moves when it does. A text that is too long ends in "...", and is whole in the tool tip.
    wxStaticText* valueLabel(wxWindow* parent, Label& model, const wxString& sample);
    // The same, and screen readers speak each new value behind its caption.
    wxStaticText* liveLabel(wxWindow* parent, const Label& caption, Label& model,
                            const wxString& sample);
    // A label whose text may be long: it is wrapped at a width in units at 100%, and has room for
    // so many lines; for more of them its window grows.
    wxStaticText* paragraph(wxWindow* parent, Label& model, int width, int lines);
    // A key for a widget. Every letter can be given once in a window.
    void mnemonic(char letter, wxWindow& target);

    wxStaticBox* frame(wxWindow* parent, Frame& model);
    wxButton* button(wxWindow* parent, Button& model, char mnemonic);
    wxCheckBox* checkBox(wxWindow* parent, CheckBox& model, char mnemonic);
    wxRadioButton* option(wxWindow* parent, OptionButton& model, char mnemonic, bool firstOfGroup);
    wxChoice* choice(wxWindow* parent, ComboBox& model);
    wxComboBox* freeCombo(wxWindow* parent, ComboBox& model);
    wxListBox* listBox(wxWindow* parent, ListBox& model, const wxSize& size);
    wxTextCtrl* textBox(wxWindow* parent, TextBox& model);
    wxSlider* slider(wxWindow* parent, ScrollBar& model);
    wxChoice* driveList(wxWindow* parent, DriveList& model);
    FolderListBox* folderList(wxWindow* parent, FolderList& model, const wxSize& size);
    LinkText* link(wxWindow* parent, LinkLabel& model, int width);
    PictureBox* picture(wxWindow* parent, Picture& model, const wxSize& smallest,
                        PictureBox::Keyboard keyboard, PictureBox::Ground ground);

    // Pictures that lie over each other: the first one takes the mouse and the keyboard, and what
    // is shown is the visible one that stands where the first one stands now.
    PictureBox* pictureStack(wxWindow* parent, const std::vector<Picture*>& models,
                             const wxSize& smallest, PictureBox::Keyboard keyboard);

    // A picture box whose place and size its window model says; the view puts it there.
    PictureBox* placedPicture(wxWindow* parent, Picture& model);

    // Raised after the window model has moved its controls (Property::range).
    std::function<void()> onLayoutChanged;
    // Raised after a link's words have changed.
    std::function<void()> onLinkChanged;
    // Raised after a control has come or gone, for windows that fit themselves to what is visible.
    std::function<void()> onVisibilityChanged;

  private:
    using Sync = std::function<void(Property)>;

    void follow(Control& model, Sync sync);
    void followWidget(Control& model, wxWindow& widget, Sync more);
    void followField(Control& model, wxWindow& widget, Sync more);
    wxStaticText* valueText(wxWindow* parent, Label& model, const wxString& sample,
                            const std::function<void(wxStaticText&)>& changed);
    void speakLater(wxWindow& widget, const wxString& text);
    void claimLetter(char letter);
    // Alt and the letter press a button, or give a box its other state.
    void pressByLetter(char letter, wxWindow& native, const std::function<void()>& press);
    void syncCommon(const Control& model, wxWindow& widget, Property property);
    PictureBox* pictureBox(wxWindow* parent, Picture& model, const wxSize& smallest,
                           PictureBox::Keyboard keyboard, PictureBox::Ground ground);
    void reclaimSelectedEntry(ListBox& model, wxListBox& list);
    void chooseByKeys(ListBox& model, wxListBox& list);
    void choose(ListBox& model, wxListBox& list);
    void zoomByKeys(ScrollBar& model, wxSlider& slider);
    bool runShortcut(const wxKeyEvent& event);
    static void fillListMenu(wxMenu& menu, ListMenu& model);
    void later(std::function<void()> act);
    void applyPointer(Pointer pointer);
    bool focusByLetter(const wxKeyEvent& event);

    wxTopLevelWindow& window_;
    std::vector<Control*> followed_;
    std::vector<std::unique_ptr<wxTimer>> timers_;
    std::vector<PictureBox*> pictureBoxes_;
    std::map<int, wxWindow*> letters_; // null: the native widget handles its letter itself
    struct PendingLabel {
        wxStaticText* native = nullptr;
        const Label* model = nullptr;
        char letter = 0;
    };
    PendingLabel pendingLabel_;
    std::vector<std::pair<wxWindow*, wxString>> unspoken_;
    std::map<std::pair<int, int>, std::function<void()>> shortcuts_; // by modifiers and key
    // Deferred actions check this: false once the widgets are gone.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace veldara
