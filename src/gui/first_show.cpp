#include "gui/first_show.h"

#include <wx/toplevel.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace veldara {

#ifdef __WXGTK__
namespace {

gboolean presentOnce(GtkWidget* window, GdkEvent*, gpointer) {
    g_signal_handlers_disconnect_by_func(window, reinterpret_cast<gpointer>(presentOnce), nullptr);
    gtk_window_present(GTK_WINDOW(window));
    return FALSE;
}

} // namespace
#endif

void prepareFirstShow([[maybe_unused]] wxTopLevelWindow& window) {
#ifdef __WXGTK__
    GtkWidget* native = window.GetHandle();
    if (!gtk_widget_get_realized(native)) {
        const wxSize size = window.GetSize();
        const GtkAllocation allocation{0, 0, size.x, size.y};
        gtk_widget_set_allocation(native, &allocation);
    }
#endif
}

void bringToFront(wxTopLevelWindow& window) {
#ifdef __WXGTK__
    GtkWidget* native = window.GetHandle();
    if (!gtk_widget_get_mapped(native)) {
        g_signal_connect(native, "map-event", G_CALLBACK(presentOnce), nullptr);
        return;
    }
#endif
    window.Raise();
}

} // namespace veldara
