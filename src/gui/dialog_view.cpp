#include "gui/dialog_view.h"

#include "gui/inner_container.h"

#include <algorithm>

#include <wx/choice.h>
#include <wx/display.h>
#include <wx/scrolwin.h>
#include <wx/settings.h>

namespace veldara {

namespace {

// What a dialog can have of the screen that it comes up on, without its title and borders.
wxSize roomFor(const wxDialog& dialog) {
    const wxWindow* parent = dialog.GetParent();
    const int found = parent == nullptr ? wxNOT_FOUND : wxDisplay::GetFromWindow(parent);
    const wxDisplay display(static_cast<unsigned>(std::max(found, 0)));
    constexpr int titleHeight = 30; // no system tells it before the window is there
    constexpr int borders = 12;
    return display.GetClientArea().GetSize() - dialog.FromDIP(wxSize(borders, titleHeight));
}

// The first widget, in the order of Tab, that takes the keyboard; null when there is none. A
// drop-down list is passed over: on Linux it keeps its keys, Escape too, from the toolkit.
wxWindow* firstField(wxWindow& parent) {
    for (wxWindow* child : parent.GetChildren()) {
        if (!child->IsShown() || !child->IsEnabled()) {
            continue;
        }
        if (wxWindow* inside = firstField(*child)) {
            return inside;
        }
        if (child->GetChildren().empty() && child->AcceptsFocusFromKeyboard() &&
            dynamic_cast<wxChoice*>(child) == nullptr) {
            return child;
        }
    }
    return nullptr;
}

} // namespace

DialogView::DialogView(Window& model, wxWindow* parent)
    : View(model, new wxDialog(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxDEFAULT_DIALOG_STYLE)),
      dialog_(static_cast<wxDialog*>(&native())) {
    dialog_->SetEscapeId(wxID_NONE); // the model decides what Escape does
    closeOnEscape();
}

wxSize DialogView::sizeFor(wxSizer* contents) const {
    const int edges = 2 * dialog_->FromDIP(spacing::windowEdge);
    return contents->CalcMin() + wxSize(edges, edges);
}

void DialogView::narrow(wxWindow& widget, wxSizer* contents) {
    const int excess = sizeFor(contents).x - roomFor(*dialog_).x;
    if (excess > 0) {
        const wxSize smallest = widget.GetMinSize();
        widget.SetMinSize(wxSize(std::max(1, smallest.x - excess), smallest.y));
    }
}

void DialogView::finish(wxSizer* contents) {
    const wxSize needed = sizeFor(contents);
    const wxSize room = roomFor(*dialog_);
    if (needed.x <= room.x && needed.y <= room.y) {
        setContents(*dialog_, contents);
    } else {
        scrollContents(contents, needed, room);
    }
    fitAndCentre();
}

void DialogView::scrollContents(wxSizer* contents, wxSize needed, wxSize room) {
    const wxWindowList widgets = dialog_->GetChildren(); // a copy: the list changes
    auto* page = new InnerContainer<wxScrolledWindow>(dialog_);
    for (wxWindow* widget : widgets) {
        widget->Reparent(page);
    }
    setContents(*page, contents);
    const int step = dialog_->FromDIP(8);
    page->SetScrollRate(step, step);
    // A scroll bar takes its room from the other direction.
    const int bar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, dialog_);
    page->SetMinSize(wxSize(std::min(needed.x + (needed.y > room.y ? bar : 0), room.x),
                            std::min(needed.y + (needed.x > room.x ? bar : 0), room.y)));
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(page, wxSizerFlags(1).Expand());
    dialog_->SetSizer(all);
    // Where the widgets of a dialog are not its own children it comes up without the keyboard.
    dialog_->Bind(wxEVT_ACTIVATE, [this, page](wxActivateEvent& event) {
        event.Skip();
        if (event.GetActive() && !hadKeyboard_) {
            hadKeyboard_ = true;
            dialog_->CallAfter([page] {
                if (wxWindow* first = firstField(*page)) {
                    first->SetFocus();
                }
            });
        }
    });
}

} // namespace veldara
