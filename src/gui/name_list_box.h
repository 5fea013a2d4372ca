// A native list of names. A name that is too long for the list's width ends in "...", and the tool
// tip over it has all of it.
#pragma once

#include <wx/listbox.h>

namespace veldara {

class NameListBox : public wxListBox {
  public:
    NameListBox(wxWindow* parent, const wxString& name, const wxSize& size);

#ifdef __WXMSW__
    bool MSWOnDraw(WXDRAWITEMSTRUCT* item) override;

  private:
    wxString cutNameAt(const wxPoint& at) const; // empty: none is cut there
#endif
};

} // namespace veldara
