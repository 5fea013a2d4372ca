#ifndef __WXMSW__

#include "gui/drawings.h"
#include "gui/folder_list_box.h"
#include "gui/native_text.h"
#include "gui/row_tips.h"

#include <algorithm>

#include <gtk/gtk.h>

namespace veldara {

namespace {

constexpr int iconSide = 16; // in units of the toolkit
constexpr int indentStep = 12;
constexpr int closedIcon = 0; // places in the list of icons
constexpr int openIcon = 1;

} // namespace

void FolderListBox::makeNative(wxWindow* parent, const wxSize& size) {
    Create(parent, wxID_ANY, wxDefaultPosition, size, wxDV_SINGLE | wxDV_NO_HEADER);
    wxWithImages::Images icons;
    icons.push_back(folderBundle(false, iconSide));
    icons.push_back(folderBundle(true, iconSide));
    SetImages(icons);
    // The one column takes the whole width, however little it asks for.
    GetColumn(0)->SetWidth(1);
    ellipsizeRows(GtkGetTreeView());
    // The toolkit lets the names of such a tree be edited, and a double click would begin that.
    GetColumn(0)->GetRenderer()->SetMode(wxDATAVIEW_CELL_INERT);
    gtk_tree_view_set_show_expanders(GTK_TREE_VIEW(GtkGetTreeView()), FALSE);
    gtk_tree_view_set_level_indentation(GTK_TREE_VIEW(GtkGetTreeView()), indentStep);
    Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent&) { openSelected(); });
    Bind(wxEVT_DATAVIEW_ITEM_COLLAPSING, [](wxDataViewEvent& event) { event.Veto(); });
}

void FolderListBox::showRows() {
    DeleteAllItems();
    rows_.clear();
    std::vector<wxDataViewItem> parents{wxDataViewItem()}; // of each depth
    for (const FolderList::Entry& entry : entries_) {
        const auto depth = std::min(static_cast<std::size_t>(entry.depth), parents.size() - 1);
        parents.resize(depth + 1);
        const wxString name = nativeText(entry.name);
        rows_.push_back(entry.isOpen ? AppendContainer(parents.back(), name, openIcon, openIcon)
                                     : AppendItem(parents.back(), name, closedIcon));
        if (entry.isOpen) {
            parents.push_back(rows_.back());
        }
    }
    for (const wxDataViewItem& folder : parents) {
        if (folder.IsOk()) {
            Expand(folder);
        }
    }
    if (current_ >= 0) {
        Select(rows_[static_cast<std::size_t>(current_)]);
        scrollToCurrent();
    }
}

// The folder itself stays in sight together with the first of those below it. (The toolkit's own
// call forgets where to scroll as long as the list is not on the screen.)
void FolderListBox::scrollToCurrent() {
    constexpr float fromTop = 0.3F;
    auto* tree = GTK_TREE_VIEW(GtkGetTreeView());
    GtkTreeModel* model = nullptr;
    GtkTreeIter current;
    if (gtk_tree_selection_get_selected(gtk_tree_view_get_selection(tree), &model, &current)) {
        GtkTreePath* path = gtk_tree_model_get_path(model, &current);
        gtk_tree_view_scroll_to_cell(tree, path, nullptr, TRUE, fromTop, 0);
        gtk_tree_path_free(path);
    }
}

int FolderListBox::selectedRow() const {
    const auto found = std::find(rows_.begin(), rows_.end(), GetSelection());
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void FolderListBox::bringIntoSight(int entry) {
    EnsureVisible(rows_.at(static_cast<std::size_t>(entry)));
}

wxRect FolderListBox::placeOf(int entry) const {
    return GetItemRect(rows_.at(static_cast<std::size_t>(entry)));
}

} // namespace veldara

#endif
