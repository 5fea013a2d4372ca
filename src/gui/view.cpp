#include "gui/view.h"

#include "gui/drawings.h"

#include <wx/sizer.h>

namespace veldara {

View::View(Window& model, wxTopLevelWindow* native) : native_(native), bindings_(*native) {
    native_->SetName(model.name());
    native_->SetIcons(programIcons());
    bindings_.window(model);
    native_->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        event.Veto(); // the model says whether and how the window goes
        const std::function<void()> close = onClose; // this view may go meanwhile
        if (close) {
            close();
        }
    });
}

View::~View() {
    retire();
    // It goes at the next idle moment; what the desktop says to it until then (that it was moved)
    // would reach handlers of a view that is no more.
    native_->SetEvtHandlerEnabled(false);
    native_->Destroy();
}

void View::retire() {
    bindings_.release();
    onClose = {};
    native_->Hide();
}

void View::closeOnEscape() {
    native_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers()) {
            native_->Close();
        } else {
            event.Skip();
        }
    });
}

void View::fitAndCentre() {
    native_->GetSizer()->SetSizeHints(native_);
    native_->Layout(); // a window whose own size stays the same would not do it by itself
    native_->CentreOnParent();
}

} // namespace veldara
