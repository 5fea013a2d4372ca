#ifdef __WXMSW__

#include "gui/drawings.h"
#include "gui/folder_list_box.h"
#include "gui/named_accessible.h"
#include "gui/native_text.h"
#include "gui/row_tips.h"

#include <algorithm>

#include <wx/dc.h>
#include <wx/msw/wrapwin.h>
#include <wx/settings.h>

namespace veldara {

namespace {

constexpr int iconSide = 16; // in units of the toolkit
constexpr int indentStep = 12;
constexpr int gap = 5;

// Describes the rows, numbered from 1, to screen readers.
class FolderRows : public NamedAccessible {
  public:
    explicit FolderRows(FolderListBox& list) : NamedAccessible(&list), list_(list) {}

    wxAccStatus GetChildCount(int* count) override {
        *count = static_cast<int>(list_.entries().size());
        return wxACC_OK;
    }

    wxAccStatus GetChild(int child, wxAccessible** object) override {
        *object = child == wxACC_SELF ? this : nullptr; // rows are no objects of their own
        return wxACC_OK;
    }

    wxAccStatus GetName(int child, wxString* name) override {
        if (child == wxACC_SELF) {
            return NamedAccessible::GetName(child, name);
        }
        if (!isRow(child)) {
            return wxACC_INVALID_ARG;
        }
        *name = nativeText(list_.entries()[static_cast<std::size_t>(child - 1)].name);
        return wxACC_OK;
    }

    wxAccStatus GetRole(int child, wxAccRole* role) override {
        *role = child == wxACC_SELF ? wxROLE_SYSTEM_LIST : wxROLE_SYSTEM_LISTITEM;
        return wxACC_OK;
    }

    wxAccStatus GetState(int child, long* state) override {
        if (child == wxACC_SELF) {
            return wxACC_NOT_IMPLEMENTED;
        }
        if (!isRow(child)) {
            return wxACC_INVALID_ARG;
        }
        *state = wxACC_STATE_SYSTEM_SELECTABLE | wxACC_STATE_SYSTEM_FOCUSABLE;
        if (child - 1 == list_.GetSelection()) {
            *state |= wxACC_STATE_SYSTEM_SELECTED;
            *state |= list_.HasFocus() ? wxACC_STATE_SYSTEM_FOCUSED : 0;
        }
        return wxACC_OK;
    }

    wxAccStatus GetLocation(wxRect& place, int child) override {
        if (child == wxACC_SELF) {
            return wxACC_NOT_IMPLEMENTED;
        }
        if (!isRow(child)) {
            return wxACC_INVALID_ARG;
        }
        place = list_.GetItemRect(static_cast<std::size_t>(child - 1));
        place.SetPosition(list_.ClientToScreen(place.GetPosition()));
        return wxACC_OK;
    }

    wxAccStatus GetFocus(int* child, wxAccessible** object) override {
        *object = nullptr;
        *child = list_.HasFocus() ? std::max(0, list_.GetSelection() + 1) : wxACC_SELF;
        return wxACC_OK;
    }

    wxAccStatus GetDefaultAction(int child, wxString* action) override {
        *action = child == wxACC_SELF ? wxString() : wxString("Open");
        return wxACC_OK;
    }

    wxAccStatus DoDefaultAction(int child) override {
        if (!isRow(child)) {
            return wxACC_INVALID_ARG;
        }
        if (list_.onOpen) {
            list_.onOpen(child - 1);
        }
        return wxACC_OK;
    }

  private:
    bool isRow(int child) const {
        return child > 0 && static_cast<std::size_t>(child) <= list_.entries().size();
    }

    FolderListBox& list_;
};

void notify(DWORD event, wxWindow& list, int row) {
    NotifyWinEvent(event, static_cast<HWND>(list.GetHWND()), OBJID_CLIENT, row + 1);
}

} // namespace

void FolderListBox::makeNative(wxWindow* parent, const wxSize& size) {
    Create(parent, wxID_ANY, wxDefaultPosition, size, wxBORDER_THEME);
    closedFolder_ = folderBundle(false, iconSide);
    openFolder_ = folderBundle(true, iconSide);
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
    showTipsOfCutRows(*this, [this](const wxPoint& at) { return cutNameAt(at); });
    Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { openSelected(); });
    Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) {
        notify(EVENT_OBJECT_FOCUS, *this, GetSelection());
        notify(EVENT_OBJECT_SELECTION, *this, GetSelection());
    });
    const auto repaint = [this](wxFocusEvent& event) {
        event.Skip();
        Refresh();
    };
    Bind(wxEVT_SET_FOCUS, repaint);
    Bind(wxEVT_KILL_FOCUS, repaint);
}

wxAccessible* FolderListBox::CreateAccessible() {
    return new FolderRows(*this); // the list owns it
}

void FolderListBox::showRows() {
    SetItemCount(entries_.size());
    SetSelection(current_);
    // The folder itself stays in sight together with the first of those below it.
    if (current_ >= 0) {
        const int last = std::min(current_ + 4, static_cast<int>(entries_.size()) - 1);
        const int seenWhole = std::max(1, GetClientSize().y / OnMeasureItem(0));
        const int first = std::clamp(last + 1 - seenWhole, 0, std::max(0, current_ - 1));
        ScrollToRow(static_cast<std::size_t>(first));
    }
    Refresh();
}

int FolderListBox::selectedRow() const {
    return GetSelection();
}

void FolderListBox::bringIntoSight(int entry) {
    const auto row = static_cast<std::size_t>(entry);
    if (!IsRowVisible(row)) {
        ScrollToRow(row);
    }
}

wxRect FolderListBox::placeOf(int entry) const {
    return GetItemRect(static_cast<std::size_t>(entry));
}

void FolderListBox::DoEnable(bool enable) {
    wxVListBox::DoEnable(enable);
    Refresh();
}

// Where nothing can be chosen, nothing looks chosen.
void FolderListBox::OnDrawBackground(wxDC& dc, const wxRect& rect, std::size_t entry) const {
    if (IsEnabled()) {
        wxVListBox::OnDrawBackground(dc, rect, entry);
    }
}

wxColour FolderListBox::textColour(std::size_t entry) const {
    if (!IsEnabled()) {
        return wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT);
    }
    return wxSystemSettings::GetColour(IsSelected(entry) ? wxSYS_COLOUR_HIGHLIGHTTEXT
                                                         : wxSYS_COLOUR_LISTBOXTEXT);
}

void FolderListBox::OnDrawItem(wxDC& dc, const wxRect& rect, std::size_t entry) const {
    if (entry >= entries_.size()) {
        return;
    }
    const FolderList::Entry& folder = entries_[entry];
    wxBitmap icon = (folder.isOpen ? openFolder_ : closedFolder_).GetBitmapFor(this);
    if (!IsEnabled()) {
        icon = icon.ConvertToDisabled();
    }
    const int left = rect.x + iconLeft(folder);
    dc.DrawBitmap(icon, left, rect.y + (rect.height - icon.GetLogicalSize().y) / 2, true);
    dc.SetFont(GetFont());
    dc.SetTextForeground(textColour(entry));
    const int nameLeft = nameLeftOf(folder);
    const wxString name = wxControl::Ellipsize(nativeText(folder.name), dc, wxELLIPSIZE_END,
                                               GetClientSize().x - nameLeft);
    dc.DrawText(name, rect.x + nameLeft, rect.y + (rect.height - dc.GetCharHeight()) / 2);
}

int FolderListBox::iconLeft(const FolderList::Entry& folder) const {
    return FromDIP(4 + indentStep * folder.depth);
}

int FolderListBox::nameLeftOf(const FolderList::Entry& folder) const {
    return iconLeft(folder) + FromDIP(iconSide + gap);
}

wxString FolderListBox::cutNameAt(const wxPoint& at) const {
    const int row = VirtualHitTest(at.y);
    if (row < 0 || static_cast<std::size_t>(row) >= entries_.size()) {
        return {};
    }
    const FolderList::Entry& folder = entries_[static_cast<std::size_t>(row)];
    const wxString name = nativeText(folder.name);
    const bool cut = GetTextExtent(name).x > GetClientSize().x - nameLeftOf(folder);
    return cut ? name : wxString();
}

wxCoord FolderListBox::OnMeasureItem(std::size_t) const {
    return std::max(GetCharHeight(), FromDIP(iconSide)) + FromDIP(4);
}

} // namespace veldara

#endif
