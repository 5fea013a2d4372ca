// What screen readers get to know about a widget, where the system cannot find it out by itself.
#pragma once

#include <wx/string.h>

class wxWindow;

namespace veldara {

// The name of a widget that shows no text of its own, or whose label stands elsewhere.
void setAccessibleName(wxWindow& widget, const wxString& name);

// Declares that the label is the widget's, for readers that follow such relations.
void setLabelOf(wxWindow& label, wxWindow& widget);

// What a widget that is drawn by the program itself is.
enum class AccessibleRole { picture, link };
void setAccessibleRole(wxWindow& widget, AccessibleRole role);

// Has a screen reader speak a text as soon as it has finished its sentence, wherever the keyboard
// is; for values that change while something else is worked.
void announce(wxWindow& widget, const wxString& text);

} // namespace veldara
