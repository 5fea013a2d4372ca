// A tip below a field that says why the field did not take what was entered. It takes neither the
// keyboard nor the mouse, so that typing goes on.
#pragma once

#include <wx/popupwin.h>
#include <wx/stattext.h>
#include <wx/timer.h>

namespace veldara {

class RefusalTip : public wxPopupWindow {
  public:
    // Shows the tip for a few seconds; again for another refusal.
    static void show(wxWindow& field, const wxString& why);

  private:
    explicit RefusalTip(wxWindow& field);

    wxStaticText* text_;
    wxTimer hide_;
};

} // namespace veldara
