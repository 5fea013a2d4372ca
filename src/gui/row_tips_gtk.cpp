#ifndef __WXMSW__

#include "gui/row_tips.h"

#include <memory>

#include <gtk/gtk.h>

namespace veldara {

namespace {

using Cells = std::unique_ptr<GList, decltype(&g_list_free)>;
using Path = std::unique_ptr<GtkTreePath, decltype(&gtk_tree_path_free)>;
using Text = std::unique_ptr<char, decltype(&g_free)>;

// These lists have one column, and it has one text.
GtkCellRenderer* textCell(GtkTreeViewColumn* column) {
    const Cells cells(gtk_cell_layout_get_cells(GTK_CELL_LAYOUT(column)), g_list_free);
    for (const GList* one = cells.get(); one != nullptr; one = one->next) {
        if (GTK_IS_CELL_RENDERER_TEXT(one->data)) {
            return GTK_CELL_RENDERER(one->data);
        }
    }
    return nullptr;
}

// The text of a row where it has too little room, else null.
Text cutText(GtkTreeView* list, GtkTreeModel* model, GtkTreeIter& row, GtkTreePath* path) {
    GtkTreeViewColumn* column = gtk_tree_view_get_column(list, 0);
    GtkCellRenderer* cell = textCell(column);
    gtk_tree_view_column_cell_set_cell_data(column, model, &row, FALSE, FALSE);
    GdkRectangle place{};
    gtk_tree_view_get_cell_area(list, path, column, &place);
    int before = 0; // of the column, the icon's
    gtk_tree_view_column_cell_get_position(column, cell, &before, nullptr);
    int needed = 0;
    gtk_cell_renderer_get_preferred_width(cell, GTK_WIDGET(list), nullptr, &needed);
    char* text = nullptr;
    if (needed > place.width - before) {
        g_object_get(cell, "text", &text, nullptr);
    }
    return {text, g_free};
}

gboolean showTipOfCutRow(GtkWidget* widget, gint x, gint y, gboolean byKeyboard, GtkTooltip* tip,
                         gpointer) {
    auto* list = GTK_TREE_VIEW(widget);
    GtkTreeModel* model = nullptr;
    GtkTreePath* found = nullptr;
    GtkTreeIter row{};
    if (!gtk_tree_view_get_tooltip_context(list, &x, &y, byKeyboard, &model, &found, &row)) {
        return FALSE;
    }
    const Path path(found, gtk_tree_path_free);
    const Text text = cutText(list, model, row, path.get());
    if (!text) {
        return FALSE; // the list's own comes up
    }
    gtk_tooltip_set_text(tip, text.get());
    gtk_tree_view_set_tooltip_row(list, tip, path.get());
    return TRUE;
}

} // namespace

void ellipsizeRows(GtkWidget* treeView) {
    g_object_set(textCell(gtk_tree_view_get_column(GTK_TREE_VIEW(treeView), 0)), "ellipsize",
                 PANGO_ELLIPSIZE_END, nullptr);
    gtk_widget_set_has_tooltip(treeView, TRUE);
    g_signal_connect(treeView, "query-tooltip", G_CALLBACK(showTipOfCutRow), nullptr);
}

} // namespace veldara

#endif
