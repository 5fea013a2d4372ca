#include "gui/dialog_view.h"

namespace veldara {

DialogView::DialogView(Window& model, wxWindow* parent)
    : View(model, new wxDialog(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxDEFAULT_DIALOG_STYLE)),
      dialog_(static_cast<wxDialog*>(&native())) {
    dialog_->SetEscapeId(wxID_NONE); // the model decides what Escape does
    closeOnEscape();
}

void DialogView::finish(wxSizer* contents) {
    setContents(*dialog_, contents);
    fitAndCentre();
}

} // namespace veldara
