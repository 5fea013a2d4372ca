// What the dialogs' views have in common: a dialog that Escape closes, made of one panel's worth of
// contents.
#pragma once

#include "gui/layout.h"
#include "gui/view.h"

#include <wx/dialog.h>

namespace veldara {

class DialogView : public View {
  protected:
    DialogView(Window& model, wxWindow* parent);

    wxDialog* dialog() { return dialog_; }
    // The button that Enter presses.
    void setDefault(wxButton* button) { button->SetDefault(); }
    // Takes from a widget's smallest width what the contents are wider than the screen.
    void narrow(wxWindow& widget, wxSizer* contents);
    // Adds the contents, fits the dialog to them and centres it on its parent. Contents that are
    // larger than the screen can be scrolled.
    void finish(wxSizer* contents);

  private:
    wxSize sizeFor(wxSizer* contents) const;
    void scrollContents(wxSizer* contents, wxSize needed, wxSize room);

    wxDialog* dialog_;
    bool hadKeyboard_ = false; // of contents that are scrolled
};

} // namespace veldara
