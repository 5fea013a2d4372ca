// A label that the toolkit does not connect with whatever widget comes next: the bindings say what
// it belongs to.
#pragma once

#include <wx/stattext.h>

namespace veldara {

class LabelText : public wxStaticText {
  public:
    explicit LabelText(wxWindow* parent, long style = 0)
        : wxStaticText(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, style) {}

#ifndef __WXMSW__
  protected:
    bool GTKWidgetNeedsMnemonic() const override {
        return false;
    }
#endif
};

} // namespace veldara
