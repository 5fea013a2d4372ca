#include "gui/folder_list_box.h"

#include <algorithm>

namespace veldara {

FolderListBox::FolderListBox(wxWindow* parent, const wxString& name, const wxSize& size) {
    makeNative(parent, size);
    SetName(name);
    SetMinSize(size);
    // Seen before the list and the window's default button see them.
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const int key = event.HasAnyModifiers() ? WXK_NONE : event.GetKeyCode();
        if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) {
            openSelected();
        } else if (key == WXK_BACK) {
            openParent();
        } else {
            event.Skip();
        }
    });
}

void FolderListBox::showEntries(const std::vector<FolderList::Entry>& entries, int current) {
    entries_ = entries;
    current_ = current;
    showRows();
}

int FolderListBox::indexOf(const std::string& name) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(),
                     [&](const FolderList::Entry& entry) { return entry.name == name; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

void FolderListBox::openSelected() {
    const int row = selectedRow();
    if (row >= 0 && onOpen) {
        onOpen(row);
    }
}

void FolderListBox::openParent() {
    if (current_ > 0 && onOpen) {
        onOpen(current_ - 1);
    }
}

} // namespace veldara
