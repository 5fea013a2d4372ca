#ifndef __WXMSW__

#include "gui/name_list_box.h"
#include "gui/row_tips.h"

#include <gtk/gtk.h>

namespace veldara {

NameListBox::NameListBox(wxWindow* parent, const wxString& name, const wxSize& size)
    : wxListBox(parent, wxID_ANY, wxDefaultPosition, size, 0, nullptr,
                wxLB_SINGLE | wxLB_NEEDED_SB) {
    SetName(name);
    SetMinSize(size);
    ellipsizeRows(GTK_WIDGET(m_treeview));
}

} // namespace veldara

#endif
