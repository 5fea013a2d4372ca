#ifdef __WXMSW__

#include "gui/name_list_box.h"
#include "gui/row_tips.h"

#include <wx/msw/wrapwin.h>

namespace veldara {

namespace {

constexpr int edge = 2; // pixels between a name and the list's edge, as the system has it

} // namespace

// The system's own list cannot end a name in "...".
NameListBox::NameListBox(wxWindow* parent, const wxString& name, const wxSize& size)
    : wxListBox(parent, wxID_ANY, wxDefaultPosition, size, 0, nullptr,
                wxLB_SINGLE | wxLB_NEEDED_SB | wxLB_OWNERDRAW) {
    SetName(name);
    SetMinSize(size);
    showTipsOfCutRows(*this, [this](const wxPoint& at) { return cutNameAt(at); });
}

bool NameListBox::MSWOnDraw(WXDRAWITEMSTRUCT* item) {
    const auto& row = *reinterpret_cast<const DRAWITEMSTRUCT*>(item);
    if (row.itemID >= GetCount()) {
        return false; // the list is empty
    }
    const bool chosen = (row.itemState & ODS_SELECTED) != 0;
    const bool disabled = (row.itemState & ODS_DISABLED) != 0;
    FillRect(row.hDC, &row.rcItem, GetSysColorBrush(chosen ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    const int usual = chosen ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT;
    SetTextColor(row.hDC, GetSysColor(disabled ? COLOR_GRAYTEXT : usual));
    SetBkMode(row.hDC, TRANSPARENT);
    RECT room = row.rcItem;
    room.left += edge;
    room.right -= edge;
    DrawTextW(row.hDC, GetString(row.itemID).wc_str(), -1, &room,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    if ((row.itemState & ODS_FOCUS) != 0 && (row.itemState & ODS_NOFOCUSRECT) == 0) {
        DrawFocusRect(row.hDC, &row.rcItem);
    }
    return true;
}

wxString NameListBox::cutNameAt(const wxPoint& at) const {
    const int row = HitTest(at);
    if (row == wxNOT_FOUND) {
        return {};
    }
    const wxString name = GetString(static_cast<unsigned>(row));
    return GetTextExtent(name).x > GetClientSize().x - 2 * edge ? name : wxString();
}

} // namespace veldara

#endif
