#include "gui/folder_list_box.h"

#include "gui/drawings.h"
#include "gui/inner_container.h"
#include "gui/native_text.h"

#include <algorithm>

#include <wx/dc.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>

namespace veldara {

namespace {

constexpr int iconSide = 16; // in units of the toolkit
constexpr int indentStep = 12;
constexpr int gap = 5;

} // namespace

FolderListBox* FolderListBox::make(wxWindow* parent, const wxString& name, const wxSize& size) {
#ifdef __WXMSW__
    return new FolderListBox(parent, nullptr, name, size);
#else
    // The frame is a window a little larger than the list, in the colour of a list's edge.
    auto* frame = new InnerContainer<wxPanel>(parent);
    const wxColour face = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
    frame->SetBackgroundColour(face.ChangeLightness(face.GetLuminance() < 0.5 ? 130 : 81));
    auto* list = new FolderListBox(frame, frame, name, size);
    auto* edge = new wxBoxSizer(wxVERTICAL);
    edge->Add(list, wxSizerFlags(1).Expand().Border(wxALL, 1));
    frame->SetSizer(edge);
    return list;
#endif
}

FolderListBox::FolderListBox(wxWindow* parent, wxWindow* frame, const wxString& name,
                             const wxSize& size)
    : wxVListBox(parent, wxID_ANY, wxDefaultPosition, size,
                 frame == nullptr ? wxBORDER_THEME : wxBORDER_NONE),
      frame_(frame), closedFolder_(folderBundle(false, iconSide)),
      openFolder_(folderBundle(true, iconSide)) {
    SetName(name);
    SetMinSize(size);
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
    Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { openSelected(); });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER) {
            openSelected();
        } else if (event.GetKeyCode() == WXK_BACK) {
            openParent();
        } else {
            event.Skip();
        }
    });
    // Enter would press the window's default button before the list sees it.
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER) {
            openSelected();
        } else {
            event.Skip();
        }
    });
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        Refresh();
    });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        Refresh();
    });
}

void FolderListBox::showEntries(const std::vector<FolderList::Entry>& entries, int current) {
    entries_ = entries;
    current_ = current;
    SetItemCount(entries_.size());
    SetSelection(current);
    // The folder itself stays in sight together with the first of those below it.
    if (current >= 0) {
        const int last = std::min(current + 4, static_cast<int>(entries_.size()) - 1);
        const int seenWhole = std::max(1, GetClientSize().y / OnMeasureItem(0));
        const int first = std::clamp(last + 1 - seenWhole, 0, std::max(0, current - 1));
        ScrollToRow(static_cast<std::size_t>(first));
    }
    Refresh();
}

int FolderListBox::indexOf(const std::string& name) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(),
                     [&](const FolderList::Entry& entry) { return entry.name == name; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
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
    wxBitmap icon = (folder.onTheWay ? openFolder_ : closedFolder_).GetBitmapFor(this);
    if (!IsEnabled()) {
        icon = icon.ConvertToDisabled();
    }
    const int left = rect.x + FromDIP(4 + indentStep * folder.depth);
    const wxSize iconSize = icon.GetLogicalSize();
    dc.DrawBitmap(icon, left, rect.y + (rect.height - iconSize.y) / 2, true);
    dc.SetFont(GetFont());
    dc.SetTextForeground(textColour(entry));
    const wxString name = nativeText(folder.name);
    const int textTop = rect.y + (rect.height - dc.GetCharHeight()) / 2;
    dc.DrawText(name, left + iconSize.x + FromDIP(gap), textTop);
}

wxCoord FolderListBox::OnMeasureItem(std::size_t) const {
    return std::max(GetCharHeight(), FromDIP(iconSide)) + FromDIP(4);
}

void FolderListBox::openSelected() {
    if (GetSelection() != wxNOT_FOUND && onOpen) {
        onOpen(GetSelection());
    }
}

void FolderListBox::openParent() {
    if (current_ > 0 && onOpen) {
        onOpen(current_ - 1);
    }
}

} // namespace veldara
