// The tool tip over a row of a list whose text is cut has all of the text. Over other rows it is
// the list's own.
#pragma once

#ifdef __WXMSW__

#include <functional>

#include <wx/window.h>

namespace veldara {

// cutTextAt: the whole text of the row at a place in the list, empty where none is cut.
void showTipsOfCutRows(wxWindow& list, std::function<wxString(const wxPoint&)> cutTextAt);

} // namespace veldara

#else

#include <wx/defs.h>

namespace veldara {

// Lets the texts of a native tree view end in "..." where they have no room, and shows their tips.
void ellipsizeRows(GtkWidget* treeView);

} // namespace veldara

#endif
