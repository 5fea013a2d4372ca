#ifdef __WXMSW__

#include "gui/row_tips.h"

#include <memory>
#include <utility>

#include <wx/tooltip.h>

namespace veldara {

void showTipsOfCutRows(wxWindow& list, std::function<wxString(const wxPoint&)> cutTextAt) {
    struct Tips {
        wxString shown; // the row's; empty: the list's own
        wxString own;
    };
    auto tips = std::make_shared<Tips>();
    list.Bind(wxEVT_MOTION, [&list, tips, cutTextAt = std::move(cutTextAt)](wxMouseEvent& event) {
        event.Skip();
        const wxString text = cutTextAt(event.GetPosition());
        if (text == tips->shown) {
            return;
        }
        if (tips->shown.empty()) {
            tips->own = list.GetToolTipText();
        }
        tips->shown = text;
        // A new tip comes up again, where the pointer is now.
        const wxString& words = text.empty() ? tips->own : text;
        list.SetToolTip(words.empty() ? nullptr : new wxToolTip(words));
    });
}

} // namespace veldara

#endif
