#ifndef __WXMSW__

#include "gui/accessibility.h"

#include <functional>

#include <gtk/gtk.h>
#include <wx/window.h>

namespace veldara {

namespace {

// The native widgets inside a widget of the toolkit that a reader meets: those that take the
// keyboard, and drop-down lists, whose part that takes it is hidden from readers.
void forEachReadable(GtkWidget* widget, const std::function<void(GtkWidget*)>& act) {
    if (widget == nullptr) {
        return;
    }
    if (gtk_widget_get_can_focus(widget) || GTK_IS_COMBO_BOX(widget)) {
        act(widget);
    }
    if (GTK_IS_CONTAINER(widget)) {
        const auto visit = [](GtkWidget* child, gpointer data) {
            forEachReadable(child, *static_cast<const std::function<void(GtkWidget*)>*>(data));
        };
        gtk_container_forall(GTK_CONTAINER(widget), visit,
                             const_cast<std::function<void(GtkWidget*)>*>(&act));
    }
}

} // namespace

void setAccessibleName(wxWindow& widget, const wxString& name) {
    forEachReadable(widget.GetHandle(), [&name](GtkWidget* native) {
        atk_object_set_name(gtk_widget_get_accessible(native), name.utf8_str());
    });
}

void setLabelOf(wxWindow& label, wxWindow& widget) {
    AtkObject* name = gtk_widget_get_accessible(label.GetHandle());
    forEachReadable(widget.GetHandle(), [name](GtkWidget* native) {
        AtkObject* named = gtk_widget_get_accessible(native);
        atk_object_add_relationship(named, ATK_RELATION_LABELLED_BY, name);
        atk_object_add_relationship(name, ATK_RELATION_LABEL_FOR, named);
    });
}

void setAccessibleRole(wxWindow& widget, AccessibleRole role) {
    atk_object_set_role(gtk_widget_get_accessible(widget.GetHandle()),
                        role == AccessibleRole::link ? ATK_ROLE_LINK : ATK_ROLE_IMAGE);
}

// The signal has another name since ATK 2.50.
void announce(wxWindow& widget, const wxString& text) {
    constexpr int polite = 1;
    AtkObject* speaker = gtk_widget_get_accessible(widget.GetHandle());
    if (g_signal_lookup("notification", ATK_TYPE_OBJECT) != 0) {
        g_signal_emit_by_name(speaker, "notification", text.utf8_str().data(), polite);
    } else if (g_signal_lookup("announcement", ATK_TYPE_OBJECT) != 0) {
        g_signal_emit_by_name(speaker, "announcement", text.utf8_str().data());
    }
}

} // namespace veldara

#endif
