// The message box where the desktop has none of its own: an icon, a text that wraps, and the
// buttons, each with a key.
#pragma once

#include "platform/dialogs.h"

#include <wx/dialog.h>

namespace veldara {

class MessageDialog : public wxDialog {
  public:
    MessageDialog(wxWindow* parent, const Message& message);

    // Shows it and returns what was pressed. Escape and the close box answer Cancel, or No where
    // there is no Cancel, or OK where there is nothing else.
    Answer ask();

  private:
    wxButton* addButton(const wxString& label, const wxString& name, Answer answer);
    wxSizer* buttonRow(const Message& message);

    Answer answer_ = Answer::ok;
};

} // namespace veldara
