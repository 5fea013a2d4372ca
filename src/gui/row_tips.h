// The tool tip over a row of a list whose text is cut has all of the text. Over other rows it is
// the list's own.
#pragma once

#ifdef __WXMSW__

#include <functional>

#include <wx/window.h>

namespace veldara {

// cutTextAt: the whole text of the row at a place in the list, empty where none is cut.
void tellCutRows(wxWindow& list, std::function<wxString(const wxPoint&)> cutTextAt);

} // namespace veldara

#else

#include <wx/defs.h>

namespace veldara {

// Of a native tree view; lets texts without room end in "..." besides.
void endCutRows(GtkWidget* treeView);

} // namespace veldara

#endif
