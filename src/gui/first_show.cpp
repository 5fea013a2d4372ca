#include "gui/first_show.h"

#include <wx/toplevel.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace veldara {

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

} // namespace veldara
