#include "e2e/print_dialog.h"

#ifdef __WXGTK__

#include <gtk/gtk.h>
#include <gtk/gtkunixprint.h>

namespace veldara::test {

namespace {

// All of these are asked on the window thread.
GtkPrintUnixDialog* shownDialog() {
    GtkPrintUnixDialog* found = nullptr;
    GList* windows = gtk_window_list_toplevels();
    for (GList* one = windows; one != nullptr; one = one->next) {
        auto* widget = GTK_WIDGET(one->data);
        if (GTK_IS_PRINT_UNIX_DIALOG(widget) && gtk_widget_get_mapped(widget) == TRUE) {
            found = GTK_PRINT_UNIX_DIALOG(widget);
        }
    }
    g_list_free(windows);
    return found;
}

GtkWidget* printButton(GtkPrintUnixDialog* dialog) {
    return gtk_dialog_get_widget_for_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
}

// The first widget of a kind inside another that is shown.
GtkWidget* findInside(GtkWidget* widget, GType kind) {
    if (G_TYPE_CHECK_INSTANCE_TYPE(widget, kind) && gtk_widget_get_mapped(widget) == TRUE) {
        return widget;
    }
    GtkWidget* found = nullptr;
    if (GTK_IS_CONTAINER(widget)) {
        GList* children = gtk_container_get_children(GTK_CONTAINER(widget));
        for (GList* one = children; one != nullptr && found == nullptr; one = one->next) {
            found = findInside(GTK_WIDGET(one->data), kind);
        }
        g_list_free(children);
    }
    return found;
}

// Whether a row of a list has that text.
bool hasText(GtkTreeModel* model, GtkTreeIter* row, const std::string& wanted) {
    for (int column = 0; column < gtk_tree_model_get_n_columns(model); ++column) {
        if (gtk_tree_model_get_column_type(model, column) != G_TYPE_STRING) {
            continue;
        }
        char* text = nullptr;
        gtk_tree_model_get(model, row, column, &text, -1);
        const bool found = text != nullptr && wanted == text;
        g_free(text);
        if (found) {
            return true;
        }
    }
    return false;
}

// Chooses that entry of whichever list inside has it.
bool chooseInside(GtkWidget* widget, const std::string& entry) {
    if (GTK_IS_COMBO_BOX(widget)) {
        GtkTreeModel* model = gtk_combo_box_get_model(GTK_COMBO_BOX(widget));
        GtkTreeIter row;
        for (gboolean more = gtk_tree_model_get_iter_first(model, &row); more == TRUE;
             more = gtk_tree_model_iter_next(model, &row)) {
            if (hasText(model, &row, entry)) {
                gtk_combo_box_set_active_iter(GTK_COMBO_BOX(widget), &row);
                return true;
            }
        }
        return false;
    }
    bool chosen = false;
    if (GTK_IS_CONTAINER(widget)) {
        GList* children = gtk_container_get_children(GTK_CONTAINER(widget));
        for (GList* one = children; one != nullptr && !chosen; one = one->next) {
            chosen = chooseInside(GTK_WIDGET(one->data), entry);
        }
        g_list_free(children);
    }
    return chosen;
}

wxPoint screenPlace(GtkWidget* widget, int x, int y) {
    GtkWidget* top = gtk_widget_get_toplevel(widget);
    int inTopX = 0;
    int inTopY = 0;
    gtk_widget_translate_coordinates(widget, top, x, y, &inTopX, &inTopY);
    int left = 0;
    int above = 0;
    gdk_window_get_origin(gtk_widget_get_window(top), &left, &above);
    return {left + inTopX, above + inTopY};
}

struct RowSearch {
    std::string name;
    GtkTreePath* path = nullptr;
};

gboolean looksLikeRow(GtkTreeModel* model, GtkTreePath* path, GtkTreeIter* row, gpointer data) {
    auto* search = static_cast<RowSearch*>(data);
    if (!hasText(model, row, search->name)) {
        return FALSE;
    }
    search->path = gtk_tree_path_copy(path);
    return TRUE;
}

// The middle of the printer's row; nowhere (-1, -1) as long as it is not listed.
wxPoint placeOfPrinter(const std::string& name) {
    GtkPrintUnixDialog* dialog = shownDialog();
    GtkWidget* list =
        dialog == nullptr ? nullptr : findInside(GTK_WIDGET(dialog), GTK_TYPE_TREE_VIEW);
    if (list == nullptr) {
        return {-1, -1};
    }
    auto* view = GTK_TREE_VIEW(list);
    RowSearch search{name};
    gtk_tree_model_foreach(gtk_tree_view_get_model(view), looksLikeRow, &search);
    if (search.path == nullptr) {
        return {-1, -1};
    }
    GdkRectangle area{};
    gtk_tree_view_get_cell_area(view, search.path, gtk_tree_view_get_column(view, 1), &area);
    gtk_tree_path_free(search.path);
    int x = 0;
    int y = 0;
    gtk_tree_view_convert_bin_window_to_widget_coords(view, area.x + area.width / 2,
                                                      area.y + area.height / 2, &x, &y);
    return screenPlace(list, x, y);
}

} // namespace

void PrintDialog::waitFor(const std::string& printer) {
    user_.waitUntil("the print dialog knows the printer \"" + printer + "\"", [&] {
        GtkPrintUnixDialog* dialog = shownDialog();
        if (dialog == nullptr || gtk_window_is_active(GTK_WINDOW(dialog)) == FALSE) {
            return false;
        }
        GtkPrinter* chosen = gtk_print_unix_dialog_get_selected_printer(dialog);
        return printer.empty() || (chosen != nullptr && printer == gtk_printer_get_name(chosen) &&
                                   gtk_widget_get_sensitive(printButton(dialog)) == TRUE);
    });
}

void PrintDialog::waitUntilGone() {
    user_.waitUntil("the print dialog is gone", [] { return shownDialog() == nullptr; });
}

// The pointer is where the widget is now: the dialog grows when it has asked a printer.
void PrintDialog::clickScreen(wxPoint at) {
    hands_.moveTo(at);
    hands_.click();
}

void PrintDialog::choosePrinterByMouse(const std::string& name) {
    waitFor("");
    user_.waitUntil("the printer \"" + name + "\" is listed",
                    [&] { return placeOfPrinter(name).x >= 0; });
    clickScreen(user_.onWindowThread([&] { return placeOfPrinter(name); }));
    waitFor(name);
}

void PrintDialog::chooseDriverSetting(const std::string& choice) {
    user_.waitUntil("the dialog offers \"" + choice + "\"", [&] {
        GtkPrintUnixDialog* dialog = shownDialog();
        return dialog != nullptr && chooseInside(GTK_WIDGET(dialog), choice);
    });
}

// The dialog may still grow when it has asked a printer. So the button is clicked where it has come
// to rest, and again when the dialog stays.
void PrintDialog::printByMouse() {
    const auto place = [] {
        GtkPrintUnixDialog* dialog = shownDialog();
        if (dialog == nullptr) {
            return wxPoint(-1, -1);
        }
        GtkWidget* button = printButton(dialog);
        return screenPlace(button, gtk_widget_get_allocated_width(button) / 2,
                           gtk_widget_get_allocated_height(button) / 2);
    };
    const auto isUp = [] { return shownDialog() != nullptr; };
    constexpr std::chrono::milliseconds moment(100);
    for (int tries = 0; tries < 20 && user_.onWindowThread(isUp); ++tries) {
        const wxPoint at = user_.onWindowThread(place);
        hands_.moveTo(at);
        user_.pause(moment);
        if (user_.onWindowThread(place) != at) {
            continue;
        }
        hands_.click();
        for (int i = 0; i < 20 && user_.onWindowThread(isUp); ++i) {
            user_.pause(moment);
        }
    }
}

void PrintDialog::printByKey() {
    user_.key('P', wxMOD_ALT);
}

void PrintDialog::choosePages(const std::string& pages) {
    user_.key('E', wxMOD_ALT);
    user_.type(pages); // the field beside it has the keyboard then
}

void PrintDialog::chooseCopies(const std::string& copies) {
    user_.key('S', wxMOD_ALT);
    user_.retype(copies);
    user_.key(WXK_TAB); // takes what was typed
}

int PrintDialog::copies() {
    return user_.onWindowThread([] {
        GtkPrintSettings* settings = gtk_print_unix_dialog_get_settings(shownDialog());
        const int count = gtk_print_settings_get_n_copies(settings);
        g_object_unref(settings);
        return count;
    });
}

} // namespace veldara::test

#endif
