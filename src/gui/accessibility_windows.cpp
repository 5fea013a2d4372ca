#ifdef __WXMSW__

#include "gui/accessibility.h"
#include "gui/named_accessible.h"

#include <wx/msw/wrapwin.h>
#include <wx/window.h>

namespace veldara {

namespace {

constexpr DWORD liveRegionChanged = 0x8019; // EVENT_OBJECT_LIVEREGIONCHANGED

NamedAccessible* accessibleOf(wxWindow& widget) {
    wxAccessible* now = widget.GetOrCreateAccessible();
    if (now == nullptr) {
        now = new NamedAccessible(&widget); // the widget owns it
        widget.SetAccessible(now);
    }
    return dynamic_cast<NamedAccessible*>(now);
}

void notify(DWORD event, wxWindow& widget) {
    NotifyWinEvent(event, static_cast<HWND>(widget.GetHWND()), OBJID_CLIENT, CHILDID_SELF);
}

} // namespace

void setAccessibleName(wxWindow& widget, const wxString& name) {
    if (NamedAccessible* accessible = accessibleOf(widget)) {
        accessible->setName(name);
        notify(EVENT_OBJECT_NAMECHANGE, widget);
    }
}

// The system takes the text just before a widget as its label; there are no relations.
void setLabelOf(wxWindow&, wxWindow&) {}

void setAccessibleRole(wxWindow& widget, AccessibleRole role) {
    if (NamedAccessible* accessible = accessibleOf(widget)) {
        accessible->setRole(role == AccessibleRole::link ? wxROLE_SYSTEM_LINK
                                                         : wxROLE_SYSTEM_GRAPHIC);
    }
}

// The reader takes the text from the widget.
void announce(wxWindow& widget, const wxString&) {
    notify(EVENT_OBJECT_NAMECHANGE, widget);
    notify(liveRegionChanged, widget);
}

} // namespace veldara

#endif
