// Windows only: describes a widget to screen readers by a name that does not stand in it.
#pragma once

#include <wx/access.h>

namespace veldara {

// Answers with the system's own object for everything that is not set here.
class NamedAccessible : public wxAccessible {
  public:
    using wxAccessible::wxAccessible;

    wxAccStatus GetName(int child, wxString* name) override {
        if (child != wxACC_SELF || name_.empty()) {
            return wxACC_NOT_IMPLEMENTED;
        }
        *name = name_;
        return wxACC_OK;
    }

    wxAccStatus GetRole(int child, wxAccRole* role) override {
        if (child != wxACC_SELF || role_ == wxROLE_NONE) {
            return wxACC_NOT_IMPLEMENTED;
        }
        *role = role_;
        return wxACC_OK;
    }

    void setName(const wxString& name) { name_ = name; }
    void setRole(wxAccRole role) { role_ = role; }

  private:
    wxString name_;
    wxAccRole role_ = wxROLE_NONE;
};

} // namespace veldara
