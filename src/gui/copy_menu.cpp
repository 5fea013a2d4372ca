#include "gui/copy_menu.h"

#include "gui/native_text.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/menu.h>

namespace veldara {

namespace {

void copy(const wxString& text) {
    if (wxTheClipboard->Open()) {
        wxTheClipboard->SetData(new wxTextDataObject(text)); // the clipboard owns it
        wxTheClipboard->Flush();                             // it outlives the program
        wxTheClipboard->Close();
    }
}

} // namespace

void offerCopyOf(wxWindow& parent, const std::vector<std::string>& names,
                 const std::function<std::string()>& text) {
    for (const std::string& name : names) {
        wxWindow* area = wxWindow::FindWindowByName(nativeText(name), &parent);
        if (area == nullptr) {
            continue;
        }
        area->Bind(wxEVT_CONTEXT_MENU, [area, text](wxContextMenuEvent&) {
            wxMenu menu;
            menu.Append(wxID_COPY, "&Copy");
            if (area->GetPopupMenuSelectionFromUser(menu) == wxID_COPY) {
                copy(nativeText(text()));
            }
        });
    }
}

} // namespace veldara
